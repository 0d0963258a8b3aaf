#include "dictionaries/stardict/stardict_format.h"

#include "dictionaries/stardict/stardict_dictionary.h"
#include "dictionaries/stardict/stardict_finder.h"

namespace lexiquill::stardict {

DictionaryFinder format() {
    return {.find = findDictionaries, .open = StardictDictionary::fromIfo};
}

} // namespace lexiquill::stardict
