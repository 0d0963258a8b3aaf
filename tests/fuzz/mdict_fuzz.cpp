#include "../support/files.h"
#include "check.h"
#include "dictionaries/mdict/header_attributes.h"
#include "dictionaries/mdict/lzo.h"
#include "dictionaries/mdict/mdict_format.h"
#include "dictionaries/mdict/packed_block.h"
#include "dictionaries/mdict/style_sheet.h"

#include <QTemporaryDir>
#include <QtEndian>

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

using namespace lexiquill;

namespace {

class Places final : public HeadwordSink {
public:
    bool addWord(QByteArrayView, const ArticlePlace &place) override {
        places.push_back(place);
        return places.size() < 1000;
    }
    bool addAlias(QByteArrayView, quint32) override { return true; }

    std::vector<ArticlePlace> places;
};

/// Opens a dictionary with these bytes and reads all of it.
void checkFile(const QByteArray &bytes) {
    static const QTemporaryDir directory;
    static const QString path = directory.filePath(QStringLiteral("d.mdx"));
    static const QString resourcePath = directory.filePath(QStringLiteral("d.mdd"));
    for (const QString &file : {path, resourcePath}) {
        // Some file systems wait for the disk when a file is overwritten.
        QFile::remove(file);
        check(writeFile(file, bytes));
    }
    const DictionaryFormat format = mdict::format();
    const DictionaryDescription description = format.describe(path);
    check(description.about.description.size() <= 4000 && !description.about.name.isEmpty());
    const OpenedReader opened = format.open(path);
    check((opened.reader == nullptr) == (opened.problem != DictionaryProblem::None));
    if (!opened.reader)
        return;
    Places words;
    opened.reader->readHeadwords(words);
    for (const ArticlePlace &place : words.places) {
        const auto article = opened.reader->article(place);
        check(!article || place.size <= maxArticleSize);
    }
    opened.reader->resource(QStringLiteral("a"));
}

/// Removes the next part from the input: a 16-bit length, then the bytes.
QByteArray takePart(QByteArrayView &input) {
    const QByteArrayView length = input.first(std::min<qsizetype>(2, input.size()));
    input = input.sliced(length.size());
    const auto size =
        static_cast<qsizetype>(length.size() == 2 ? qFromLittleEndian<quint16>(length.data()) : 0);
    const QByteArray part = input.first(std::min(size, input.size())).toByteArray();
    input = input.sliced(part.size());
    return part;
}

QByteArray bigNumber(quint64 value, int width) {
    QByteArray bytes;
    for (int i = width - 1; i >= 0; --i)
        bytes.append(static_cast<char>(value >> (i * 8)));
    return bytes;
}

quint64 checksum(const QByteArray &bytes) {
    return adler32_z(1, reinterpret_cast<const Bytef *>(bytes.constData()),
                     static_cast<z_size_t>(bytes.size()));
}

QByteArray plainBlock(const QByteArray &bytes) {
    return QByteArray(4, '\0') + bigNumber(checksum(bytes), 4) + bytes;
}

/// A file of the input's parts, with the right checksums and sizes of sections, which chance hardly ever
/// finds: the header's text in ASCII, the index, a block of keys, the table of records with its four numbers,
/// a block of records.
QByteArray fileOf(QByteArrayView input) {
    const bool isVersion2 = (input[0] & 1) != 0;
    const auto blocks = static_cast<quint64>(static_cast<unsigned char>(input[0]) >> 1);
    const int width = isVersion2 ? 8 : 4;
    input = input.sliced(1);
    QByteArray text;
    for (const char c : takePart(input))
        text.append(c).append('\0');
    const QByteArray index = takePart(input);
    const QByteArray storedIndex = isVersion2 ? plainBlock(index) : index;
    const QByteArray keys = plainBlock(takePart(input));
    const QByteArray table = takePart(input);

    QByteArray numbers = bigNumber(blocks, width) + bigNumber(blocks, width);
    if (isVersion2)
        numbers += bigNumber(static_cast<quint64>(index.size()), width);
    numbers += bigNumber(static_cast<quint64>(storedIndex.size()), width);
    numbers += bigNumber(static_cast<quint64>(keys.size()), width);
    if (isVersion2)
        numbers += bigNumber(checksum(numbers), 4);
    return bigNumber(static_cast<quint64>(text.size()), 4) + text +
           bigNumber(qbswap(static_cast<quint32>(checksum(text))), 4) + numbers + storedIndex + keys + table +
           plainBlock(takePart(input));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArrayView input(data, static_cast<qsizetype>(size));
    if (input.isEmpty())
        return 0;
    const QString text = QString::fromUtf8(input);
    mdict::readAttributes(text);
    const auto styled = mdict::StyleSheet(text).applied(text, 100'000);
    check(!styled || styled->size() <= 100'000);
    constexpr quint64 mostUnpacked = 70'000;
    mdict::unpackBlock(input, static_cast<quint64>(size) * 7 % mostUnpacked);
    QByteArray out;
    mdict::unpackLzo(input, static_cast<qsizetype>(size) * 3, out);
    checkFile(fileOf(input));
    return 0;
}
