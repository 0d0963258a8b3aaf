#pragma once

#include <stop_token>

namespace lexiquill {

/// Held by whoever starts asynchronous work, to give it up: by cancel(), or simply by destroying this. The
/// work then ends within that call; a coroutine that awaits it goes on there and must ask its token before it
/// touches anything that may be gone.
class Cancellation {
public:
    Cancellation() = default;
    ~Cancellation() { cancel(); }
    Cancellation(const Cancellation &) = delete;
    Cancellation &operator=(const Cancellation &) = delete;

    void cancel() {
        // What runs now may destroy this object.
        std::stop_source source = m_source;
        source.request_stop();
    }
    std::stop_token token() const { return m_source.get_token(); }

private:
    std::stop_source m_source;
};

} // namespace lexiquill
