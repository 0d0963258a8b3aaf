#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

#include <memory>
#include <type_traits>
#include <utility>

namespace lexiquill {

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

/// Frees a large value on another thread. Nobody else may be using what it holds.
template <typename Value> void discardInBackground(Value &&value) {
    auto rest = std::make_shared<std::decay_t<Value>>(std::forward<Value>(value));
    QThreadPool::globalInstance()->start([rest = std::move(rest)]() mutable { rest.reset(); });
}

} // namespace lexiquill
