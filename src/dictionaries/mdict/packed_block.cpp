#include "dictionaries/mdict/packed_block.h"

#include "dictionaries/mdict/file_piece.h"
#include "dictionaries/mdict/lzo.h"

#include <QtEndian>

#include <zlib.h>

namespace lexiquill::mdict {

namespace {

enum Packing : quint32 { Plain = 0, Lzo = 1, Zlib = 2 };

/// Whether so many bytes can become `size` bytes.
bool isPossible(quint32 packing, quint64 packedSize, quint64 size) {
    // The most that one packed byte stands for; a little more, because the formats also have constant costs.
    const quint64 ratio = packing == Zlib ? 1040 : 256;
    return packing == Plain ? size == packedSize : size / ratio <= packedSize;
}

bool unpackZlib(QByteArrayView data, QByteArray &out) {
    auto outSize = static_cast<uLongf>(out.size());
    const int code =
        uncompress(reinterpret_cast<Bytef *>(out.data()), &outSize,
                   reinterpret_cast<const Bytef *>(data.data()), static_cast<uLong>(data.size()));
    return code == Z_OK && outSize == static_cast<uLongf>(out.size());
}

quint32 packingOf(QByteArrayView packed) {
    return qFromLittleEndian<quint32>(packed.data());
}

} // namespace

UnpackedBlock unpackBlock(QByteArrayView packed, quint64 size) {
    UnpackedBlock block;
    block.problem = DictionaryProblem::Damaged;
    if (packed.size() < blockHeaderSize)
        return block;
    const quint32 packing = packingOf(packed);
    const auto checksum = qFromBigEndian<quint32>(packed.data() + 4);
    const QByteArrayView data = packed.sliced(blockHeaderSize);
    if (packing > Zlib || !isPossible(packing, static_cast<quint64>(data.size()), size))
        return block;
    if (size > maxBlockSize || static_cast<quint64>(data.size()) > maxBlockSize) {
        block.problem = DictionaryProblem::TooLarge;
        return block;
    }
    if (packing == Lzo && !hasLzo()) {
        block.problem = DictionaryProblem::NoUnpacker;
        return block;
    }
    QByteArray bytes;
    bool isUnpacked = true;
    if (packing == Plain) {
        bytes = data.toByteArray();
    } else if (packing == Zlib) {
        bytes.resize(static_cast<qsizetype>(size));
        isUnpacked = unpackZlib(data, bytes);
    } else {
        isUnpacked = unpackLzo(data, static_cast<qsizetype>(size), bytes);
    }
    if (isUnpacked && checksumOf(bytes) == checksum) {
        block.bytes = std::move(bytes);
        block.problem = DictionaryProblem::None;
    }
    return block;
}

bool lacksUnpacker(QByteArrayView packed) {
    return packed.size() >= 4 && packingOf(packed) == Lzo && !hasLzo();
}

} // namespace lexiquill::mdict
