#pragma once

#include "dictionaries/dictionary_reader.h"
#include "dictionaries/mdict/text_encoding.h"
#include "platform/file_snapshot.h"

#include <QString>

namespace lexiquill::mdict {

/// The header of a .mdx or .mdd file.
struct Header {
    /// Whether numbers take 8 bytes and the key index is a packed block: version 2, not version 1.
    bool isVersion2 = true;
    bool hasEncryptedIndex = false;
    TextEncoding encoding = TextEncoding::Utf8;
    bool isHtml = true; ///< otherwise plain text
    QString styleSheet; ///< empty unless articles use it
    DictionaryAbout about;
    qint64 end = 0; ///< where the next section begins in the file
};

struct ReadHeader {
    Header header;
    /// If this is NewerFormat or Encrypted, `about` is valid.
    DictionaryProblem problem = DictionaryProblem::None;
};

enum class FileKind { Articles, Resources };

ReadHeader readHeader(const FileSnapshot &file, FileKind kind);

} // namespace lexiquill::mdict
