#include "platform/linux/file_descriptor.h"
#include "platform/termination.h"

#include <QSocketNotifier>

#include <fcntl.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace lexiquill {

namespace {

constexpr int signals[] = {SIGTERM, SIGHUP, SIGINT};

// A signal handler may only call functions such as write().
volatile std::sig_atomic_t noticeEnd = -1;

void notice(int) {
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(noticeEnd, &byte, 1);
    errno = error;
}

class SignalWatch : public TerminationWatch {
public:
    SignalWatch(int readEnd, int writeEnd, std::function<void()> ended)
        : m_readEnd(readEnd),
          m_writeEnd(writeEnd),
          m_notifier(readEnd, QSocketNotifier::Read) {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, [this, ended = std::move(ended)] {
            m_notifier.setEnabled(false);
            ended();
        });
        noticeEnd = writeEnd;
        for (const int signal : signals)
            std::signal(signal, notice);
    }
    ~SignalWatch() override {
        for (const int signal : signals)
            std::signal(signal, SIG_DFL);
    }
    SignalWatch(const SignalWatch &) = delete;
    SignalWatch &operator=(const SignalWatch &) = delete;

private:
    FileDescriptor m_readEnd;
    FileDescriptor m_writeEnd;
    QSocketNotifier m_notifier;
};

} // namespace

std::unique_ptr<TerminationWatch> watchTermination(std::function<void()> ended) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return nullptr;
    return std::make_unique<SignalWatch>(ends[0], ends[1], std::move(ended));
}

} // namespace lexiquill
