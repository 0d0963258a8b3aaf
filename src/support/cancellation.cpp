#include "support/cancellation.h"

namespace lexiquill {

void CancellationToken::onCancelled(QObject *context, const std::function<void()> &then) const {
    if (m_state && m_state->beacon)
        QObject::connect(m_state->beacon.get(), &QObject::destroyed, context, then);
}

Cancellation::Cancellation() : m_state(std::make_shared<CancellationToken::State>()) {
    m_state->beacon = std::make_unique<QObject>();
}

Cancellation::~Cancellation() {
    cancel();
}

void Cancellation::cancel() {
    // What runs now may destroy this object.
    const auto state = m_state;
    state->beacon.reset();
}

} // namespace lexiquill
