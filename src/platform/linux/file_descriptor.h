#pragma once

#include <unistd.h>

#include <utility>

namespace lexiquill {

/// Owns an open file descriptor; -1 is none.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    ~FileDescriptor() { close(); }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    bool isOpen() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }
    /// Gives the descriptor to a new owner.
    int release() { return std::exchange(m_descriptor, -1); }
    /// Closes the descriptor and owns another one.
    void reset(int descriptor) {
        close();
        m_descriptor = descriptor;
    }

    /// False when the kernel reports an error of an earlier write.
    bool close() {
        const int descriptor = release();
        return descriptor < 0 || ::close(descriptor) == 0;
    }

private:
    int m_descriptor;
};

} // namespace lexiquill
