#pragma once

#include <functional>
#include <memory>

namespace lexiquill {

/// Watches for the session, or the user, asking the process to end.
class TerminationWatch {
public:
    virtual ~TerminationWatch() = default;
};

/// From now on such a request calls `ended` from this thread's event loop in place of ending the process at
/// once. There is one watch in a process; null when it cannot be set up.
std::unique_ptr<TerminationWatch> watchTermination(std::function<void()> ended);

} // namespace lexiquill
