#pragma once

#include <QString>
#include <QStringView>

namespace lexiquill::stardict {

/// The character that keeps a reader from seeing a label or a number where it stands: U+2060, invisible.
inline constexpr char16_t wordJoiner = 0x2060;

/// A gloss or an example such that the parser of definitions finds no field mark, label, sense number or
/// hidden passage in it. `label` is the part of speech it stands under; a lone label character is written
/// out to suit it. The text must not contain "▸".
QString shielded(const QString &text, QStringView label);

/// A usage or subject label to stand between parentheses, shielded likewise (数 becomes 数学).
QString shieldedContext(const QString &context);

} // namespace lexiquill::stardict
