// Usage: lexiquill-sound-player FILE
//        lexiquill-sound-player LANGUAGE TEXT
// Plays a sound file, or has the system's speech service speak a text. Writes a line when the sound begins;
// the exit status is a SoundOutcome. Stops when the standard input ends. This is a separate process, because
// incomplete multimedia and speech frameworks may block or terminate the process that uses them, and because
// they need not stay in memory.

#include "sound_player/recording.h"
#include "sound_player/speech.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace lexiquill;

namespace {

/// Longer than any spoken word with all that comes before it.
constexpr std::chrono::seconds longestRun{40};

/// Chooses the multimedia back end that decodes everything itself. The other one needs plug-ins that Qt does
/// not depend on, and crashes without them.
void chooseBackEnd() {
    const char *const choice = "QT_MEDIA_BACKEND";
    if (!qEnvironmentVariableIsSet(choice))
        qputenv(choice, "ffmpeg");
}

void tellStart() {
    std::puts("started");
    std::fflush(stdout);
}

void finish(SoundOutcome outcome) {
    // Later, because the event loop may not have begun.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [outcome] { QCoreApplication::exit(static_cast<int>(outcome)); },
        Qt::QueuedConnection);
}

} // namespace

int main(int argc, char **argv) {
    chooseBackEnd();
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    constexpr int standardInput = 0;
    const QSocketNotifier inputEnd(standardInput, QSocketNotifier::Read);
    QObject::connect(&inputEnd, &QSocketNotifier::activated, &application,
                     [] { finish(SoundOutcome::Played); });
    QTimer::singleShot(longestRun, &application, [] { finish(SoundOutcome::Unplayable); });
    std::unique_ptr<Recording> recording;
    std::unique_ptr<Speech> speech;
    if (arguments.size() == 2)
        recording = std::make_unique<Recording>(arguments[1], tellStart, finish);
    else if (arguments.size() == 3)
        speech = std::make_unique<Speech>(arguments[2], arguments[1], tellStart, finish);
    else
        return EXIT_FAILURE;
    return QCoreApplication::exec();
}
