#pragma once

#include "stardict_writer.h"
#include "starter/entry.h"

#include <QMap>

#include <vector>

namespace lexiquill::tools {

/// The dictionary turned round: for every short Chinese gloss the English words that it explains, the most
/// useful first, with their parts of speech and all glosses of the sense.
std::vector<StarDictEntry> chineseIndex(const std::vector<StarterEntry> &entries);

/// How common Chinese words are: the level of an English word for the first gloss of its first sense, for the
/// words of the first two levels.
QMap<QString, int> commonChineseWords(const std::vector<StarterEntry> &entries);

} // namespace lexiquill::tools
