#include "mdict_writer.h"

#include <QSaveFile>
#include <QtEndian>

#include <crypto++/ripemd.h>
#include <unicode/ucnv.h>
#include <zlib.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace lexiquill::tools {

namespace {

template <typename Number> void appendBig(QByteArray &out, quint64 value) {
    const auto big = qToBigEndian(static_cast<Number>(value));
    out.append(reinterpret_cast<const char *>(&big), sizeof big);
}

void appendLittle32(QByteArray &out, quint32 value) {
    const quint32 little = qToLittleEndian(value);
    out.append(reinterpret_cast<const char *>(&little), sizeof little);
}

quint32 adler(const QByteArray &bytes) {
    return static_cast<quint32>(
        adler32(1, reinterpret_cast<const Bytef *>(bytes.constData()), static_cast<uInt>(bytes.size())));
}

QByteArray utf16(const QString &text) {
    QByteArray bytes;
    bytes.reserve(text.size() * 2);
    for (const QChar unit : text) {
        bytes.append(static_cast<char>(unit.unicode() & 0xff));
        bytes.append(static_cast<char>(unit.unicode() >> 8));
    }
    return bytes;
}

/// Turns UTF-8 into the encoding of a file.
class Encoder {
public:
    explicit Encoder(const QByteArray &encoding) : m_isUtf16(encoding == "UTF-16") {
        UErrorCode status = U_ZERO_ERROR;
        if (encoding != "UTF-8" && !m_isUtf16)
            m_converter.reset(ucnv_open(encoding == "GBK" ? "gb18030" : encoding.constData(), &status));
        m_isKnown = U_SUCCESS(status);
    }

    bool isKnown() const { return m_isKnown; }
    qsizetype unitSize() const { return m_isUtf16 ? 2 : 1; }
    QByteArray zeroUnit() const { return QByteArray(unitSize(), '\0'); }

    QByteArray encoded(const QByteArray &utf8) const {
        if (m_isUtf16)
            return utf16(QString::fromUtf8(utf8));
        if (!m_converter)
            return utf8;
        const QString text = QString::fromUtf8(utf8);
        QByteArray out(text.size() * 4 + 4, Qt::Uninitialized);
        UErrorCode status = U_ZERO_ERROR;
        const int32_t size = ucnv_fromUChars(m_converter.get(), out.data(), static_cast<int32_t>(out.size()),
                                             reinterpret_cast<const UChar *>(text.utf16()),
                                             static_cast<int32_t>(text.size()), &status);
        return out.left(size);
    }

private:
    struct Close {
        void operator()(UConverter *converter) const { ucnv_close(converter); }
    };
    bool m_isUtf16;
    bool m_isKnown = true;
    std::unique_ptr<UConverter, Close> m_converter;
};

/// Writes the parts of a file that both kinds have.
class FileWriter {
public:
    FileWriter(const MdictOptions &options, const QByteArray &encoding, bool endsRecords)
        : m_options(options),
          m_encoder(encoding),
          m_endsRecords(endsRecords) {}

    bool knowsEncoding() const { return m_encoder.isKnown(); }

    QByteArray file(const QByteArray &header, const std::vector<MdictEntry> &entries) {
        return headerSection(header) + body(entries);
    }

private:
    struct Key {
        QByteArray bytes;
        quint64 offset = 0;
    };

    bool isVersion2() const { return m_options.version >= 2; }

    void appendNumber(QByteArray &out, quint64 value) const {
        if (isVersion2())
            appendBig<quint64>(out, value);
        else
            appendBig<quint32>(out, value);
    }

    static QByteArray headerSection(const QByteArray &header) {
        const QByteArray text = utf16(QString::fromUtf8(header) + QStringLiteral("\r\n") + QChar(0));
        QByteArray out;
        appendBig<quint32>(out, static_cast<quint64>(text.size()));
        out += text;
        appendLittle32(out, adler(text));
        return out;
    }

    QByteArray packed(const QByteArray &bytes, MdictOptions::Packing packing) const {
        QByteArray out;
        appendLittle32(out, static_cast<quint32>(packing));
        appendBig<quint32>(out, adler(bytes));
        if (packing == MdictOptions::Packing::None)
            return out + bytes;
        if (packing == MdictOptions::Packing::Lzo)
            return out + lzoLiterals(bytes);
        uLongf size = compressBound(static_cast<uLong>(bytes.size()));
        QByteArray data(static_cast<qsizetype>(size), Qt::Uninitialized);
        compress2(reinterpret_cast<Bytef *>(data.data()), &size,
                  reinterpret_cast<const Bytef *>(bytes.constData()), static_cast<uLong>(bytes.size()),
                  m_options.zlibLevel);
        return out + data.left(static_cast<qsizetype>(size));
    }

