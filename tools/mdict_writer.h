#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace lexiquill::tools {

/// A headword with its article, both in UTF-8; or the path of a file ("\\images\\apple.png") with its bytes.
struct MdictEntry {
    QByteArray key;
    QByteArray record;
};

/// How a dictionary is written.
struct MdictOptions {
    enum class Packing { None, Lzo, Zlib };

    /// 1 for version 1.2, 2 for version 2.0.
    int version = 2;
    /// UTF-8, UTF-16, GBK, GB18030 or Big5; files of resources are always in UTF-16.
    QByteArray encoding = "UTF-8";
    Packing packing = Packing::Zlib;
    /// 0 to 9.
    int zlibLevel = 6;
    /// Only in version 2.
    bool encryptedIndex = false;
    QByteArray format = "Html";
    QByteArray title = "Test dictionary";
    QByteArray description = {};
    /// For each style a line with its number, the text before and the text after.
    QByteArray styleSheet = {};
    /// A complete header instead of the one that these options make.
    QByteArray header = {};
    /// Unpacked bytes of a block, at least one entry.
    qsizetype keyBlockSize = 32768;
    qsizetype recordBlockSize = 65536;
    /// Whether blocks of records end anywhere, even within a record.
    bool splitsRecords = false;
    /// False keeps the entries in the order they are given.
    bool sorted = true;
    /// Stores the records in the opposite order of the keys.
    bool reversedRecords = false;
};

/// Writes a .mdx file. Entries of the same word stay in their order. Returns an empty string, or what went
/// wrong.
QString writeMdx(const QString &path, std::vector<MdictEntry> entries, const MdictOptions &options = {});

/// Writes a .mdd file, in the same way.
QString writeMdd(const QString &path, std::vector<MdictEntry> entries, const MdictOptions &options = {});

/// LZO1X data that consists of one run of literals.
QByteArray lzoLiterals(const QByteArray &bytes);

} // namespace lexiquill::tools
