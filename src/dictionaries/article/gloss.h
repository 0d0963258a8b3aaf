#pragma once

#include "dictionaries/article/senses.h"

#include <QList>
#include <QString>
#include <QStringView>

namespace lexiquill::article {

/// The pieces of a text between separators that are not in brackets.
QStringList splitOutsideBrackets(const QString &text, QStringView separators);

/// The sense of one gloss. Its meaning is empty if the gloss contains only separators. Labels at the start
/// ("[医]", "〈口〉", "(正式) ") and an English definition in front of a Chinese meaning become contexts,
/// unless no meaning would be left. Sentences behind the meaning become examples.
/// `isEnglish`: the gloss explains a Chinese word, so Chinese in it is no translation.
Sense senseFrom(const QString &gloss, const QString &headword, bool isEnglish = false);

/// The senses of a line without numbers: the pieces between semicolons, or short Chinese glosses between
/// commas. `isTerm`: the labels at the start apply to all of them.
QList<Sense> splitGlosses(const QString &line, const QString &headword, bool isTerm = false);

/// Whether a text only has a pattern such as "~ (to do sth)".
bool isOnlyPattern(QStringView text);

/// Whether a text only has a remark on grammar or usage in square brackets, such as "[C, U]" or "[构成动词]".
bool isOnlyGrammar(QStringView text);

/// Whether a line begins with a label of a field, such as "[医]", and a meaning.
bool isFieldTerm(QStringView line);

/// The glosses of a line such as "/hello/hi/CL:個|个[ge4]/", without classifiers; empty for other lines.
QStringList slashedGlosses(QStringView line);

} // namespace lexiquill::article
