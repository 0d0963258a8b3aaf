#include "sound_player/speech.h"

#include <QCoreApplication>

#include <libspeechd.h>

#include <cstdlib>
#include <optional>
#include <utility>

namespace lexiquill {

namespace {

/// What the connection's thread calls, for lack of a parameter of its own.
std::function<void(SPDNotificationType)> &notified() {
    static std::function<void(SPDNotificationType)> function;
    return function;
}

void onNotification(std::size_t, std::size_t, SPDNotificationType type) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [type] {
            if (notified())
                notified()(type);
        },
        Qt::QueuedConnection);
}

/// Whether the service has any engine besides the one that explains that there is none.
bool hasVoice(SPDConnection *connection) {
    char **const modules = spd_list_modules(connection);
    if (modules == nullptr)
        return false;
    bool hasVoice = false;
    for (char **module = modules; *module != nullptr; ++module)
        hasVoice = hasVoice || QLatin1StringView(*module) != QLatin1StringView("dummy");
    free_spd_modules(modules);
    return hasVoice;
}

/// Begins to speak; no value after success.
std::optional<SoundOutcome> speak(SPDConnection *connection, const QString &text, const QString &language) {
    if (connection == nullptr)
        return SoundOutcome::NoSpeechService;
    if (!hasVoice(connection))
        return SoundOutcome::NoVoice;
    connection->callback_begin = onNotification;
    connection->callback_end = onNotification;
    connection->callback_cancel = onNotification;
    for (const SPDNotification kind : {SPD_BEGIN, SPD_END, SPD_CANCEL})
        spd_set_notification_on(connection, kind);
    spd_set_data_mode(connection, SPD_DATA_TEXT);
    spd_set_language(connection, language.toUtf8().constData());
    if (spd_say(connection, SPD_TEXT, text.toUtf8().constData()) < 0)
        return SoundOutcome::NoSpeechService;
    return std::nullopt;
}

} // namespace

struct Speech::Connection {
    struct Closer {
        void operator()(SPDConnection *connection) const { spd_close(connection); }
    };

    std::unique_ptr<SPDConnection, Closer> service;
};

Speech::Speech(const QString &text, const QString &language, std::function<void()> started,
               const std::function<void(SoundOutcome)> &finished)
    : m_connection(std::make_unique<Connection>()) {
    char *error = nullptr;
    constexpr int startsService = 1;
    m_connection->service.reset(
        spd_open2("lexiquill", "pronunciation", nullptr, SPD_MODE_THREADED, nullptr, startsService, &error));
    std::free(error); // NOLINT(cppcoreguidelines-no-malloc)
    notified() = [started = std::move(started), finished](SPDNotificationType type) {
        if (type == SPD_EVENT_BEGIN)
            started();
        else
            finished(SoundOutcome::Played);
    };
    if (const auto failure = speak(m_connection->service.get(), text, language))
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [finished, failure] { finished(*failure); }, Qt::QueuedConnection);
}

Speech::~Speech() {
    notified() = nullptr;
    if (m_connection->service)
        spd_cancel(m_connection->service.get());
}

} // namespace lexiquill
