#pragma once

#include "network/http_error.h"

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <optional>
#include <stop_token>
#include <utility>

namespace lexiquill {

/// The beginning of a body from an earlier answer, so that a download can go on where it ended.
struct BodyStart {
    qint64 size = 0;      ///< bytes
    QByteArray validator; ///< `HttpReply::validator` of that answer; not empty
};

/// One HTTP request.
struct HttpRequest {
    enum class Method { Get, Post };
    using Header = std::pair<QByteArray, QByteArray>;

    Method method = Method::Get;
    QUrl url;
    /// Sent unchanged. Besides them, only what the protocol needs is sent: Host, Connection, Accept-Encoding,
    /// a User-Agent if there is none here, the length and type of a body, and a neutral Accept-Language.
    QList<Header> headers = {};
    QByteArray body = {}; ///< of a POST

    std::chrono::milliseconds idleLimit{60'000};  ///< the longest time without any progress
    std::chrono::milliseconds totalLimit{60'000}; ///< the longest total time, redirects included
    qint64 bodyLimit = qint64{8} << 20;           ///< bytes after decoding; a longer answer is an error
    int redirectLimit = 5;
    bool staysAtOrigin = false; ///< a redirect to another server, or another port, is an error

    /// If set, a GET uses the stored answer, if there is one, without any network traffic. Otherwise a
    /// complete answer with status 200 is stored if this returns true for its body.
    std::function<bool(const QByteArray &body)> isWorthKeeping = nullptr;

    /// If set, the body of an answer with status 200 is written to this device instead of the reply. The
    /// device must be open and outlive the request. After an error it contains the beginning of the body. The
    /// body of any other answer is then limited to a megabyte, because `bodyLimit` may be larger than the
    /// memory.
    QIODevice *sink = nullptr;
    /// What `sink` contains already, of a GET. Only the rest is asked for, and appended. If the server sends
    /// the whole body instead, because it has another version or knows no ranges, `emptySink` is called
    /// first. An answer that is neither of both has the error `CannotResume`.
    std::optional<BodyStart> start = std::nullopt;
    /// Removes everything from `sink`; false when that fails. Must be set together with `start`.
    std::function<bool()> emptySink = nullptr;
    /// Called after each piece that is written to `sink`, with the bytes so far, including `start`, and the
    /// total size if it is known.
    std::function<void(qint64 received, std::optional<qint64> total)> onProgress = nullptr;

    /// When cancelled, the request is aborted and its reply has the error `Cancelled`.
    std::stop_token stop = {};
};

/// The answer to a request.
struct HttpReply {
    int status = 0; ///< 0 when no answer came
    QByteArray body = {};
    /// Identifies the version of the body in `sink`, also after an error, for the `BodyStart` of a later
    /// request; empty when the server does not say it.
    QByteArray validator = {};
    bool isRest = false; ///< the body is the rest that the request has asked for
    /// Why there is no complete answer. No value when there is one, with any status.
    std::optional<HttpError> error = std::nullopt;

    /// Whether this is a complete answer with status 200, or completes an earlier one.
    bool isOk() const { return !error && (status == 200 || isRest); }
};

} // namespace lexiquill
