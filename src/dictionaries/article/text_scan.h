#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace lexiquill::article {

/// True for a Chinese character, or for the high surrogate of one.
bool isHan(QChar c);
bool isAsciiLetter(QChar c);
/// Whether the text holds Chinese, and not Japanese.
bool isChinese(QStringView text);

/// The character at `position`, a zero character outside the text.
QChar charAt(QStringView text, qsizetype position);

/// The first position at or after `position` that is not a blank, or the end of the text.
qsizetype skipBlanks(QStringView text, qsizetype position);

/// The bracket that closes `open`; a zero character if `open` is not an opening bracket.
QChar closingBracket(QChar open);

/// For every character the number of matched pairs of brackets or quotation marks around it. The marks
/// themselves count as inside.
QList<int> bracketDepths(QStringView text);

bool endsSentence(QChar c);

/// The first Chinese character, or the opening bracket or quotation mark directly before it; the end of the
/// text if there is none.
qsizetype chineseStart(QStringView text);

/// The number of words in Latin letters.
int latinWordCount(QStringView text);

/// Whether a text has the headword, a form of it, or the tilde that stands for it.
bool mentions(QStringView text, QStringView headword);

/// A sentence and its translation. Either may be empty.
struct SentencePair {
    QStringView english;
    QStringView chinese;
};
/// Divides a text at the place where English changes to Chinese, or Chinese to English.
SentencePair sentencePair(QStringView text);

/// The text without blanks, and without brackets and quotation marks at its ends that have no partner.
QStringView withoutTornMarks(QStringView text);

} // namespace lexiquill::article
