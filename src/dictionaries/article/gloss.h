#pragma once

#include "dictionaries/article/senses.h"

#include <QList>
#include <QString>

namespace lexiquill::article {

/// The sense of one gloss. Its meaning is empty if the gloss contains only separators. Labels at the start
/// ("[医]", "〈口〉", "(正式) ") become contexts, unless no meaning would be left.
Sense senseFrom(const QString &gloss);

/// The senses of a line without numbers: the pieces between semicolons, or short Chinese glosses between
/// commas.
QList<Sense> splitGlosses(const QString &line);

} // namespace lexiquill::article
