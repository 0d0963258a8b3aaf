#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace lexiquill {

/// Tells asynchronous work whether its result is still wanted. The default one is never cancelled.
class CancellationToken {
public:
    CancellationToken() = default;

    bool isCancelled() const { return m_state && !m_state->beacon; }
    /// Calls `then` at the moment of cancellation, unless `context` is gone by then.
    void onCancelled(QObject *context, const std::function<void()> &then) const;

private:
    friend class Cancellation;

    struct State {
        std::unique_ptr<QObject> beacon; ///< destroyed by the cancellation
    };
    explicit CancellationToken(std::shared_ptr<State> state) : m_state(std::move(state)) {}

    std::shared_ptr<State> m_state;
};

/// Held by whoever starts asynchronous work, to give it up: by cancel(), or simply by destroying this. The
/// work then ends within that call, with a result that says nothing; a coroutine that awaits it goes on
/// there and must ask its token before it touches anything that may be gone.
class Cancellation {
public:
    Cancellation();
    ~Cancellation();
    Q_DISABLE_COPY_MOVE(Cancellation)

    void cancel();
    CancellationToken token() const { return CancellationToken(m_state); }

private:
    std::shared_ptr<CancellationToken::State> m_state;
};

} // namespace lexiquill
