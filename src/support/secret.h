#pragma once

#include <QByteArray>

namespace lexiquill {

/// Overwrites the bytes, also in all copies that share them. For texts that must not stay in memory. Not for
/// bytes in read-only memory, such as literals.
void wipe(const QByteArray &bytes);

} // namespace lexiquill
