#pragma once

namespace lexiquill {

/// Gives the frames that this process itself draws around its windows light or dark colours. Does nothing
/// where the desktop draws them.
void paintWindowFrames(bool isDark);

} // namespace lexiquill
