#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace lexiquill::tools {

/// One typed part of an article, for example {'t', "phonetic"} or {'m', "meaning"}.
struct StarDictField {
    char type = 'm';
    QByteArray data;
};

/// One word of a dictionary with its article and the synonyms that lead to it. All text is UTF-8.
struct StarDictEntry {
    QByteArray word;
    std::vector<StarDictField> fields;
    std::vector<QByteArray> synonyms;
};

/// How a dictionary is written.
struct StarDictOptions {
    QByteArray bookName = "Test dictionary";
    QByteArray version = "2.4.2";
    /// 32 or 64; 64 requires version 3.0.0.
    int offsetBits = 32;
    /// Types of the fields of every article; empty writes the type in front of each field.
    QByteArray typeSequence = "m";
    bool gzipIndex = false;
    bool dictzip = false;
    /// Bytes of article data in one compressed chunk, 1 to 58315.
    int chunkSize = 58315;
    /// False keeps the entries in the order they are given.
    bool sorted = true;
};

/// An entry whose article is a single field of type m.
StarDictEntry plainEntry(const QByteArray &word, const QByteArray &article);

/// Writes DIRECTORY/BASENAME.{ifo,idx[.gz],dict[.dz],syn}. Returns an empty string, or what went wrong.
QString writeStarDict(const QString &directory, const QString &baseName, std::vector<StarDictEntry> entries,
                      const StarDictOptions &options);

/// `data` as a dictzip file: gzip with a table of independently readable chunks. Empty when there are more
/// chunks than the table can hold.
QByteArray dictzip(const QByteArray &data, int chunkSize);

/// `data` as an ordinary gzip file.
QByteArray gzip(const QByteArray &data);

} // namespace lexiquill::tools
