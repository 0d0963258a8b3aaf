#include "platform/process.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>
#include <fcntl.h>
#include <malloc.h>
#include <pwd.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace lexiquill {

namespace {

/// The home directory in the system's list of users; empty when it has none.
std::string homeOfAccount() {
    std::vector<char> buffer(std::size_t{1} << 16);
    passwd entry{};
    passwd *found = nullptr;
    ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr && found->pw_dir != nullptr ? found->pw_dir : std::string();
}

} // namespace

void prepareProcess() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // open() takes the lowest free descriptor, so this fills the gaps among 0, 1 and 2.
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= 2)
        descriptor = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    if (descriptor >= 0)
        ::close(descriptor);
    if (qEnvironmentVariableIsEmpty("HOME")) {
        if (const std::string home = homeOfAccount(); !home.empty())
            ::setenv("HOME", home.c_str(), 1);
    }
}

void expectAllocations(qsizetype size) {
    // Grows the heap in one step instead of thousands of small ones, and requests huge pages for it.
    constexpr int most = 31 << 20;
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
    mallopt(M_TRIM_THRESHOLD, 64 << 20);
    mallopt(M_TOP_PAD, 1 << 20);
    constexpr std::size_t hugePage = std::size_t{1} << 21;
    const auto usable = static_cast<std::size_t>(std::clamp<qsizetype>(size, 0, most));
    if (usable < 2 * hugePage)
        return;
    void *const memory = std::malloc(usable);
    void *start = memory;
    std::size_t space = usable;
    if (std::align(hugePage, hugePage, start, space) != nullptr)
        ::madvise(start, space, MADV_HUGEPAGE);
    std::free(memory);
}

QString executableDirectory() {
    return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).absolutePath();
}

QString libraryDirectory() {
    Dl_info info{};
    if (::dladdr(reinterpret_cast<const void *>(&libraryDirectory), &info) == 0 || info.dli_fname == nullptr)
        return executableDirectory();
    return QFileInfo(QFile::decodeName(info.dli_fname)).absolutePath();
}

void endProcess(int status) {
    std::fflush(nullptr);
    std::_Exit(status);
}

} // namespace lexiquill
