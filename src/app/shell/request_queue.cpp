#include "app/shell/request_queue.h"

#include <utility>

namespace lexiquill {

namespace {

/// More than any desktop sends before the window is there.
constexpr qsizetype mostKept = 32;

} // namespace

ApplicationRequests RequestQueue::entry() {
    return {
        .activate =
            [this](const ActivationTokens &tokens) { take([=, this] { m_handlers.activate(tokens); }); },
        .open =
            [this](const QStringList &urls, const ActivationTokens &tokens) {
                take([=, this] { m_handlers.open(urls, tokens); });
            },
        .activateAction =
            [this](const QString &action, const QString &parameter, const ActivationTokens &tokens) {
                take([=, this] { m_handlers.activateAction(action, parameter, tokens); });
            },
        // The answer is needed at once; the lookup itself is done later, from the event loop.
        .lookup = m_handlers.lookup,
    };
}

void RequestQueue::open() {
    m_isOpen = true;
    for (const auto &request : std::exchange(m_kept, {}))
        request();
}

void RequestQueue::take(std::function<void()> request) {
    if (m_isOpen)
        request();
    else if (m_kept.size() < mostKept)
        m_kept += std::move(request);
}

} // namespace lexiquill
