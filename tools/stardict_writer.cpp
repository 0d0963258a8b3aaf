#include "stardict_writer.h"

#include <QDir>
#include <QSaveFile>
#include <QtEndian>

#include <zlib.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace lexiquill::tools {

namespace {

constexpr int maxChunkSize = 58315;
constexpr qsizetype maxChunkCount = 32760;

void appendBig32(QByteArray &out, quint64 value) {
    char bytes[4];
    qToBigEndian(static_cast<quint32>(value), bytes);
    out.append(bytes, 4);
}

void appendBig64(QByteArray &out, quint64 value) {
    char bytes[8];
    qToBigEndian(value, bytes);
    out.append(bytes, 8);
}

void appendLittle16(QByteArray &out, qsizetype value) {
    out.append(static_cast<char>(value & 0xff));
    out.append(static_cast<char>((value >> 8) & 0xff));
}

void appendLittle32(QByteArray &out, quint64 value) {
    char bytes[4];
    qToLittleEndian(static_cast<quint32>(value), bytes);
    out.append(bytes, 4);
}

quint32 checksum(const QByteArray &data) {
    return static_cast<quint32>(
        crc32_z(0, reinterpret_cast<const Bytef *>(data.constData()), static_cast<z_size_t>(data.size())));
}

/// Passes `size` bytes to the stream and returns all output, with `flush`.
QByteArray deflated(z_stream &stream, const char *data, qsizetype size, int flush) {
    QByteArray out;
    QByteArray block(1 << 16, Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data));
    stream.avail_in = static_cast<uInt>(size);
    do {
        stream.next_out = reinterpret_cast<Bytef *>(block.data());
        stream.avail_out = static_cast<uInt>(block.size());
        deflate(&stream, flush);
        out.append(block.constData(), block.size() - static_cast<qsizetype>(stream.avail_out));
    } while (stream.avail_out == 0);
    return out;
}

/// Raw deflate data of `data`, in chunks that can each be read separately; `chunkSizes` gets their lengths.
QByteArray deflateInChunks(const QByteArray &data, qsizetype chunkSize, std::vector<qsizetype> &chunkSizes) {
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        return {};
    QByteArray out;
    for (qsizetype at = 0; at < data.size(); at += chunkSize) {
        const qsizetype size = std::min(chunkSize, data.size() - at);
        const QByteArray chunk = deflated(stream, data.constData() + at, size, Z_FULL_FLUSH);
        chunkSizes.push_back(chunk.size());
        out += chunk;
    }
    out += deflated(stream, nullptr, 0, Z_FINISH);
    deflateEnd(&stream);
    return out;
}

QByteArray trailer(const QByteArray &data) {
    QByteArray out;
    appendLittle32(out, checksum(data));
    appendLittle32(out, static_cast<quint64>(data.size()));
    return out;
}

/// The order that StarDict readers expect: ASCII letters without case first, then bytes.
bool lessThan(const QByteArray &left, const QByteArray &right) {
    const auto lower = [](char c) {
        return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    };
    const qsizetype common = std::min(left.size(), right.size());
    for (qsizetype i = 0; i < common; ++i) {
        if (lower(left[i]) != lower(right[i]))
            return lower(left[i]) < lower(right[i]);
    }
    if (left.size() != right.size())
        return left.size() < right.size();
    return left < right;
}

bool sized(char type) {
    return type >= 'A' && type <= 'Z';
}

/// The article as stored in the .dict file; the last field of a fixed sequence needs no end mark.
QByteArray encodeArticle(const StarDictEntry &entry, bool fixedSequence) {
    QByteArray out;
    for (size_t i = 0; i < entry.fields.size(); ++i) {
        const StarDictField &field = entry.fields[i];
        const bool last = fixedSequence && i + 1 == entry.fields.size();
        if (!fixedSequence)
            out.append(field.type);
        if (sized(field.type) && !last)
            appendBig32(out, static_cast<quint64>(field.data.size()));
        out += field.data;
        if (!sized(field.type) && !last)
            out.append('\0');
    }
    return out;
}

QString checkEntry(const StarDictEntry &entry, const StarDictOptions &options) {
    if (entry.word.isEmpty() || entry.word.contains('\0'))
        return QStringLiteral("a word is empty or holds a zero byte");
    QByteArray types;
    for (const StarDictField &field : entry.fields)
        types.append(field.type);
    if (!options.typeSequence.isEmpty() && types != options.typeSequence)
        return QStringLiteral("the fields of \"%1\" differ from the type sequence")
            .arg(QString::fromUtf8(entry.word));
    return {};
}

QString save(const QString &path, const QByteArray &data) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size() || !file.commit())
        return QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
    return {};
}

