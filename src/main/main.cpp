#include "cli/terminal.h"
#include "main/app_launcher.h"
#include "platform/process.h"

#include <QString>

#include <cstdlib>
#include <new>

namespace {

/// Users see only the program's own messages, not those of libraries.
void dropLibraryMessage(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

int main(int argc, char **argv) {
    lexiquill::prepareProcess();
    qInstallMessageHandler(dropLibraryMessage);
    try {
        return lexiquill::AppLauncher::main(argc, argv);
    } catch (const std::bad_alloc &) {
        lexiquill::terminal::printLine(QStringLiteral("❌ 内存不足，操作未完成。"));
        return EXIT_FAILURE;
    }
}
