#pragma once

#include <stop_token>

namespace lexiquill {

/// Held by the code that starts asynchronous work. cancel(), or destroying this object, cancels the work,
/// which then ends within that call. A coroutine that awaits it also resumes within that call, and must check
/// its token before it uses anything that may have been destroyed.
class Cancellation {
public:
    Cancellation() = default;
    ~Cancellation() { cancel(); }
    Cancellation(const Cancellation &) = delete;
    Cancellation &operator=(const Cancellation &) = delete;

    void cancel() {
        // The code that runs now may destroy this object.
        std::stop_source source = m_source;
        source.request_stop();
    }
    std::stop_token token() const { return m_source.get_token(); }

private:
    std::stop_source m_source;
};

} // namespace lexiquill
