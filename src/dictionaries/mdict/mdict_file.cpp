#include "dictionaries/mdict/mdict_file.h"

#include "dictionaries/mdict/byte_reader.h"
#include "dictionaries/mdict/file_piece.h"
#include "dictionaries/mdict/index_cipher.h"
#include "dictionaries/mdict/packed_block.h"

#include <algorithm>
#include <limits>

namespace lexiquill::mdict {

namespace {

constexpr quint64 maxKeys = quint64(8) * 1024 * 1024;
constexpr quint64 maxIndexSize = quint64(32) * 1024 * 1024;
/// Of all blocks of keys together, unpacked.
constexpr quint64 maxKeyBytes = quint64(512) * 1024 * 1024;
/// Larger positions are nonsense; sums of a few of them cannot overflow.
constexpr quint64 maxPosition = quint64(1) << 56;

/// Finds where each record ends.
class RecordEnds {
public:
    /// `starts`: the records' offsets in any order.
    RecordEnds(std::vector<quint64> starts, quint64 streamSize)
        : m_bounds(std::move(starts)),
          m_streamSize(streamSize) {
        m_bounds.push_back(streamSize);
        if (!std::is_sorted(m_bounds.begin(), m_bounds.end()))
            std::sort(m_bounds.begin(), m_bounds.end());
        m_bounds.erase(std::unique(m_bounds.begin(), m_bounds.end()), m_bounds.end());
    }

    ArticlePlace placeOf(quint64 start) {
        if (start >= m_streamSize)
            return {.offset = start, .size = 0};
        // Nearly always the record after the previous one.
        if (!isNext(start))
            ++m_next;
        if (!isNext(start)) {
            const auto next = std::upper_bound(m_bounds.begin(), m_bounds.end(), start);
            m_next = static_cast<size_t>(next - m_bounds.begin());
        }
        constexpr quint64 largest = std::numeric_limits<quint32>::max();
        const quint64 end = std::min(m_bounds[m_next], m_streamSize);
        return {.offset = start, .size = static_cast<quint32>(std::min(end - start, largest))};
    }

private:
    /// Whether m_next is the first bound after `start`.
    bool isNext(quint64 start) const {
        return m_next < m_bounds.size() && m_bounds[m_next] > start &&
               (m_next == 0 || m_bounds[m_next - 1] <= start);
    }

