#include "dictionaries/mdict/record_stream.h"

#include "dictionaries/mdict/byte_reader.h"
#include "dictionaries/mdict/file_piece.h"
#include "dictionaries/mdict/packed_block.h"

#include <algorithm>
#include <limits>

namespace lexiquill::mdict {

namespace {

constexpr quint64 maxBlocks = quint64(1024) * 1024;
/// Words that are looked up one after the other are often neighbours.
constexpr qsizetype maxCachedBlocks = 16;
constexpr qsizetype maxCachedBytes = qsizetype(16) * 1024 * 1024;

} // namespace

DictionaryProblem RecordStream::open(const FileSnapshot &file, quint64 position, int numberSize) {
    constexpr int numbers = 4;
    const auto width = static_cast<quint64>(numberSize);
    const auto head = readPiece(file, position, width * numbers, width * numbers);
    if (!head)
        return DictionaryProblem::Damaged;
    ByteReader reader(*head);
    const quint64 count = reader.number(numberSize);
    reader.take(width); // the number of records
    const quint64 tableSize = reader.number(numberSize);
    const quint64 blocksSize = reader.number(numberSize);
    if (count > maxBlocks)
        return DictionaryProblem::TooLarge;
    const auto table = tableSize == count * 2 * width
                           ? readPiece(file, position + width * numbers, tableSize, tableSize)
                           : std::nullopt;
    if (!table)
        return DictionaryProblem::Damaged;

    const quint64 blocksStart = position + width * numbers + tableSize;
    quint64 packed = 0;
    ByteReader sizes(*table);
    m_blocks.reserve(count);
    while (!sizes.atEnd()) {
        constexpr quint64 largest = std::numeric_limits<quint32>::max();
        const quint64 packedSize = sizes.number(numberSize);
        const quint64 size = sizes.number(numberSize);
        if (packedSize > largest || size > largest || packedSize > blocksSize - packed)
            return DictionaryProblem::Damaged;
        m_blocks.push_back({.start = m_size,
                            .packed = blocksStart + packed,
                            .size = static_cast<quint32>(size),
                            .packedSize = static_cast<quint32>(packedSize)});
        packed += packedSize;
        m_size += size;
    }
    if (!hasBytes(file, blocksStart + packed))
        return DictionaryProblem::Damaged;
    m_file = &file;
    constexpr quint64 packingSize = 4;
    const auto start =
        m_blocks.empty() ? std::nullopt : readPiece(file, blocksStart, packingSize, packingSize);
    return start && lacksUnpacker(*start) ? DictionaryProblem::NoUnpacker : DictionaryProblem::None;
}

std::optional<QByteArray> RecordStream::block(size_t index) {
    const auto isWanted = [index](const CachedBlock &cached) {
        return cached.index == index;
    };
    const auto found = std::find_if(m_cache.begin(), m_cache.end(), isWanted);
    if (found != m_cache.end()) {
        m_cache.splice(m_cache.begin(), m_cache, found);
        return found->bytes;
    }
    const Block &place = m_blocks[index];
    const auto packed = readPiece(*m_file, place.packed, place.packedSize, maxBlockSize);
    if (!packed)
        return std::nullopt;
    UnpackedBlock unpacked = unpackBlock(*packed, place.size);
    if (unpacked.problem != DictionaryProblem::None)
        return std::nullopt;
    m_cache.push_front({index, unpacked.bytes});
    qsizetype total = 0;
    qsizetype count = 0;
    m_cache.remove_if([&](const CachedBlock &cached) {
        total += cached.bytes.size();
        return ++count > maxCachedBlocks || total > maxCachedBytes;
    });
    return unpacked.bytes;
}

std::optional<QByteArray> RecordStream::read(quint64 offset, quint64 size) {
    if (offset > m_size || size > m_size - offset)
        return std::nullopt;
    const auto isAfter = [](quint64 position, const Block &block) {
        return position < block.start;
    };
    const auto next = std::upper_bound(m_blocks.begin(), m_blocks.end(), offset, isAfter);
    QByteArray bytes;
    for (auto index = static_cast<size_t>(next - m_blocks.begin()); size > 0; ++index) {
        const auto unpacked = block(index - 1);
        if (!unpacked)
            return std::nullopt;
        const quint64 start = offset - m_blocks[index - 1].start;
        const quint64 count = std::min(size, static_cast<quint64>(unpacked->size()) - start);
        bytes.append(unpacked->constData() + start, static_cast<qsizetype>(count));
        offset += count;
        size -= count;
    }
    return bytes;
}

} // namespace lexiquill::mdict
