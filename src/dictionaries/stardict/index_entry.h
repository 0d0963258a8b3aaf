#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace lexiquill::stardict {

/// One entry of an index: where the article of a word lies in the .dict file.
struct IndexEntry {
    QByteArrayView word;
    quint64 offset = 0;
    quint32 size = 0;
    /// Length of the entry itself in bytes.
    qsizetype length = 0;
};

/// The entry at the start of `bytes`; no value if it is truncated or its word is too long.
std::optional<IndexEntry> readIndexEntry(QByteArrayView bytes, int offsetBytes);

/// One entry of a list of synonyms; `target` is the number of the index entry that it refers to.
struct SynonymEntry {
    QByteArrayView word;
    quint32 target = 0;
    qsizetype length = 0;
};

std::optional<SynonymEntry> readSynonymEntry(QByteArrayView bytes);

} // namespace lexiquill::stardict