    /// The encryption is the reader's decryption backwards.
    static void encrypt(QByteArray &block) {
        const QByteArray seed = block.mid(4, 4) + QByteArray::fromHex("95360000");
        unsigned char key[CryptoPP::RIPEMD128::DIGESTSIZE];
        CryptoPP::RIPEMD128().CalculateDigest(key, reinterpret_cast<const CryptoPP::byte *>(seed.constData()),
                                              static_cast<size_t>(seed.size()));
        unsigned previous = 0x36;
        for (qsizetype i = 0; i < block.size() - 8; ++i) {
            const unsigned mixed = static_cast<unsigned char>(block[i + 8]) ^ previous ^
                                   (static_cast<unsigned>(i) & 0xffU) ^ key[i % 16];
            previous = ((mixed & 0x0fU) << 4) | (mixed >> 4);
            block[i + 8] = static_cast<char>(previous);
        }
    }

    void appendIndexKey(QByteArray &index, const QByteArray &key) const {
        const auto units = static_cast<quint64>(key.size() / m_encoder.unitSize());
        if (isVersion2()) {
            appendBig<quint16>(index, units);
            index += key + m_encoder.zeroUnit();
        } else {
            appendBig<quint8>(index, units);
            index += key;
        }
    }

    /// The stream of records; the offset of each goes to `keys`.
    QByteArray stream(const std::vector<MdictEntry> &entries, std::vector<Key> &keys) {
        QByteArray records;
        for (size_t i = 0; i < entries.size(); ++i) {
            const size_t place = m_options.reversedRecords ? entries.size() - 1 - i : i;
            keys[place].bytes = m_encoder.encoded(entries[place].key);
            keys[place].offset = static_cast<quint64>(records.size());
            if (!m_options.splitsRecords)
                m_bounds.push_back(records.size());
            records += m_endsRecords ? m_encoder.encoded(entries[place].record) + m_encoder.zeroUnit()
                                     : entries[place].record;
        }
        return records;
    }

    QByteArray recordSection(const QByteArray &records, size_t count) const {
        QByteArray table;
        QByteArray blocks;
        quint64 blockCount = 0;
        for (qsizetype at = 0; at < records.size(); ++blockCount) {
            qsizetype end = std::min(at + m_options.recordBlockSize, records.size());
            if (const auto bound = std::lower_bound(m_bounds.begin(), m_bounds.end(), end);
                bound != m_bounds.end())
                end = *bound;
            else if (!m_options.splitsRecords)
                end = records.size();
            const QByteArray block = packed(records.mid(at, end - at), m_options.packing);
            appendNumber(table, static_cast<quint64>(block.size()));
            appendNumber(table, static_cast<quint64>(end - at));
            blocks += block;
            at = end;
        }
        QByteArray out;
        appendNumber(out, blockCount);
        appendNumber(out, count);
        appendNumber(out, static_cast<quint64>(table.size()));
        appendNumber(out, static_cast<quint64>(blocks.size()));
        return out + table + blocks;
    }

    QByteArray keySection(const std::vector<Key> &keys) const {
        QByteArray index;
        QByteArray blocks;
        quint64 blockCount = 0;
        for (size_t first = 0; first < keys.size(); ++blockCount) {
            QByteArray bytes;
            size_t last = first;
            for (size_t i = first; i < keys.size() && bytes.size() < m_options.keyBlockSize; ++i) {
                appendNumber(bytes, keys[i].offset);
                bytes += keys[i].bytes + m_encoder.zeroUnit();
                last = i;
            }
            const QByteArray block = packed(bytes, m_options.packing);
            appendNumber(index, last - first + 1);
            appendIndexKey(index, keys[first].bytes);
            appendIndexKey(index, keys[last].bytes);
            appendNumber(index, static_cast<quint64>(block.size()));
            appendNumber(index, static_cast<quint64>(bytes.size()));
            blocks += block;
            first = last + 1;
        }
        QByteArray numbers;
        appendNumber(numbers, blockCount);
        appendNumber(numbers, keys.size());
        QByteArray storedIndex = index;
        if (isVersion2()) {
            storedIndex = packed(index, m_options.packing);
            if (m_options.encryptedIndex)
                encrypt(storedIndex);
            appendNumber(numbers, static_cast<quint64>(index.size()));
        }
        appendNumber(numbers, static_cast<quint64>(storedIndex.size()));
        appendNumber(numbers, static_cast<quint64>(blocks.size()));
        if (isVersion2())
            appendBig<quint32>(numbers, adler(numbers));
        return numbers + storedIndex + blocks;
    }

