#include "dictionaries/index/table_format.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace lexiquill::table {

namespace {

quint64 keyOf(const TableContent::Word &word) {
    return quint64(word.hash) << 32 | word.place;
}

template <typename Number> char *append(char *to, Number number) {
    std::memcpy(to, &number, sizeof number);
    return to + sizeof number;
}

/// Writes the checksums of the pages and the header; the payload is already in place.
void seal(QByteArray &image, Header header, const Layout &layout) {
    char *to = image.data() + pageSize + layout.payloadSize;
    const QByteArrayView payload(image.constData() + pageSize, layout.payloadSize);
    for (qint64 page = 0; page < layout.pageCount; ++page) {
        const qint64 start = page * pageSize;
        to = append(to, crcOf(payload.sliced(start, std::min(pageSize, payload.size() - start))));
    }
    header.pageSumsCrc = crcOf(QByteArrayView(image).sliced(pageSize + layout.payloadSize));
    header.headerCrc = crcOf({reinterpret_cast<const char *>(&header), offsetof(Header, headerCrc)});
    std::memcpy(image.data(), &header, sizeof header);
}

} // namespace

Layout layoutOf(qint64 indexSize, qint64 wordCount, qint64 synonymCount) {
    Layout layout{};
    layout.wordStart = (indexSize + wordRecordSize - 1) / wordRecordSize * wordRecordSize;
    layout.synonymStart = layout.wordStart + wordCount * wordRecordSize;
    layout.payloadSize = layout.synonymStart + synonymCount * synonymRecordSize;
    layout.pageCount = (layout.payloadSize + pageSize - 1) / pageSize;
    return layout;
}

QByteArray buildTable(TableContent content, const QByteArray &identity, const SourceStamps &stamps) {
    if (!content.isSound)
        content = TableContent();
    const auto byKey = [](const TableContent::Word &left, const TableContent::Word &right) {
        return keyOf(left) < keyOf(right);
    };
    std::sort(content.words.begin(), content.words.end(), byKey);
    std::sort(content.synonyms.begin(), content.synonyms.end(),
              [&](const auto &left, const auto &right) { return byKey(left.word, right.word); });

    Header header{};
    header.magic = magicNumber;
    header.version = formatVersion;
    header.broken = content.isSound ? 0 : 1;
    header.holdsChinese = content.holdsChinese ? 1 : 0;
    header.stamps = stamps;
    std::memcpy(header.identity, identity.constData(),
                std::min(sizeof header.identity, static_cast<size_t>(identity.size())));
    header.indexSize = content.index.size();
    header.wordCount = static_cast<qint64>(content.words.size());
    header.synonymCount = static_cast<qint64>(content.synonyms.size());
    const Layout layout = layoutOf(header.indexSize, header.wordCount, header.synonymCount);

    QByteArray image(pageSize + layout.payloadSize + layout.pageCount * qint64(sizeof(quint32)), '\0');
    std::copy(content.index.cbegin(), content.index.cend(), image.data() + pageSize);
    char *to = image.data() + pageSize + layout.wordStart;
    for (const TableContent::Word &word : content.words)
        to = append(to, keyOf(word));
    for (const TableContent::Synonym &synonym : content.synonyms)
        to = append(append(to, keyOf(synonym.word)), synonym.index);
    seal(image, header, layout);
    return image;
}

} // namespace lexiquill::table
