#pragma once

#include <QtGlobal>

namespace lexiquill {

/// The screens follow a wordbook of at most this many words at once. A larger one takes so long that it gets
/// an event, or another thread, of its own.
inline constexpr qsizetype smallWordbook = 2000;

} // namespace lexiquill
