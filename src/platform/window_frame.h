#pragma once

#include <optional>

namespace lexiquill {

/// Gives the frames that this process itself draws around its windows light or dark colours; no value means
/// those of the desktop's palette. Does nothing where the desktop draws the frames.
void paintWindowFrames(std::optional<bool> isDark);

} // namespace lexiquill
