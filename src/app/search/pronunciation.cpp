#include "app/search/pronunciation.h"

#include "app/services.h"
#include "support/server_addresses.h"
#include "support/url_query.h"

#include <QFile>

#include <chrono>

namespace lexiquill {

using namespace std::chrono_literals;

namespace {

/// A spoken word takes some ten thousand bytes.
constexpr qint64 maxSoundSize = qint64{4} << 20;

} // namespace

QUrl pronunciationUrl(const QString &youdaoBase, const QString &word) {
    const auto encoded = queryEncoded(word.trimmed());
    if (!encoded || encoded->isEmpty())
        return {};
    return QUrl::fromEncoded(youdaoBase.toUtf8() + "/dictvoice?audio=" + *encoded + "&type=2",
                             QUrl::StrictMode);
}

Pronunciation::Pronunciation(QObject *parent) : QObject(parent) {}

Pronunciation::~Pronunciation() = default;

void Pronunciation::fetch(const QString &word) {
    cancel();
    const QUrl url = pronunciationUrl(ServerAddresses::from(Services::current().defaults()).youdao, word);
    if (!url.isValid()) {
        Q_EMIT failed(QStringLiteral("无法播放发音：这个词没有发音。"));
        return;
    }
    m_cancellation = std::make_unique<Cancellation>();
    setFetching(true);
    download(url, m_cancellation->token());
}

void Pronunciation::cancel() {
    m_cancellation.reset();
    setFetching(false);
}

QCoro::Task<> Pronunciation::download(QUrl url, CancellationToken cancellation) {
    HttpRequest request;
    request.url = url;
    request.idleLimit = 5s;
    request.totalLimit = 10s;
    request.bodyLimit = maxSoundSize;
    request.cancellation = cancellation;
    const HttpReply reply = co_await HttpClient::shared().send(request);
    if (cancellation.isCancelled())
        co_return;
    setFetching(false);
    if (!reply.isOk() || reply.body.isEmpty()) {
        Q_EMIT failed(reply.status == 0 ? QStringLiteral("无法播放发音：请检查网络连接后重试。")
                                        : QStringLiteral("无法播放发音：服务器没有提供这个词的发音。"));
        co_return;
    }
    const QUrl file = store(reply.body);
    if (file.isEmpty())
        Q_EMIT failed(QStringLiteral("无法播放发音：临时文件无法写入。"));
    else
        Q_EMIT ready(file);
}

void Pronunciation::setFetching(bool isFetching) {
    if (isFetching == m_isFetching)
        return;
    m_isFetching = isFetching;
    Q_EMIT isFetchingChanged();
}

/// Writes the sound into a file of its own, because a player may still have the last one open.
QUrl Pronunciation::store(const QByteArray &sound) {
    m_directory = std::make_unique<QTemporaryDir>();
    QFile file(m_directory->filePath(QStringLiteral("%1.mp3").arg(++m_files)));
    if (!m_directory->isValid() || !file.open(QIODevice::WriteOnly) || file.write(sound) != sound.size())
        return {};
    return QUrl::fromLocalFile(file.fileName());
}

} // namespace lexiquill
