#pragma once

#include "support/instant.h"

#include <QObject>
#include <QTimer>

namespace lexiquill {

/// Tells when something that depends on the time is out of date. It goes by the clock of the wall, which
/// leaps when the machine sleeps or its time is set.
class Expiry : public QObject {
    Q_OBJECT

public:
    explicit Expiry(Clock clock, QObject *parent = nullptr);

    /// Emits `expired` once when it is `until`, or when the clock has been set back.
    void start(Instant until);

    /// Whether that time has come.
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
