#pragma once

#include "dictionaries/dictionary_format.h"

namespace lexiquill::dictd {

/// name.index with name.dict or name.dict.dz, the files of a server of the DICT protocol.
DictionaryFormat format();

} // namespace lexiquill::dictd
