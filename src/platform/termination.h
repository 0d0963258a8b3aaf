#pragma once

#include <functional>
#include <memory>

namespace lexiquill {

/// Watches for requests of the session or the user to end the process.
class TerminationWatch {
public:
    virtual ~TerminationWatch() = default;
};

/// Makes such a request call `ended` from this thread's event loop, instead of ending the process at once.
/// There can be one watch in a process; null when it cannot be set up.
std::unique_ptr<TerminationWatch> watchTermination(std::function<void()> ended);

} // namespace lexiquill
