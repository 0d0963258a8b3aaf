#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace lexiquill {

/// The case-folded form of UTF-8 text; invalid bytes count as U+FFFD.
QByteArray foldCase(QByteArrayView text);

/// The form in which headwords are sorted and searched: without case, accents and the difference between
/// full-width and ordinary characters or kinds of apostrophes. UTF-8.
QByteArray foldedKey(QByteArrayView text);

/// Whether UTF-8 text contains a Chinese character.
bool containsHan(QByteArrayView text);

} // namespace lexiquill
