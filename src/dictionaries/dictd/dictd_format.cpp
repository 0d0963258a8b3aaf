#include "dictionaries/dictd/dictd_format.h"

#include "dictionaries/dictd/dictd_reader.h"

namespace lexiquill::dictd {

DictionaryFormat format() {
    return {.name = QStringLiteral("dictd"),
            .suffix = QStringLiteral(".index"),
            .isMainFile = hasArticles,
            .files = filesOf,
            .describe = describe,
            .open = DictdReader::open};
}

} // namespace lexiquill::dictd
