#pragma once

#include "platform/application_endpoint.h"

#include <QList>

#include <functional>

namespace lexiquill {

/// Keeps the requests that arrive before the window can take them. If the session bus starts the process, the
/// request that it was started for is among them.
class RequestQueue {
public:
    /// `handlers` are called once the queue is open.
    explicit RequestQueue(ApplicationRequests handlers) : m_handlers(std::move(handlers)) {}
    Q_DISABLE_COPY_MOVE(RequestQueue)

    /// Takes requests at any time; valid as long as the queue.
    ApplicationRequests entry();
    /// Does what has been kept, in its order; from now on requests are done at once.
    void open();

private:
    void take(std::function<void()> request);

    ApplicationRequests m_handlers;
    bool m_isOpen = false;
    QList<std::function<void()>> m_kept;
};

} // namespace lexiquill
