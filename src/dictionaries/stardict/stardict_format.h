#pragma once

#include "dictionaries/dictionary_finder.h"

namespace lexiquill::stardict {

/// Dictionaries in StarDict's format, which are opened by their .ifo files.
DictionaryFinder format();

} // namespace lexiquill::stardict
