#include "platform/process.h"

#include <QFile>
#include <QFileInfo>

#include <csignal>

namespace lexiquill {

void ignoreBrokenPipes() {
    std::signal(SIGPIPE, SIG_IGN);
}

QString executableDirectory() {
    return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).absolutePath();
}

} // namespace lexiquill
