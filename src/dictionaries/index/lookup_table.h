#pragma once

#include "platform/mapped_file.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace lexiquill {

/// The files that a look-up table is made from; a format that has fewer leaves the rest empty.
using SourceStamps = std::array<FileStamp, 4>;

/// What a look-up table holds, as the reader of a format hands it over.
struct TableContent {
    /// A word and its place in the index, in bytes.
    struct Word {
        quint32 hash = 0; ///< see foldedHash()
        quint32 place = 0;
    };
    /// A synonym, its place in the list of synonyms, and the place in the index that it stands for.
    struct Synonym {
        Word word;
        quint32 index = 0;
    };

    /// False when the index does not agree with its description. The table then only remembers that.
    bool isSound = false;
    /// The index itself, where it is not a file that can be mapped as it is.
    QByteArray index = {};
    std::vector<Word> words = {};
    std::vector<Synonym> synonyms = {};
    /// Whether the articles are, at least in part, in Chinese.
    bool holdsChinese = false;
};

/// Finds words by hash without reading the whole index. Lives in a cache file of checksummed pages, of which
/// only those needed are read.
class LookupTable {
public:
    /// A place in the list of synonyms and the place in the index it stands for, in bytes.
    struct SynonymPlace {
        quint32 synonym = 0;
        quint32 index = 0;
    };

    /// Opens a cache file. Nothing when it is missing, damaged, or was made for another dictionary or from
    /// other versions of its files.
    static std::unique_ptr<LookupTable> load(const QString &path, const QString &dictionaryPath,
                                             const SourceStamps &stamps);

    /// Builds the table in memory; broken() tells whether the index agreed with its description.
    static std::unique_ptr<LookupTable> build(TableContent content, const QString &dictionaryPath,
                                              const SourceStamps &stamps);

    /// Writes the cache file in one step, so that other processes see all of it or nothing.
    bool save(const QString &path) const;

    /// True when the index was found unusable, which is remembered so that it is not read again.
    bool broken() const { return m_broken; }

    bool holdsChinese() const { return m_holdsChinese; }

    /// True once a page has turned out not to be what was written.
    bool damaged() const { return m_damaged; }

    /// At most `size` bytes of the index from `offset` on; empty when the table does not keep one.
    QByteArrayView indexBytes(quint64 offset, qint64 size) const;

    /// All of the index; empty when the table does not keep one.
    QByteArrayView wholeIndex() const { return payload(0, m_indexSize); }

    /// Places in the index, in bytes, of words with this hash, in the order of the index.
    std::vector<quint32> words(quint32 hash) const;

    /// Places of synonyms with this hash, in their order.
    std::vector<SynonymPlace> synonyms(quint32 hash) const;

private:
    LookupTable() = default;
    bool adopt(QByteArrayView file, const QByteArray &identity, const SourceStamps &stamps);
    QByteArrayView payload(qint64 offset, qint64 size) const;
    quint64 wordKey(qint64 position) const;
    quint64 synonymKey(qint64 position) const;

    QByteArray m_image;
    MappedFile m_file;
    QByteArrayView m_payload;
    QByteArrayView m_pageSums;
    qint64 m_indexSize = 0;
    qint64 m_wordStart = 0;
    qint64 m_wordCount = 0;
    qint64 m_synonymStart = 0;
    qint64 m_synonymCount = 0;
    bool m_broken = false;
    bool m_holdsChinese = false;
    mutable bool m_damaged = false;
    mutable std::vector<bool> m_verified;
};

} // namespace lexiquill
