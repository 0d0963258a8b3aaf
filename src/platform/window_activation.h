#pragma once

#include "platform/application_endpoint.h"

#include <QWindow>

namespace lexiquill {

/// Gives a visible window the keyboard and puts it in front of all others, also when another application is
/// active. `timestamp`: of the key event that it is due to, in the display server's milliseconds; 0 if
/// unknown.
void bringForward(QWindow *window, const ActivationTokens &tokens, quint64 timestamp);

} // namespace lexiquill
