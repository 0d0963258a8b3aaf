#include "platform/process.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace lexiquill {

void prepareProcess() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // open() takes the lowest free descriptor, so this fills the gaps among 0, 1 and 2.
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= 2)
        descriptor = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    if (descriptor >= 0)
        ::close(descriptor);
}

QString executableDirectory() {
    return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).absolutePath();
}

} // namespace lexiquill
