#pragma once

#include "dictionaries/dictionary_format.h"

namespace lexiquill::mdict {

/// Dictionaries in MDict's format, versions 1 and 2: a .mdx file with the articles and .mdd files with
/// pictures and sounds.
DictionaryFormat format();

} // namespace lexiquill::mdict
