#pragma once

#include <QByteArray>

namespace lexiquill {

/// Overwrites the bytes, also for everyone who shares them; for texts that must not stay in memory. Not for
/// bytes that lie in read-only memory, such as literals.
void wipe(const QByteArray &bytes);

} // namespace lexiquill
