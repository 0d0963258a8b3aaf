#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace lexiquill::article {

/// True for a Chinese character; a high surrogate of the supplementary ones counts as one.
bool isHan(QChar c);
bool isAsciiLetter(QChar c);
bool containsHan(QStringView text);
/// Whether a good part of the text is in Chinese.
bool isChinese(QStringView text);

/// The character at `position`, a zero character outside the text.
QChar charAt(QStringView text, qsizetype position);

/// The first position from `position` on that is no blank, or the end of the text.
qsizetype skipBlanks(QStringView text, qsizetype position);

/// The bracket that closes `open`, a zero character when it opens none.
QChar closingBracket(QChar open);

/// For every character how many matched pairs of brackets or quotation marks it stands in; the marks
/// themselves count as inside.
QList<int> bracketDepths(QStringView text);

} // namespace lexiquill::article
