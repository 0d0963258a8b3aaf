#pragma once

#include "dictionaries/dictionary_format.h"

namespace lexiquill::stardict {

/// name.ifo with name.idx or .idx.gz, name.dict or .dict.dz, and name.syn.
DictionaryFormat format();

} // namespace lexiquill::stardict
