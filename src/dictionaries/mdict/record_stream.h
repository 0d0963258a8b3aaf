#pragma once

#include "dictionaries/dictionary_problem.h"
#include "platform/file_snapshot.h"

#include <QByteArray>

#include <list>
#include <optional>
#include <vector>

namespace lexiquill::mdict {

/// The unpacked records of a file, one after the other.
class RecordStream {
public:
    /// Reads the table of blocks at `position`. `file` must outlive the stream. Damaged when the table
    /// contradicts itself or the file ends before the last block does.
    DictionaryProblem open(const FileSnapshot &file, quint64 position, int numberSize);

    /// Length of all records in bytes.
    quint64 size() const { return m_size; }

    /// `size` bytes at `offset`; no value when they do not exist or a block is damaged.
    std::optional<QByteArray> read(quint64 offset, quint64 size);

private:
    struct Block {
        quint64 start = 0;  ///< in the stream
        quint64 packed = 0; ///< in the file
        quint32 size = 0;
        quint32 packedSize = 0;
    };
    struct CachedBlock {
        size_t index = 0;
        QByteArray bytes;
    };

    std::optional<QByteArray> block(size_t index);

    const FileSnapshot *m_file = nullptr;
    std::vector<Block> m_blocks;
    quint64 m_size = 0;
    std::list<CachedBlock> m_cache; ///< the latest one first
};

} // namespace lexiquill::mdict
