#pragma once

#include "dictionaries/index/lookup_table.h"
#include "dictionaries/stardict/ifo_file.h"

#include <QByteArrayView>

namespace lexiquill::stardict {

/// The files of a dictionary that name its words.
struct IndexFiles {
    IfoInfo info;
    QByteArrayView index;
    bool isPacked = false; ///< whether `index` is a gzip file; the content then keeps it unpacked
    QByteArrayView synonyms;
};

/// All words and synonyms. A faulty list of synonyms counts as none; a faulty index gives a content that is
/// not sound.
TableContent readIndex(const IndexFiles &files);

} // namespace lexiquill::stardict
