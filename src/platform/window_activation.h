#pragma once

#include "platform/application_endpoint.h"

#include <QWindow>

namespace lexiquill {

/// The token that Wayland takes: its own, or the start-up id, which older desktops send instead. Empty if
/// there is neither; a start-up id that has only a time, as of a search result, is none.
QString waylandToken(const ActivationTokens &tokens);

/// Lets the first window of this process use the tokens that the process was started with. To be called
/// before that window is shown.
void offerTokens(const ActivationTokens &tokens);

/// Gives a visible window the focus and brings it to the front, even if another application is active.
/// `timestamp`: the time of the key event that caused this, in the display server's milliseconds; 0 if
/// unknown. `isNew`: the window has only just been shown. Where there are no tokens and the desktop then
/// gives the focus to new windows only, another window is hidden and shown again.
void bringForward(QWindow *window, const ActivationTokens &tokens, quint64 timestamp, bool isNew);

/// Whether this program sees the selection and the clipboard only while its window has the focus.
bool isSelectionForFocusOnly();

} // namespace lexiquill
