#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill {

/// The text without passages in single angle quotation marks ("‹…›", at least one character inside).
QString withoutAngleQuotes(const QString &text);

/// The Chinese pieces of one gloss: split at ";", "；" and ",", without notes in Latin letters, trimmed of
/// white space and punctuation. Pieces without a Han character are dropped; duplicates are kept.
QStringList cleanChineseTokens(const QString &gloss);

} // namespace lexiquill
