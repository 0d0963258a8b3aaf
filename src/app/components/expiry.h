#pragma once

#include "support/instant.h"

#include <QObject>
#include <QTimer>

namespace lexiquill {

/// Emits a signal at a point in time. Uses the wall clock, which jumps when the machine sleeps or when its
/// time is set.
class Expiry : public QObject {
    Q_OBJECT

public:
    explicit Expiry(Clock clock, QObject *parent = nullptr);

    /// Emits `expired` once when `until` is reached, or when the clock is set back.
    void start(Instant until);

    /// Whether `until` has been reached or the clock has been set back.
    bool isOver() const;

Q_SIGNALS:
    void expired();

private:
    void look();

    Clock m_clock;
    QTimer m_timer;
    Instant m_since;
    Instant m_until;
};

} // namespace lexiquill
