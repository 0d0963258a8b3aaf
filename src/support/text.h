#pragma once

#include <QString>
#include <QStringView>

namespace lexiquill {

/// The text without Unicode punctuation at both ends; with `alsoWhiteSpace`, also without white space and
/// line breaks there.
QStringView trimmedOfPunctuation(QStringView text, bool alsoWhiteSpace);

/// The text without blanks (of any width) and tabs at both ends; line breaks stay.
QStringView trimmedOfBlanks(QStringView text);

/// Whether a character belongs to the Han script.
bool isHan(char32_t character);
/// Whether the text contains a character of the Han script.
bool containsHan(QStringView text);

/// The first `count` user-perceived characters (grapheme clusters), or the whole text if it has no more.
QString leadingCharacters(const QString &text, qsizetype count);

/// The number of user-perceived characters.
qsizetype characterCount(const QString &text);

/// The form in which words are compared: trimmed of white space and line breaks, and lower-cased.
QString wordKey(const QString &text);

} // namespace lexiquill
