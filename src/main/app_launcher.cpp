#include "main/app_launcher.h"

#include "cli/cli_handler.h"
#include "cli/terminal.h"
#include "main/core_services.h"
#include "main/modules.h"
#include "platform/process.h"

#include <QStringList>

#include <cstdlib>

namespace lexiquill {

namespace {

/// Whether the first argument comes from a desktop launcher and is not a terminal command.
bool isDesktopStart(const QString &firstArgument) {
    return firstArgument.startsWith(QLatin1StringView("-psn_")) ||
           firstArgument == QLatin1StringView("-NSDocumentRevisionsDebugMode") ||
           firstArgument.startsWith(QLatin1StringView("lexiquill:"), Qt::CaseInsensitive) ||
           firstArgument == QLatin1StringView("--desktop-service") ||
           firstArgument.startsWith(QLatin1StringView("--desktop-action="));
}

bool hasDisplay() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

[[noreturn]] void endWithoutDisplay() {
    terminal::printLine(QStringLiteral("❌ 没有可用的图形桌面，无法打开窗口。请在终端中使用：Lexiquill help"));
    endProcess(EXIT_FAILURE);
}

/// Otherwise Qt would abort the process when the display does not answer.
void takeLibraryMessage(QtMsgType type, const QMessageLogContext &, const QString &) {
    if (type == QtFatalMsg)
        endWithoutDisplay();
}

CommandServices commandServices() {
    return {.storage = shared<StorageManager>,
            .dictionary = shared<DictionaryService>,
            .offlineDictionaries = shared<SystemDictionaryService>,
            .spotlight = shared<SpotlightManager>};
}

} // namespace

int AppLauncher::main(int argc, char **argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromUtf8(argv[i]);
    if (arguments.size() >= 2 && !isDesktopStart(arguments[1]))
        CLIHandler::run(commandServices(), arguments.mid(1));
    auto *const activation = loadModule<ActivationModule>();
    if (activation != nullptr && activation->forwardStart(arguments))
        return EXIT_SUCCESS;

    const bool isInstalled = hasLibrary(DesktopModule::library);
    // Check this before loading the library, because loading takes long.
    if (isInstalled && !hasDisplay())
        endWithoutDisplay();
    auto *const desktop = isInstalled ? loadModule<DesktopModule>() : nullptr;
    if (desktop == nullptr) {
        terminal::printLine(QStringLiteral("此版本不含图形界面，请在终端中使用：Lexiquill help"));
        return EXIT_SUCCESS;
    }
    qInstallMessageHandler(takeLibraryMessage);
    return desktop->run(argc, argv);
}

} // namespace lexiquill
