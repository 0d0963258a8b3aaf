#pragma once

#include <sys/resource.h>

#include <csignal>

namespace lexiquill {

/// While this object exists, no file of this process can become longer than `longest` bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t longest) {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_usual);
        const rlimit limit{.rlim_cur = longest, .rlim_max = m_usual.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_usual); }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_usual{};
};

} // namespace lexiquill
