#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace lexiquill {

/// The case-folded form of UTF-8 text; invalid bytes count as U+FFFD.
QByteArray foldCase(QByteArrayView text);

/// A hash of foldCase(text) that is the same on every run of the program.
quint32 foldedHash(QByteArrayView text);

} // namespace lexiquill