    QByteArray body(const std::vector<MdictEntry> &entries) {
        std::vector<Key> keys(entries.size());
        const QByteArray records = stream(entries, keys);
        return keySection(keys) + recordSection(records, entries.size());
    }

    const MdictOptions &m_options;
    Encoder m_encoder;
    bool m_endsRecords;
    std::vector<qsizetype> m_bounds; ///< where records begin
};

QByteArray escaped(const QByteArray &text) {
    return QString::fromUtf8(text).toHtmlEscaped().toUtf8();
}

/// `attributes`: those that only this kind of file has, each with a blank in front.
QByteArray headerOf(const MdictOptions &options, const QByteArray &element, const QByteArray &attributes) {
    if (!options.header.isEmpty())
        return options.header;
    const QByteArray version = options.version >= 2 ? "2.0" : "1.2";
    return "<" + element + " GeneratedByEngineVersion=\"" + version + "\" RequiredEngineVersion=\"" +
           version + "\" Encrypted=\"" + (options.encryptedIndex ? "2" : "No") + "\"" + attributes +
           " Title=\"" + escaped(options.title) + "\" Description=\"" + escaped(options.description) + "\"/>";
}

/// An order without case, as the programs that make dictionaries have it.
void sortEntries(std::vector<MdictEntry> &entries) {
    std::vector<std::pair<QByteArray, size_t>> order;
    order.reserve(entries.size());
    for (size_t i = 0; i < entries.size(); ++i)
        order.emplace_back(entries[i].key.toLower(), i);
    std::sort(order.begin(), order.end());
    std::vector<MdictEntry> sorted;
    sorted.reserve(entries.size());
    for (const auto &[key, place] : order)
        sorted.push_back(std::move(entries[place]));
    entries = std::move(sorted);
}

QString write(const QString &path, const QByteArray &content) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        return QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
    return {};
}

QString writeFile(const QString &path, FileWriter writer, const QByteArray &header,
                  std::vector<MdictEntry> &entries, bool sorted) {
    if (!writer.knowsEncoding())
        return QStringLiteral("unknown encoding");
    if (sorted)
        sortEntries(entries);
    return write(path, writer.file(header, entries));
}

} // namespace

QByteArray lzoLiterals(const QByteArray &bytes) {
    constexpr qsizetype longestShortRun = 238;
    constexpr qsizetype shortestLongRun = 18;
    constexpr qsizetype step = 255;
    QByteArray out;
    if (bytes.size() > longestShortRun) {
        // The length beyond 18 is a sum: each zero byte stands for 255, the byte that follows for itself.
        const qsizetype rest = bytes.size() - shortestLongRun;
        out += QByteArray(1 + (rest - 1) / step, '\0');
        out += static_cast<char>((rest - 1) % step + 1);
    } else if (!bytes.isEmpty()) {
        out += static_cast<char>(bytes.size() + 17);
    }
    return out + bytes + QByteArray("\x11\0\0", 3);
}

QString writeMdx(const QString &path, std::vector<MdictEntry> entries, const MdictOptions &options) {
    QByteArray attributes = " Encoding=\"" + options.encoding + "\" Format=\"" + options.format +
                            "\" KeyCaseSensitive=\"No\" StripKey=\"Yes\"";
    if (!options.styleSheet.isEmpty())
        attributes += " Compact=\"Yes\" StyleSheet=\"" + escaped(options.styleSheet) + "\"";
    return writeFile(path, FileWriter(options, options.encoding, true),
                     headerOf(options, "Dictionary", attributes), entries, options.sorted);
}

QString writeMdd(const QString &path, std::vector<MdictEntry> entries, const MdictOptions &options) {
    return writeFile(path, FileWriter(options, "UTF-16", false),
                     headerOf(options, "Library_Data", " Encoding=\"\""), entries, options.sorted);
}

} // namespace lexiquill::tools
