#pragma once

#include "dictionaries/dictionary_reader.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace lexiquill::stardict {

/// Largest .ifo file that is read, in bytes.
inline constexpr qint64 maxIfoSize = 65'536;
/// Largest unpacked index, in bytes.
inline constexpr qint64 maxIndexSize = qint64(512) * 1024 * 1024;

/// The description of a dictionary.
struct IfoInfo {
    DictionaryAbout about;
    /// Number of entries in the index and in the list of synonyms.
    quint32 wordCount = 0;
    quint32 synonymCount = 0;
    /// Size of the unpacked index in bytes, at most maxIndexSize.
    qint64 indexSize = 0;
    /// Width of an article offset in the index: 4 or 8 bytes.
    int offsetBytes = 4;
    /// Types of the parts of every article; empty when each part begins with its type.
    QByteArray typeSequence;
};

/// Reads the text of an .ifo file. No value when it is not such a file, when a required key is missing, or
/// when a value is out of range.
std::optional<IfoInfo> parseIfo(QByteArrayView text);

} // namespace lexiquill::stardict
