#include "app/components/expiry.h"

#include <chrono>

namespace lexiquill {

Expiry::Expiry(Clock clock, QObject *parent) : QObject(parent), m_clock(std::move(clock)) {
    m_timer.setInterval(std::chrono::seconds{10});
    connect(&m_timer, &QTimer::timeout, this, &Expiry::look);
}

void Expiry::start(Instant until) {
    m_since = m_clock();
    m_until = until;
    m_timer.start();
}

bool Expiry::isOver() const {
    const Instant now = m_clock();
    return now >= m_until || now < m_since;
}

void Expiry::look() {
    if (!isOver())
        return;
    m_timer.stop();
    Q_EMIT expired();
}

} // namespace lexiquill
