#include "cli/app_launcher.h"

#include "cli/cli_handler.h"
#include "cli/terminal.h"

namespace lexiquill {

namespace {

/// Arguments that a desktop's launcher adds of its own accord.
bool isDesktopStart(const QString &firstArgument) {
    return firstArgument.startsWith(QLatin1StringView("-psn_")) ||
           firstArgument == QLatin1StringView("-NSDocumentRevisionsDebugMode");
}

} // namespace

void AppLauncher::main(const QStringList &arguments) {
    if (arguments.size() >= 2 && !isDesktopStart(arguments[1]))
        CLIHandler::run(arguments.mid(1));
    terminal::printLine(QStringLiteral("此版本不含图形界面，请在终端中使用：Lexiquill help"));
}

} // namespace lexiquill
