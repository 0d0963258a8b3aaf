#pragma once

#include "dictionaries/dictionary_format.h"

namespace lexiquill::stardict {

/// Dictionaries in StarDict's format, which are opened by their .ifo files.
DictionaryFormat format();

} // namespace lexiquill::stardict
