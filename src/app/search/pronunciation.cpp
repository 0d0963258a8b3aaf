#include "app/search/pronunciation.h"

#include "app/shell/services.h"
#include "dictionaries/dictionary_shelf.h"
#include "lookup/dictionary_service.h"
#include "settings/server_addresses.h"
#include "support/background_task.h"
#include "support/text.h"

#include <QRegularExpression>

#include <algorithm>
#include <chrono>

namespace lexiquill {

using namespace std::chrono_literals;

namespace {

/// In bytes. A spoken word takes about ten thousand.
constexpr qint64 maxSoundSize = qint64{4} << 20;
/// In UTF-16 units. Longer texts have no recording; only their beginning is spoken.
constexpr qsizetype maxWordLength = 200;

/// What to tell the user; null after success.
QString reasonOf(SoundOutcome outcome) {
    switch (outcome) {
    case SoundOutcome::Played:
        return {};
    case SoundOutcome::NoDevice:
        return QStringLiteral("没有可用的音频输出设备。");
    case SoundOutcome::Unplayable:
        return QStringLiteral("系统无法解码这段录音。");
    case SoundOutcome::NoSpeechService:
        return QStringLiteral("语音服务 (speech-dispatcher) 没有安装或没有回应。");
    case SoundOutcome::NoVoice:
        return QStringLiteral("语音服务没有可用的语音引擎 (speech-dispatcher-espeak-ng)。");
    case SoundOutcome::NoPlayer:
        return QStringLiteral("没有安装多媒体组件 (libqt6multimedia6, libspeechd2)。");
    }
    return QStringLiteral("系统的多媒体组件出错。");
}

/// Whether an answer is a page, such as the sign-in page of a network, and no recording.
bool isPage(const QByteArray &body) {
    const QByteArray start = body.first(std::min<qsizetype>(body.size(), 64)).trimmed();
    return start.startsWith('<') || start.startsWith('{');
}

/// The text for the speech service: one line without control characters.
QString spokenText(const QString &word) {
    QString text;
    for (const QChar character : QStringView(word).first(std::min(word.size(), maxWordLength))) {
        if (character.category() != QChar::Other_Format)
            text += character.isPrint() ? character : u' ';
    }
    return text.simplified();
}

QString languageOf(const QString &word, Accent accent) {
    if (containsHan(word))
        return QStringLiteral("zh-CN");
    return accent == Accent::British ? QStringLiteral("en-GB") : QStringLiteral("en-US");
}

} // namespace

QUrl pronunciationUrl(const QString &youdaoBase, const QString &word, Accent accent) {
    const QString plain = word.trimmed();
    if (plain.isEmpty() || plain.size() > maxWordLength || !plain.isValidUtf16())
        return {};
    return QUrl::fromEncoded(youdaoBase.toUtf8() + "/dictvoice?audio=" + QUrl::toPercentEncoding(plain) +
                                 (accent == Accent::British ? "&type=1" : "&type=2"),
                             QUrl::StrictMode);
}

Pronunciation::Pronunciation(QObject *parent) : QObject(parent) {
    connect(&m_sound, &SoundProcess::started, this, [this] {
        setFetching(false);
        setSynthetic(m_isSpeaking);
    });
    connect(&m_sound, &SoundProcess::finished, this, &Pronunciation::onSoundFinished);
}

Pronunciation::~Pronunciation() = default;

void Pronunciation::play(const QString &word) {
    play(word, WindowPreferences(Services::current().defaults).accent());
}

void Pronunciation::play(const QString &word, WindowPreferences::Accent accent) {
    cancel();
    m_word = word;
    m_accent = accent == WindowPreferences::Accent::British ? Accent::British : Accent::American;
    m_reason = QString();
    m_sources = {Source::Online, Source::Dictionaries, Source::Speech};
    if (Services::current().dictionary.currentMode() == DictionarySourceMode::AppleOffline)
        m_sources.swapItemsAt(0, 1);
    m_cancellation = std::make_unique<Cancellation>();
    setFetching(true);
    tryNext();
}

void Pronunciation::cancel() {
    m_cancellation.reset();
    m_sources.clear();
    m_sound.stop();
    m_isSpeaking = false;
    setSynthetic(false);
    setFetching(false);
}

void Pronunciation::tryNext() {
    if (m_sources.isEmpty()) {
        setFetching(false);
        Q_EMIT failed(QStringLiteral("无法播放发音：") + m_reason);
        return;
    }
    switch (m_sources.takeFirst()) {
    case Source::Online:
        fetch();
        break;
    case Source::Dictionaries:
        find();
        break;
    case Source::Speech:
        speak();
        break;
    }
}

void Pronunciation::giveUpSource(const QString &reason) {
    if (m_reason.isNull())
        m_reason = reason;
    tryNext();
}

void Pronunciation::fetch() {
    const QUrl url =
        pronunciationUrl(ServerAddresses::from(Services::current().defaults).youdao, m_word, m_accent);
    if (url.isValid())
        download(url, m_cancellation->token());
    else
        giveUpSource(QStringLiteral("这个词没有发音。"));
}

QCoro::Task<> Pronunciation::download(QUrl url, std::stop_token stop) {
    HttpRequest request;
    request.url = url;
    request.idleLimit = 5s;
    request.totalLimit = 10s;
    request.bodyLimit = maxSoundSize;
    request.stop = stop;
    const HttpReply reply = co_await Services::current().http.send(request);
    if (stop.stop_requested())
        co_return;
    if (reply.isOk() && !reply.body.isEmpty() && !isPage(reply.body))
        playBytes(reply.body, {});
    else
        giveUpSource(reply.status == 0 ? QStringLiteral("请检查网络连接后重试。")
                                       : QStringLiteral("服务器没有提供这个词的发音。"));
}

void Pronunciation::find() {
    const auto search = [&shelf = Services::current().shelf, word = m_word, accent = m_accent] {
        return shelf.sound(word, accent);
    };
    const std::stop_token stop = m_cancellation->token();
    runInBackground(this, search, [this, stop](const std::optional<DictionaryShelf::Sound> &sound) {
        if (stop.stop_requested())
            return;
        if (sound && sound->bytes.size() <= maxSoundSize)
            playBytes(sound->bytes, sound->suffix);
        else
            giveUpSource({});
    });
}

void Pronunciation::speak() {
    const QString text = spokenText(m_word);
    if (text.isEmpty()) {
        tryNext();
        return;
    }
    m_isSpeaking = true;
    m_sound.start({languageOf(text, m_accent), text});
}

void Pronunciation::playBytes(const QByteArray &sound, const QString &suffix) {
    // The suffix comes from a dictionary's file.
    static const QRegularExpression form(QStringLiteral("\\A[a-zA-Z0-9]{1,4}\\z"));
    m_file = std::make_unique<QTemporaryFile>();
    if (form.match(suffix).hasMatch())
        m_file->setFileTemplate(m_file->fileTemplate() + u'.' + suffix);
    if (m_file->open() && m_file->write(sound) == sound.size() && m_file->flush())
        m_sound.start({m_file->fileName()});
    else
        giveUpSource(QStringLiteral("临时文件无法写入。"));
}

void Pronunciation::onSoundFinished(SoundOutcome outcome) {
    if (outcome == SoundOutcome::Played) {
        setFetching(false);
    } else if (m_isSpeaking) {
        m_isSpeaking = false;
        setSynthetic(false);
        // A service that does not answer leaves the player waiting.
        m_reason += QStringLiteral("也无法由系统语音朗读：") +
                    reasonOf(outcome == SoundOutcome::Unplayable ? SoundOutcome::NoSpeechService : outcome);
        tryNext();
    } else {
        if (outcome == SoundOutcome::NoDevice || outcome == SoundOutcome::NoPlayer) {
            // The next source would fail, too.
            m_reason = QString();
            m_sources.clear();
        }
        giveUpSource(reasonOf(outcome));
    }
}

void Pronunciation::setFetching(bool isFetching) {
    if (isFetching == m_isFetching)
        return;
    m_isFetching = isFetching;
    Q_EMIT isFetchingChanged();
}

void Pronunciation::setSynthetic(bool isSynthetic) {
    if (isSynthetic == m_isSynthetic)
        return;
    m_isSynthetic = isSynthetic;
    Q_EMIT isSyntheticChanged();
}

} // namespace lexiquill
