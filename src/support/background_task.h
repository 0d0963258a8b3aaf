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

// How work is done on another thread. There is no other way in this program.

/// Runs `work` on another thread and then, on the main thread, `done` with its result, unless `owner` is gone
/// by then. `work` must not touch the owner.
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

/// Runs `work` on another thread for somebody who will wait for the result.
template <typename Work> auto startInBackground(Work work) {
    const auto task = std::make_shared<std::packaged_task<std::invoke_result_t<Work>()>>(std::move(work));
    auto result = task->get_future();
    QThreadPool::globalInstance()->start([task] { (*task)(); });
    return result;
}

/// Frees a large value on another thread. Nobody else may be using what it holds.
template <typename Value> void discardInBackground(Value &&value) {
    auto rest = std::make_shared<std::decay_t<Value>>(std::forward<Value>(value));
    QThreadPool::globalInstance()->start([rest = std::move(rest)]() mutable { rest.reset(); });
}

/// A thread for work that is done one piece after the other. It is started by the first piece.
class BackgroundQueue {
public:
    BackgroundQueue() { m_pool.setMaxThreadCount(1); }
    /// Waits for the piece that is being done; what has not been begun is dropped.
    ~BackgroundQueue() {
        m_pool.clear();
        m_pool.waitForDone();
    }
    Q_DISABLE_COPY_MOVE(BackgroundQueue)

    void add(std::function<void()> work) { m_pool.start(std::move(work)); }
    /// Waits until all is done; false when that takes longer. A negative time is any time.
    bool finish(int milliseconds = -1) { return m_pool.waitForDone(milliseconds); }

private:
    QThreadPool m_pool;
};

} // namespace lexiquill
