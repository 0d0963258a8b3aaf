#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill {

/// The text in the form used for comparison: in Unicode form NFKC (full-width letters become plain ones),
/// with runs of white space and non-printable characters as single blanks.
QString comparable(const QString &text);

/// The text in Unicode form NFKC, with every Chinese character as a separate word, so that a run of
/// characters is found as a phrase anywhere in a text. Punctuation after a Chinese character becomes a word,
/// too, so that no phrase extends across it.
QString segmented(const QString &text);

/// The terms in the form used for comparison, joined by blanks. Empty if there is nothing to search for, or
/// if the terms have more than 256 characters.
QString normalizedQuery(const QStringList &terms);

/// The SQLite full-text query for a normalised query: all terms must match; a Latin term also matches the
/// beginning of a word. Empty if the query has no letter and no digit.
QString matchExpression(const QString &query);

} // namespace lexiquill
