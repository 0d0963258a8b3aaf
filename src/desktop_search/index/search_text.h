#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill {

/// The form in which texts are compared: full-width letters and the like made plain, white space and what is
/// not printed made single blanks.
QString comparable(const QString &text);

/// The text, full-width letters and the like made plain, with every Chinese character as a word of its own: a
/// run of characters is then found as a phrase, wherever in a text it stands. Punctuation behind a Chinese
/// character becomes a word, too, so that a phrase does not reach over it.
QString segmented(const QString &text);

/// The terms in the form in which texts are compared, joined by blanks. Empty when there is nothing to find
/// or the terms are too long for anything that could be found.
QString normalizedQuery(const QStringList &terms);

/// The full-text query for a normalised query: all of its terms, a Latin one also as the beginning of a word.
/// Empty when there is no letter and no digit in it.
QString matchExpression(const QString &query);

} // namespace lexiquill
