#include "app/search/pronunciation.h"

#include "app/search/sound_outcome.h"
#include "app/shell/services.h"
#include "dictionaries/dictionary_shelf.h"
#include "lookup/dictionary_service.h"
#include "settings/server_addresses.h"
#include "support/background_task.h"
#include "support/web_address.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

#include <chrono>
#include <utility>

namespace lexiquill {

using namespace std::chrono_literals;

namespace {

/// In bytes. A spoken word takes about ten thousand.
constexpr qint64 maxSoundSize = qint64{4} << 20;

/// The player of this installation or build tree.
QString usualPlayer() {
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString installed =
        programs.filePath(QStringLiteral(LEXIQUILL_LIBEXEC_FROM_BIN "/lexiquill-sound-player"));
    return QFile::exists(installed) ? installed
                                    : programs.filePath(QStringLiteral("../libexec/lexiquill-sound-player"));
}

/// What to tell the user; null after success.
QString messageOf(SoundOutcome outcome) {
    switch (outcome) {
    case SoundOutcome::Played:
        return {};
    case SoundOutcome::NoMultimedia:
        return QStringLiteral("无法播放发音：没有安装多媒体组件 (qml6-module-qtmultimedia)。");
    case SoundOutcome::NoDevice:
        return QStringLiteral("无法播放发音：没有可用的音频输出设备。");
    case SoundOutcome::Unplayable:
        return QStringLiteral("无法播放发音：系统无法解码这段录音。");
    }
    return QStringLiteral("无法播放发音：系统的多媒体组件出错。");
}

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

void Pronunciation::play(const QString &word) {
    cancel();
    m_cancellation = std::make_unique<Cancellation>();
    setFetching(true);
    if (Services::current().dictionary.currentMode() == DictionarySourceMode::AppleOffline) {
        find(word, [this, word] { fetch(word, [this](const QString &message) { fail(message); }); });
        return;
    }
    fetch(word, [this, word](const QString &message) { find(word, [this, message] { fail(message); }); });
}

void Pronunciation::cancel() {
    m_cancellation.reset();
    if (m_player) {
        m_player->disconnect(this);
        connect(m_player, &QProcess::finished, m_player, &QObject::deleteLater);
        m_player->kill();
        m_player = nullptr;
    }
    setFetching(false);
}

void Pronunciation::fetch(const QString &word, const std::function<void(const QString &)> &failed) {
    const QUrl url = pronunciationUrl(ServerAddresses::from(Services::current().defaults).youdao, word);
    if (url.isValid())
        download(url, m_cancellation->token(), failed);
    else
        failed(QStringLiteral("无法播放发音：这个词没有发音。"));
}

QCoro::Task<> Pronunciation::download(QUrl url, std::stop_token stop,
                                      std::function<void(const QString &)> failed) {
    HttpRequest request;
    request.url = url;
    request.idleLimit = 5s;
    request.totalLimit = 10s;
    request.bodyLimit = maxSoundSize;
    request.stop = stop;
    const HttpReply reply = co_await Services::current().http.send(request);
    if (stop.stop_requested())
        co_return;
    if (reply.isOk() && !reply.body.isEmpty())
        playBytes(reply.body, {});
    else
        failed(reply.status == 0 ? QStringLiteral("无法播放发音：请检查网络连接后重试。")
                                 : QStringLiteral("无法播放发音：服务器没有提供这个词的发音。"));
}

void Pronunciation::find(const QString &word, const std::function<void()> &missing) {
    const auto search = [&shelf = Services::current().shelf, word] {
        return shelf.sound(word);
    };
    const std::stop_token stop = m_cancellation->token();
    runInBackground(this, search, [this, stop, missing](const std::optional<DictionaryShelf::Sound> &sound) {
        if (stop.stop_requested())
            return;
        if (sound && sound->bytes.size() <= maxSoundSize)
            playBytes(sound->bytes, sound->suffix);
        else
            missing();
    });
}

void Pronunciation::fail(const QString &message) {
    setFetching(false);
    Q_EMIT failed(message);
}

void Pronunciation::playBytes(const QByteArray &sound, const QString &suffix) {
    // The suffix comes from a dictionary's file.
    static const QRegularExpression form(QStringLiteral("\\A[a-zA-Z0-9]{1,4}\\z"));
    setFetching(false);
    m_file = std::make_unique<QTemporaryFile>();
    if (form.match(suffix).hasMatch())
        m_file->setFileTemplate(m_file->fileTemplate() + u'.' + suffix);
    if (m_file->open() && m_file->write(sound) == sound.size() && m_file->flush())
        playFile(m_file->fileName());
    else
        fail(QStringLiteral("无法播放发音：临时文件无法写入。"));
}

void Pronunciation::setFetching(bool isFetching) {
    if (isFetching == m_isFetching)
        return;
    m_isFetching = isFetching;
    Q_EMIT isFetchingChanged();
}

void Pronunciation::playFile(const QString &file) {
    m_player = new QProcess(this);
    m_player->setStandardErrorFile(QProcess::nullDevice());
    connect(m_player, &QProcess::finished, this, [this](int status, QProcess::ExitStatus exit) {
        // A crashed player has no exit status.
        std::exchange(m_player, nullptr)->deleteLater();
        const QString message =
            messageOf(static_cast<SoundOutcome>(exit == QProcess::NormalExit ? status : -1));
        if (!message.isNull())
            Q_EMIT failed(message);
    });
    connect(m_player, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        std::exchange(m_player, nullptr)->deleteLater();
        Q_EMIT failed(messageOf(SoundOutcome::NoMultimedia));
    });
    m_player->start(usualPlayer(), {file});
}

} // namespace lexiquill
