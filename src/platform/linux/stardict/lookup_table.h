#pragma once

#include "platform/linux/stardict/ifo_file.h"
#include "platform/linux/stardict/mapped_file.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace lexiquill::stardict {

/// The files a look-up table is made from: .ifo, index, articles, synonyms.
using SourceStamps = std::array<FileStamp, 4>;

/// What a look-up table is made from.
struct TableSource {
    IfoInfo info;
    QByteArrayView index;
    /// True when `index` is a gzip file; the table then keeps the unpacked index.
    bool indexIsPacked = false;
    QByteArrayView synonyms;
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
    static std::unique_ptr<LookupTable> build(const TableSource &source, const QString &dictionaryPath,
                                              const SourceStamps &stamps);

    /// Writes the cache file in one step, so that other processes see all of it or nothing.
    bool save(const QString &path) const;

    /// True when the index was found unusable, which is remembered so that it is not read again.
    bool broken() const { return m_broken; }

    /// True once a page has turned out not to be what was written.
    bool damaged() const { return m_damaged; }

    /// The unpacked index from `offset` on, enough for one entry; empty when the table does not keep one.
    QByteArrayView indexBytes(quint64 offset) const;

    /// All of the unpacked index; empty when the table does not keep one.
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
    mutable bool m_damaged = false;
    mutable std::vector<bool> m_verified;
};

} // namespace lexiquill::stardict
