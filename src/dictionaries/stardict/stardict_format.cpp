#include "dictionaries/stardict/stardict_format.h"

#include "dictionaries/stardict/stardict_reader.h"

namespace lexiquill::stardict {

DictionaryFormat format() {
    return {.name = QStringLiteral("StarDict"),
            .suffix = QStringLiteral(".ifo"),
            .files = filesOf,
            .describe = describe,
            .open = StardictReader::open};
}

} // namespace lexiquill::stardict
