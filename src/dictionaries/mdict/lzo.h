#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace lexiquill::mdict {

/// Whether the system's library that unpacks LZO1X is there. The first call loads it.
bool hasLzo();

/// Unpacks LZO1X data to exactly `size` bytes; false when that is impossible.
bool unpackLzo(QByteArrayView packed, qsizetype size, QByteArray &out);

} // namespace lexiquill::mdict
