#pragma once

#include "network/http_client.h"
#include "platform/scratch_directory.h"
#include "support/cancellation.h"

#include <QCoroTask>
#include <QFile>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace lexiquill {

/// The checksum in a text that the user typed: 64 hexadecimal digits, in any case and with blanks. No value
/// when the text is something else; empty for a blank text.
std::optional<QByteArray> readChecksum(const QString &text);

/// The URL that a text means; no value when it may not be downloaded.
std::optional<QUrl> downloadUrl(const QString &text);

/// The last part of a URL's path as the name of a file.
QString fileNameOf(const QUrl &url);

/// Downloads one file into a hidden directory, where it is removed with this object.
class DictionaryDownload {
public:
    struct Limits {
        std::chrono::milliseconds idle{30'000};
        std::chrono::milliseconds total{std::chrono::hours(24)};
        qint64 size = qint64{2} << 30; ///< bytes
    };
    /// The downloaded file, or why there is none, for display.
    struct Outcome {
        QString path = {};
        QString failure = {};
    };

    /// `directory`: the directory of the dictionaries, in which the hidden one is made.
    DictionaryDownload(HttpClient &http, QString directory, const Limits &limits);

    /// Downloads and compares the content with the SHA-256 checksum, unless that is empty. After a
    /// cancellation, or when this object is destroyed, nothing follows.
    QCoro::Task<> run(QUrl url, QByteArray checksum, std::function<void(double part)> onProgress,
                      std::function<void(const Outcome &)> done);

private:
    HttpClient &m_http;
    QString m_directory;
    Limits m_limits;
    std::unique_ptr<ScratchDirectory> m_scratch;
    QFile m_file;
    Cancellation m_cancellation;
};

} // namespace lexiquill
