#pragma once

#include "dictionaries/article/senses.h"

#include <QList>
#include <QString>

namespace lexiquill::article {

/// A sense made of a gloss as it stands; its meaning is empty when the gloss holds nothing but separators.
/// Labels in front ("[医]", "〈口〉", "(正式) ") become contexts, but never so that no meaning is left.
Sense senseFrom(const QString &gloss);

/// The senses of a line without numbers: the pieces between semicolons, or short Chinese glosses between
/// commas.
QList<Sense> splitGlosses(const QString &line);

} // namespace lexiquill::article
