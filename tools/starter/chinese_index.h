#pragma once

#include "stardict_writer.h"
#include "starter/entry.h"

#include <vector>

namespace lexiquill::tools {

/// The dictionary turned round: for every short Chinese gloss the English words that it explains, the most
/// useful first, with their parts of speech and all glosses of the sense.
std::vector<StarDictEntry> chineseIndex(const std::vector<StarterEntry> &entries);

} // namespace lexiquill::tools
