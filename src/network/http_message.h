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

/// One HTTP request.
struct HttpRequest {
    enum class Method { Get, Post };
    using Header = std::pair<QByteArray, QByteArray>;

    Method method = Method::Get;
    QUrl url;
    /// Sent as they are. Besides them only what the protocol needs is sent: Host, Connection,
    /// Accept-Encoding, a User-Agent if there is none here, the length of a body, and a neutral
    /// Accept-Language.
    QList<Header> headers = {};
    QByteArray body = {}; ///< of a POST

    std::chrono::milliseconds idleLimit{60'000};  ///< the longest time without any progress
    std::chrono::milliseconds totalLimit{60'000}; ///< the longest time altogether, redirects included
    qint64 bodyLimit = qint64{8} << 20;           ///< bytes after decoding; a longer answer is an error
    int redirectLimit = 5;
    bool staysAtOrigin = false; ///< a redirect to another server, or another port, is an error

    /// Given, the answer to a GET comes from the store of answers, if it is there, without any traffic; else
    /// a complete answer with status 200 for whose body this returns true is stored.
    std::function<bool(const QByteArray &body)> isWorthKeeping = nullptr;

    /// Where the body of an answer with status 200 goes instead of into the reply; an open device that
    /// outlives the request. After an error it holds the beginning of the body. With a sink, the body of any
    /// other answer is limited to a megabyte, for `bodyLimit` may be more than there is memory.
    QIODevice *sink = nullptr;
    /// Called after each piece of such a body: the bytes so far, and the size of the whole if it is known.
    std::function<void(qint64 received, std::optional<qint64> total)> onProgress = nullptr;

    /// When cancelled, the request is aborted and its reply is the error "已取消".
    std::stop_token stop = {};
};

/// The answer to a request.
struct HttpReply {
    int status = 0; ///< 0 when no answer came
    QByteArray body = {};
    /// Why there is no complete answer. Nothing when there is one, whatever its status.
    std::optional<HttpError> error = std::nullopt;

    /// Whether a complete answer with status 200 is here.
    bool isOk() const { return !error && status == 200; }
};

} // namespace lexiquill
