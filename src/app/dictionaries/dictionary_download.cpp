#include "app/dictionaries/dictionary_download.h"

#include "app/dictionaries/dictionary_texts.h"
#include "support/background_task.h"
#include "support/web_address.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QRegularExpression>

namespace lexiquill {

namespace {

const QString scratchPrefix = QStringLiteral(".download-");

QByteArray checksumOf(const QString &path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result().toHex() : QByteArray();
}

QString failureOf(const HttpReply &reply) {
    if (reply.error == HttpError::CannotWrite)
        return QStringLiteral("磁盘空间不足，或词典目录无法写入");
    if (reply.error == HttpError::TooLarge)
        return QStringLiteral("文件太大");
    if (reply.error)
        return description(*reply.error);
    return QStringLiteral("服务器返回状态 ") + QString::number(reply.status);
}

} // namespace

std::optional<QByteArray> readChecksum(const QString &text) {
    static const QRegularExpression blanks(QStringLiteral("\\s"));
    static const QRegularExpression form(QStringLiteral("\\A(?:[0-9a-f]{64})?\\z"));
    const QString digits = QString(text).remove(blanks).toLower();
    return form.match(digits).hasMatch() ? std::optional(digits.toLatin1()) : std::nullopt;
}

std::optional<QUrl> downloadUrl(const QString &text) {
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    return isAcceptableUrl(url) && !isReservedHost(url) ? std::optional(url) : std::nullopt;
}

QString fileNameOf(const QUrl &url) {
    constexpr qsizetype longest = 60;
    QString name = shownName(url.fileName(QUrl::FullyDecoded)).remove(u'/').remove(QChar::Null);
    while (name.startsWith(u'.'))
        name.remove(0, 1);
    // The end tells the kind of the file.
    return name.isEmpty() ? QStringLiteral("download") : name.right(longest);
}

DictionaryDownload::DictionaryDownload(HttpClient &http, QString directory, const Limits &limits)
    : m_http(http),
      m_directory(std::move(directory)),
      m_limits(limits) {}

QCoro::Task<> DictionaryDownload::run(QUrl url, QByteArray checksum, std::function<void(double)> onProgress,
                                      std::function<void(const Outcome &)> done) {
    const std::stop_token stop = m_cancellation.token();
    ScratchDirectory::removeAbandoned(m_directory, scratchPrefix);
    m_scratch = ScratchDirectory::create(m_directory, scratchPrefix);
    if (m_scratch)
        m_file.setFileName(m_scratch->path() + u'/' + fileNameOf(url));
    if (!m_scratch || !m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        done({.failure = QStringLiteral("词典目录无法写入")});
        co_return;
    }
    HttpRequest request;
    request.url = url;
    request.idleLimit = m_limits.idle;
    request.totalLimit = m_limits.total;
    request.bodyLimit = m_limits.size;
    request.stop = stop;
    request.sink = &m_file;
    request.onProgress = [&onProgress](qint64 received, std::optional<qint64> total) {
        if (total.value_or(0) > 0)
            onProgress(static_cast<double>(received) / static_cast<double>(*total));
    };
    const HttpReply reply = co_await m_http.send(request);
    if (stop.stop_requested())
        co_return;
    m_file.close();
    if (!reply.isOk()) {
        done({.failure = QStringLiteral("下载失败：") + failureOf(reply)});
        co_return;
    }
    const QString path = m_file.fileName();
    if (checksum.isEmpty()) {
        done({.path = path});
        co_return;
    }
    // Ends with the application, which outlives the work.
    runInBackground(
        QCoreApplication::instance(), [path] { return checksumOf(path); },
        [stop, path, checksum, done](const QByteArray &found) {
            if (stop.stop_requested())
                return;
            if (found == checksum)
                done({.path = path});
            else
                done({.failure = QStringLiteral("校验和不符，文件可能已被更改")});
        });
}

} // namespace lexiquill
