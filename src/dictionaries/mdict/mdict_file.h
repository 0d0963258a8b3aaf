#pragma once

#include "dictionaries/mdict/header.h"
#include "dictionaries/mdict/record_stream.h"

#include <functional>
#include <memory>
#include <vector>

namespace lexiquill::mdict {

/// An opened .mdx or .mdd file: keys and the record of each.
class MdictFile {
public:
    struct Opened {
        std::unique_ptr<MdictFile> file;
        DictionaryProblem problem = DictionaryProblem::None;
    };
    /// Reads the header and the table of records, but no keys.
    static Opened open(const QString &path, FileKind kind);
    /// Reads only the header and the number of keys.
    static ReadHeader describe(const QString &path);

    const Header &header() const { return m_header; }

    /// Receives a key in the file's encoding, without its end, and the place of its record. Returns false to
    /// stop.
    using KeyVisitor = std::function<bool(QByteArrayView key, const ArticlePlace &place)>;
    /// Passes all keys in the order of the file. Keeps one block of them in memory at a time, and the
    /// offset of each record. TooLarge when the visitor stops. Keys of a damaged file may have been visited
    /// when that turns out.
    DictionaryProblem readKeys(const KeyVisitor &visit);

    /// The bytes of a record; no value when there are none or they are damaged.
    std::optional<QByteArray> record(const ArticlePlace &place) {
        return m_records.read(place.offset, place.size);
    }

private:
    /// Where the keys are in the file, and how many of them.
    struct KeySection {
        quint64 blocks = 0;
        quint64 keys = 0;
        quint64 unpackedIndexSize = 0;
        quint64 indexSize = 0;
        quint64 blocksSize = 0;
        quint64 index = 0; ///< position of the index; the blocks follow it
        quint64 end() const { return index + indexSize + blocksSize; }
    };
    struct KeyBlock {
        quint64 start = 0; ///< in the file
        quint64 packedSize = 0;
        quint64 size = 0;
    };
    using OffsetVisitor = std::function<bool(QByteArrayView key, quint64 offset)>;

    int numberSize() const { return m_header.isVersion2 ? 8 : 4; }
    DictionaryProblem openSections();
    DictionaryProblem readKeySection();
    DictionaryProblem readIndex(std::vector<KeyBlock> &blocks) const;
    DictionaryProblem unpackIndex(QByteArray &index) const;
    DictionaryProblem forEachKey(const std::vector<KeyBlock> &blocks, const OffsetVisitor &visit) const;
    DictionaryProblem forEachKeyIn(QByteArrayView block, const OffsetVisitor &visit) const;

    std::unique_ptr<FileSnapshot> m_file;
    Header m_header;
    KeySection m_keys;
    RecordStream m_records;
};

} // namespace lexiquill::mdict
