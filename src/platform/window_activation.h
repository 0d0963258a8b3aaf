#pragma once

#include "platform/application_endpoint.h"

#include <QWindow>

namespace lexiquill {

/// Gives a visible window the focus and brings it to the front, even if another application is active.
/// `timestamp`: the time of the key event that caused this, in the display server's milliseconds; 0 if
/// unknown.
void bringForward(QWindow *window, const ActivationTokens &tokens, quint64 timestamp);

} // namespace lexiquill
