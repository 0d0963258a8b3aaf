#include "cli/app_launcher.h"

#include "cli/cli_handler.h"
#include "cli/terminal.h"
#include "platform/process.h"

#include <QFile>
#include <QLibrary>
#include <QStringList>

#include <cstdlib>

namespace lexiquill {

namespace {

/// Arguments that a desktop's launcher adds of its own accord.
bool isDesktopStart(const QString &firstArgument) {
    return firstArgument.startsWith(QLatin1StringView("-psn_")) ||
           firstArgument == QLatin1StringView("-NSDocumentRevisionsDebugMode") ||
           firstArgument.startsWith(QLatin1StringView("lexiquill:"), Qt::CaseInsensitive) ||
           firstArgument.startsWith(QLatin1StringView("--desktop-"));
}

bool hasDisplay() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

[[noreturn]] void endWithoutDisplay() {
    terminal::printLine(QStringLiteral("❌ 没有可用的图形桌面，无法打开窗口。请在终端中使用：Lexiquill help"));
    endProcess(EXIT_FAILURE);
}

/// The graphics library would abort the process when the display does not answer.
void takeLibraryMessage(QtMsgType type, const QMessageLogContext &, const QString &) {
    if (type == QtFatalMsg)
        endWithoutDisplay();
}

} // namespace

int AppLauncher::main(int argc, char **argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromUtf8(argv[i]);
    if (arguments.size() >= 2 && !isDesktopStart(arguments[1]))
        CLIHandler::run(arguments.mid(1));
    QLibrary activation(libraryDirectory() + QStringLiteral("/liblexiquill_activation.so"));
    const auto forwardStart =
        reinterpret_cast<bool (*)(const QStringList *)>(activation.resolve("lexiquill_forwardStart"));
    if (forwardStart != nullptr && forwardStart(&arguments))
        return EXIT_SUCCESS;

    const QString desktop = libraryDirectory() + QStringLiteral("/liblexiquill_desktop.so");
    const bool isInstalled = QFile::exists(desktop);
    // Before the library is loaded, which takes longer than all that was done until here.
    if (isInstalled && !hasDisplay())
        endWithoutDisplay();
    QLibrary library(desktop);
    const auto runDesktop =
        isInstalled ? reinterpret_cast<int (*)(int, char **)>(library.resolve("lexiquill_runDesktop"))
                    : nullptr;
    if (runDesktop == nullptr) {
        terminal::printLine(QStringLiteral("此版本不含图形界面，请在终端中使用：Lexiquill help"));
        return EXIT_SUCCESS;
    }
    qInstallMessageHandler(takeLibraryMessage);
    return runDesktop(argc, argv);
}

} // namespace lexiquill
