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

/// The stamps of the files that a lookup table is built from; a format with fewer files leaves the rest
/// empty.
using SourceStamps = std::array<FileStamp, 4>;

/// The content of a lookup table, as produced by the reader of a format.
struct TableContent {
    /// A word and its place in the index, in bytes.
    struct Word {
        quint32 hash = 0; ///< see foldedHash()
        quint32 place = 0;
    };
    /// A synonym with its place in the list of synonyms, and the place in the index of the word that it
    /// refers to.
    struct Synonym {
        Word word;
        quint32 index = 0;
    };

    /// False when the index does not match its description. The table then stores nothing else.
    bool isSound = false;
    /// The index itself, if its file cannot be mapped directly.
    QByteArray index = {};
    std::vector<Word> words = {};
    std::vector<Synonym> synonyms = {};
    /// Whether at least a part of the articles is in Chinese.
    bool holdsChinese = false;
};

/// Finds words by hash without reading the whole index. Stored in a cache file of pages with checksums; only
/// the required pages are read.
class LookupTable {
public:
    /// A place in the list of synonyms and the place in the index that it refers to, in bytes.
    struct SynonymPlace {
        quint32 synonym = 0;
        quint32 index = 0;
    };

    /// Opens a cache file. Null when it is missing or damaged, or was built for another dictionary or from
    /// other versions of its files.
    static std::unique_ptr<LookupTable> load(const QString &path, const QString &dictionaryPath,
                                             const SourceStamps &stamps);

    /// Builds the table in memory; broken() is true if the index does not match its description.
    static std::unique_ptr<LookupTable> build(TableContent content, const QString &dictionaryPath,
                                              const SourceStamps &stamps);

    /// Writes the cache file in one step, so that other processes see all of it or nothing. False on failure.
    bool save(const QString &path) const;

    /// True if the index is unusable. This is stored, so that the index is not read again.
    bool broken() const { return m_broken; }

    bool holdsChinese() const { return m_holdsChinese; }

    /// True once a page did not match its checksum.
    bool damaged() const { return m_damaged; }

    /// At most `size` bytes of the index, starting at `offset`; empty when the table does not contain the
    /// index.
    QByteArrayView indexBytes(quint64 offset, qint64 size) const;

    /// The whole index; empty when the table does not contain it.
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
