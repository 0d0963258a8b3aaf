#pragma once

#include "model/dictionary_entry.h"

#include <QList>
#include <QString>

#include <optional>

namespace lexiquill {

/// Parses a dictionary service's definition text, "headword | phonetic | body", into an entry. A text
/// without "|" is all body, and `query` is then the headword.
DictionaryEntry parseDefinition(const QString &rawText, const QString &query);

/// The steps of the parser, each a pure function.

/// The groups of a body: one for each part-of-speech word in it, or a single group "释义".
QList<PartOfSpeechGroup> extractPOSGroups(const QString &body);
/// The senses of a group's text, split at "①" … "⑳" or "1." markers.
QList<SenseItem> extractSenses(const QString &text);
/// One sense: "(context) meaning ▸ example ▸ example". No `index`: an unnumbered sense.
SenseItem parseSingleSense(const QString &text, std::optional<qint64> index);

} // namespace lexiquill
