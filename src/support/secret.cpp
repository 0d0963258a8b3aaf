#include "support/secret.h"

#include <atomic>
#include <cstring>

namespace lexiquill {

void wipe(const QByteArray &bytes) {
    if (bytes.isEmpty())
        return;
    std::memset(const_cast<char *>(bytes.constData()), 0, static_cast<std::size_t>(bytes.size()));
    // Prevents the compiler from removing a write that nothing seems to read.
    std::atomic_signal_fence(std::memory_order_seq_cst);
}

} // namespace lexiquill
