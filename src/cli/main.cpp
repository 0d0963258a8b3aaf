#include "cli/app_launcher.h"
#include "platform/process.h"

#include <QStringList>

int main(int argc, char **argv) {
    lexiquill::ignoreBrokenPipes();
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromUtf8(argv[i]);
    lexiquill::AppLauncher::main(arguments);
    return 0;
}
