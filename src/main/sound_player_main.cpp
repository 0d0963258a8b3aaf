// Usage: lexiquill-sound-player FILE
// Plays a sound file; the exit status is a SoundOutcome. This is a separate process, because an incomplete
// multimedia framework may terminate the process that uses it, and because it need not stay in memory.

#include "app/search/sound_outcome.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <memory>

using namespace lexiquill;

namespace {

/// Longer than any spoken word.
constexpr std::chrono::seconds longestSound{20};

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 2)
        return EXIT_FAILURE;
    QQmlEngine engine;
    QObject::connect(&engine, &QQmlEngine::exit, &application, &QCoreApplication::exit, Qt::QueuedConnection);
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/lexiquill/SoundPlayer.qml")));
    if (!component.isReady())
        return static_cast<int>(SoundOutcome::NoMultimedia);
    const std::unique_ptr<QObject> player(
        component.createWithInitialProperties({{QStringLiteral("file"), QUrl::fromLocalFile(arguments[1])}}));
    if (!player)
        return static_cast<int>(SoundOutcome::NoMultimedia);
    QTimer::singleShot(longestSound, &application,
                       [] { QCoreApplication::exit(static_cast<int>(SoundOutcome::Unplayable)); });
    return QGuiApplication::exec();
}
