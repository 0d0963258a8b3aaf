#pragma once

#include "dictionaries/dictionary_problem.h"

#include <QByteArray>
#include <QByteArrayView>

namespace lexiquill::mdict {

/// Largest block that is unpacked, in bytes.
inline constexpr quint64 maxBlockSize = quint64(64) * 1024 * 1024;
/// Bytes of a packed block in front of its data: the kind of packing and the checksum.
inline constexpr qsizetype blockHeaderSize = 8;

struct UnpackedBlock {
    QByteArray bytes;
    /// Damaged, TooLarge, or NoUnpacker.
    DictionaryProblem problem = DictionaryProblem::None;
};

/// Unpacks a block that should become `size` bytes. Takes no more memory than the packed bytes can fill.
UnpackedBlock unpackBlock(QByteArrayView packed, quint64 size);

/// Whether the library that unpacks a block with this start is missing.
bool lacksUnpacker(QByteArrayView packed);

} // namespace lexiquill::mdict