QByteArray encodeSynonyms(const std::vector<StarDictEntry> &entries, bool sorted, qsizetype &count) {
    std::vector<std::pair<QByteArray, quint64>> synonyms;
    for (size_t i = 0; i < entries.size(); ++i) {
        for (const QByteArray &synonym : entries[i].synonyms)
            synonyms.emplace_back(synonym, i);
    }
    if (sorted) {
        std::stable_sort(synonyms.begin(), synonyms.end(), [](const auto &left, const auto &right) {
            return lessThan(left.first, right.first);
        });
    }
    QByteArray out;
    for (const auto &[synonym, index] : synonyms) {
        out += synonym;
        out.append('\0');
        appendBig32(out, index);
    }
    count = static_cast<qsizetype>(synonyms.size());
    return out;
}

} // namespace

StarDictEntry plainEntry(const QByteArray &word, const QByteArray &article) {
    return {word, {{'m', article}}, {}};
}

QByteArray gzip(const QByteArray &data) {
    std::vector<qsizetype> chunkSizes;
    QByteArray out("\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03", 10);
    out += deflateInChunks(data, qsizetype(1) << 30, chunkSizes);
    return out + trailer(data);
}

QByteArray dictzip(const QByteArray &data, int chunkSize) {
    const qsizetype size = std::clamp(chunkSize, 1, maxChunkSize);
    if ((data.size() + size - 1) / size > maxChunkCount)
        return {};
    std::vector<qsizetype> chunkSizes;
    const QByteArray packed = deflateInChunks(data, size, chunkSizes);
    const auto tableSize = static_cast<qsizetype>(chunkSizes.size()) * 2 + 6;
    QByteArray out("\x1f\x8b\x08\x04\x00\x00\x00\x00\x02\x03", 10);
    appendLittle16(out, tableSize + 4);
    out += "RA";
    appendLittle16(out, tableSize);
    appendLittle16(out, 1);
    appendLittle16(out, size);
    appendLittle16(out, static_cast<qsizetype>(chunkSizes.size()));
    for (const qsizetype chunk : chunkSizes)
        appendLittle16(out, chunk);
    return out + packed + trailer(data);
}

QString writeStarDict(const QString &directory, const QString &baseName, std::vector<StarDictEntry> entries,
                      const StarDictOptions &options) {
    if (options.sorted) {
        std::stable_sort(entries.begin(), entries.end(),
                         [](const auto &left, const auto &right) { return lessThan(left.word, right.word); });
    }
    QByteArray dict;
    QByteArray idx;
    for (const StarDictEntry &entry : entries) {
        if (QString problem = checkEntry(entry, options); !problem.isEmpty())
            return problem;
        const QByteArray article = encodeArticle(entry, !options.typeSequence.isEmpty());
        idx += entry.word;
        idx.append('\0');
        if (options.offsetBits == 64)
            appendBig64(idx, static_cast<quint64>(dict.size()));
        else
            appendBig32(idx, static_cast<quint64>(dict.size()));
        appendBig32(idx, static_cast<quint64>(article.size()));
        dict += article;
    }
    if (options.offsetBits != 64 && dict.size() > qsizetype(std::numeric_limits<quint32>::max()))
        return QStringLiteral("the articles need 64-bit offsets");

    qsizetype synonymCount = 0;
    const QByteArray syn = encodeSynonyms(entries, options.sorted, synonymCount);
    QByteArray ifo = "StarDict's dict ifo file\nversion=" + options.version +
                     "\nbookname=" + options.bookName +
                     "\nwordcount=" + QByteArray::number(qulonglong(entries.size()));
    if (synonymCount > 0)
        ifo += "\nsynwordcount=" + QByteArray::number(synonymCount);
    ifo += "\nidxfilesize=" + QByteArray::number(idx.size());
    if (options.offsetBits == 64)
        ifo += "\nidxoffsetbits=64";
    if (!options.typeSequence.isEmpty())
        ifo += "\nsametypesequence=" + options.typeSequence;
    ifo += '\n';

    const QByteArray packed = options.dictzip ? dictzip(dict, options.chunkSize) : dict;
    if (packed.isEmpty() && !dict.isEmpty())
        return QStringLiteral("too many articles for one chunk table");
    const QString base = QDir(directory).filePath(baseName);
    const std::pair<const char *, QByteArray> files[] = {
        {options.gzipIndex ? ".idx.gz" : ".idx", options.gzipIndex ? gzip(idx) : idx},
        {options.dictzip ? ".dict.dz" : ".dict", packed},
        {synonymCount > 0 ? ".syn" : "", syn},
        {".ifo", ifo},
    };
    for (const auto &[suffix, data] : files) {
        if (*suffix == '\0')
            continue;
        if (QString problem = save(base + QLatin1String(suffix), data); !problem.isEmpty())
            return problem;
    }
    return {};
}

} // namespace lexiquill::tools