    std::vector<quint64> m_bounds; ///< ascending
    quint64 m_streamSize;
    size_t m_next = 0;
};

} // namespace

MdictFile::Opened MdictFile::open(const QString &path, FileKind kind) {
    Opened opened;
    auto file = std::make_unique<MdictFile>();
    file->m_file = FileSnapshot::open(path);
    if (!file->m_file) {
        opened.problem = DictionaryProblem::Unreadable;
        return opened;
    }
    ReadHeader head = readHeader(*file->m_file, kind);
    file->m_header = std::move(head.header);
    opened.problem = head.problem == DictionaryProblem::None ? file->openSections() : head.problem;
    if (opened.problem == DictionaryProblem::None)
        opened.file = std::move(file);
    return opened;
}

ReadHeader MdictFile::describe(const QString &path) {
    MdictFile file;
    file.m_file = FileSnapshot::open(path);
    if (!file.m_file)
        return {.header = {}, .problem = DictionaryProblem::Unreadable};
    ReadHeader head = readHeader(*file.m_file, FileKind::Articles);
    if (head.problem != DictionaryProblem::None)
        return head;
    file.m_header = head.header;
    head.problem = file.readKeySection();
    if (head.problem == DictionaryProblem::None)
        head.header.about.wordCount = static_cast<qint64>(file.m_keys.keys);
    return head;
}

DictionaryProblem MdictFile::openSections() {
    const DictionaryProblem problem = readKeySection();
    return problem == DictionaryProblem::None ? m_records.open(*m_file, m_keys.end(), numberSize()) : problem;
}

DictionaryProblem MdictFile::readKeySection() {
    const quint64 numbers = m_header.isVersion2 ? 5 : 4;
    const quint64 checkedSize = numbers * static_cast<quint64>(numberSize());
    const quint64 checksumSize = m_header.isVersion2 ? 4 : 0;
    const auto start = static_cast<quint64>(m_header.end);
    const auto bytes = readPiece(*m_file, start, checkedSize + checksumSize, checkedSize + checksumSize);
    if (!bytes)
        return DictionaryProblem::Damaged;
    ByteReader reader(*bytes);
    m_keys.blocks = reader.number(numberSize());
    m_keys.keys = reader.number(numberSize());
    if (m_header.isVersion2)
        m_keys.unpackedIndexSize = reader.number(numberSize());
    m_keys.indexSize = reader.number(numberSize());
    m_keys.blocksSize = reader.number(numberSize());
    m_keys.index = start + checkedSize + checksumSize;
    const auto checked = QByteArrayView(*bytes).first(static_cast<qsizetype>(checkedSize));
    if (m_header.isVersion2 && reader.number(4) != checksumOf(checked))
        return DictionaryProblem::Damaged;
    if (m_keys.indexSize > maxPosition || m_keys.blocksSize > maxPosition)
        return DictionaryProblem::Damaged;
    const bool isTooLarge = m_keys.keys > maxKeys || m_keys.indexSize > maxIndexSize;
    return isTooLarge ? DictionaryProblem::TooLarge : DictionaryProblem::None;
}

DictionaryProblem MdictFile::unpackIndex(QByteArray &index) const {
    auto packed = readPiece(*m_file, m_keys.index, m_keys.indexSize, maxIndexSize);
    if (!packed)
        return DictionaryProblem::Damaged;
    if (!m_header.isVersion2) {
        index = std::move(*packed);
        return DictionaryProblem::None;
    }
    if (m_keys.unpackedIndexSize > maxIndexSize)
        return DictionaryProblem::TooLarge;
    if (m_header.hasEncryptedIndex && !decryptIndex(*packed))
        return packed->size() < blockHeaderSize ? DictionaryProblem::Damaged : DictionaryProblem::NoUnpacker;
    UnpackedBlock unpacked = unpackBlock(*packed, m_keys.unpackedIndexSize);
    index = std::move(unpacked.bytes);
    return unpacked.problem;
}

DictionaryProblem MdictFile::readIndex(std::vector<KeyBlock> &blocks) const {
    QByteArray index;
    if (const DictionaryProblem problem = unpackIndex(index); problem != DictionaryProblem::None)
        return problem;
    ByteReader reader(index);
    const int lengthSize = m_header.isVersion2 ? 2 : 1;
    const quint64 endMark = m_header.isVersion2 ? 1 : 0;
    const auto unit = static_cast<quint64>(unitSize(m_header.encoding));
    quint64 used = 0;
    quint64 unpacked = 0;
    while (!reader.atEnd() && blocks.size() < m_keys.blocks) {
        reader.number(numberSize()); // keys in the block
        for (int key = 0; key < 2; ++key)
            reader.take((reader.number(lengthSize) + endMark) * unit);
        const quint64 packedSize = reader.number(numberSize());
        const quint64 size = reader.number(numberSize());
        if (reader.failed() || packedSize > m_keys.blocksSize - used)
            return DictionaryProblem::Damaged;
        blocks.push_back(
            {.start = m_keys.index + m_keys.indexSize + used, .packedSize = packedSize, .size = size});
        used += packedSize;
        if (size > maxKeyBytes - unpacked)
            return DictionaryProblem::TooLarge;
        unpacked += size;
    }
    return blocks.size() == m_keys.blocks ? DictionaryProblem::None : DictionaryProblem::Damaged;
}

DictionaryProblem MdictFile::forEachKeyIn(QByteArrayView block, const OffsetVisitor &visit) const {
    ByteReader reader(block);
    const auto unit = static_cast<quint64>(unitSize(m_header.encoding));
    while (!reader.atEnd()) {
        const quint64 offset = reader.number(numberSize());
        bool hasEnd = false;
        const QByteArrayView key = upToZero(reader.rest(), m_header.encoding, &hasEnd);
        if (reader.failed() || !hasEnd)
            return DictionaryProblem::Damaged;
        reader.take(static_cast<quint64>(key.size()) + unit);
        if (!visit(key, offset))
            return DictionaryProblem::TooLarge;
    }
    return DictionaryProblem::None;
}

DictionaryProblem MdictFile::forEachKey(const std::vector<KeyBlock> &blocks,
                                        const OffsetVisitor &visit) const {
    for (const KeyBlock &block : blocks) {
        const auto packed = readPiece(*m_file, block.start, block.packedSize, maxBlockSize);
        if (!packed)
            return DictionaryProblem::Damaged;
        const UnpackedBlock unpacked = unpackBlock(*packed, block.size);
        if (unpacked.problem != DictionaryProblem::None)
            return unpacked.problem;
        const DictionaryProblem problem = forEachKeyIn(unpacked.bytes, visit);
        if (problem != DictionaryProblem::None)
            return problem;
    }
    return DictionaryProblem::None;
}

DictionaryProblem MdictFile::readKeys(const KeyVisitor &visit) {
    std::vector<KeyBlock> blocks;
    DictionaryProblem problem = readIndex(blocks);
    if (problem != DictionaryProblem::None)
        return problem;
    // Offsets need not ascend, so all must be known to tell where a record ends.
    std::vector<quint64> offsets;
    problem = forEachKey(blocks, [&offsets](QByteArrayView, quint64 offset) {
        offsets.push_back(offset);
        return offsets.size() <= maxKeys;
    });
    if (problem != DictionaryProblem::None)
        return problem;
    RecordEnds ends(std::move(offsets), m_records.size());
    return forEachKey(blocks,
                      [&](QByteArrayView key, quint64 offset) { return visit(key, ends.placeOf(offset)); });
}

} // namespace lexiquill::mdict
