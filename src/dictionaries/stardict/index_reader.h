#pragma once

#include "dictionaries/index/lookup_table.h"
#include "dictionaries/stardict/ifo_file.h"

#include <QByteArrayView>

namespace lexiquill::stardict {

/// The files of a dictionary that contain its words.
struct IndexFiles {
    IfoInfo info;
    QByteArrayView index;
    bool isPacked = false; ///< whether `index` is a gzip file; the result then contains it unpacked
    QByteArrayView synonyms;
};

/// Reads all words and synonyms. A malformed list of synonyms counts as empty. For a malformed index
/// `isSound` is false.
TableContent readIndex(const IndexFiles &files);

} // namespace lexiquill::stardict
