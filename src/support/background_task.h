#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

#include <functional>
#include <future>
#include <memory>
#include <type_traits>
#include <utility>

namespace lexiquill {

// All work on other threads goes through these functions.

/// Runs `work` on another thread and then, on the main thread, `done` with its result, unless `owner` has
/// been destroyed by then. `work` must not touch the owner.
template <typename Owner, typename Work, typename Done>
void runInBackground(Owner *owner, Work work, Done done) {
    QThreadPool::globalInstance()->start(
        [owner = QPointer(owner), work = std::move(work), done = std::move(done)]() mutable {
            auto finish = [owner, done = std::move(done), result = work()]() mutable {
                if (owner)
                    done(std::move(result));
            };
            QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(finish), Qt::QueuedConnection);
        });
}

/// Runs `work` on another thread and returns a future for its result.
template <typename Work> auto startInBackground(Work work) {
    const auto task = std::make_shared<std::packaged_task<std::invoke_result_t<Work>()>>(std::move(work));
    auto result = task->get_future();
    QThreadPool::globalInstance()->start([task] { (*task)(); });
    return result;
}

/// Destroys a large value on another thread. No other code may be using its content.
template <typename Value> void discardInBackground(Value &&value) {
    auto rest = std::make_shared<std::decay_t<Value>>(std::forward<Value>(value));
    QThreadPool::globalInstance()->start([rest = std::move(rest)]() mutable { rest.reset(); });
}

/// A thread that runs tasks one after the other. The first task starts it.
class BackgroundQueue {
public:
    BackgroundQueue() { m_pool.setMaxThreadCount(1); }
    /// Waits for the running task; tasks that have not begun are dropped.
    ~BackgroundQueue() {
        m_pool.clear();
        m_pool.waitForDone();
    }
    Q_DISABLE_COPY_MOVE(BackgroundQueue)

    void add(std::function<void()> work) { m_pool.start(std::move(work)); }
    /// Waits until all tasks are done; false when that takes longer. A negative time means no limit.
    bool finish(int milliseconds = -1) { return m_pool.waitForDone(milliseconds); }

private:
    QThreadPool m_pool;
};

} // namespace lexiquill
