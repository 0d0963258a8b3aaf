#include "dictionaries/mdict/header.h"

#include "dictionaries/article/markup.h"
#include "dictionaries/mdict/byte_reader.h"
#include "dictionaries/mdict/file_piece.h"
#include "dictionaries/mdict/header_attributes.h"

#include <QtEndian>

namespace lexiquill::mdict {

namespace {

constexpr quint64 maxHeaderSize = quint64(4) * 1024 * 1024;
constexpr qsizetype maxNameLength = 200;
constexpr qsizetype maxDescriptionLength = 4000;

using Attributes = QHash<QString, QString>;

bool isYes(const QString &value) {
    return value.trimmed().compare(u"yes", Qt::CaseInsensitive) == 0;
}

QString plainText(const QString &html) {
    const bool isPlain = !html.contains(u'<') && !html.contains(u'&');
    return (isPlain ? html : article::readMarkup(html, article::MarkupKind::Html).rawText).trimmed();
}

DictionaryAbout readAbout(const Attributes &attributes) {
    DictionaryAbout about;
    about.name = plainText(attributes.value(QStringLiteral("title"))).simplified().left(maxNameLength);
    // The programs that make dictionaries suggest a title, which many makers leave.
    if (about.name.startsWith(u"Title (No HTML code allowed", Qt::CaseInsensitive))
        about.name.clear();
    // The beginning is enough, because most markup is shorter than the text.
    about.description =
        plainText(attributes.value(QStringLiteral("description")).left(maxDescriptionLength * 8))
            .left(maxDescriptionLength);
    return about;
}

/// The bits of "Encrypted": 1 for the key section, 2 for the key index.
int encryptionOf(const QString &value) {
    return isYes(value) ? 1 : value.trimmed().toInt();
}

DictionaryProblem interpret(const Attributes &attributes, FileKind kind, Header &header) {
    header.about = readAbout(attributes);
    bool isNumber = false;
    const double version =
        attributes.value(QStringLiteral("generatedbyengineversion")).trimmed().toDouble(&isNumber);
    if (!isNumber || version < 1)
        return DictionaryProblem::UnknownFormat;
    if (version >= 3)
        return DictionaryProblem::NewerFormat;
    header.isVersion2 = version >= 2;
    const int encryption = encryptionOf(attributes.value(QStringLiteral("encrypted")));
    if ((encryption & 1) != 0)
        return DictionaryProblem::Encrypted;
    header.hasEncryptedIndex = (encryption & 2) != 0;
    const auto encoding = kind == FileKind::Resources
                              ? TextEncoding::Utf16
                              : encodingByName(attributes.value(QStringLiteral("encoding")));
    if (!encoding)
        return DictionaryProblem::UnknownFormat;
    header.encoding = *encoding;
    header.isHtml =
        attributes.value(QStringLiteral("format")).trimmed().compare(u"text", Qt::CaseInsensitive) != 0;
    if (isYes(attributes.value(QStringLiteral("compact"))) ||
        isYes(attributes.value(QStringLiteral("compat"))))
        header.styleSheet = attributes.value(QStringLiteral("stylesheet"));
    return DictionaryProblem::None;
}

/// Headers of newer versions may be in UTF-8.
QString headerText(QByteArrayView bytes) {
    const bool isUtf16 = bytes.size() > 1 && bytes[1] == 0;
    return isUtf16 ? TextDecoder(TextEncoding::Utf16).toText(bytes) : QString::fromUtf8(bytes);
}

} // namespace

ReadHeader readHeader(const FileSnapshot &file, FileKind kind) {
    constexpr qint64 lengthSize = 4;
    constexpr qint64 checksumSize = 4;
    ReadHeader result;
    const auto length = readPiece(file, 0, lengthSize, lengthSize);
    const quint64 size = length ? ByteReader(*length).number(4) : 0;
    const auto bytes =
        size > 0 ? readPiece(file, lengthSize, size + checksumSize, maxHeaderSize) : std::nullopt;
    if (!bytes || !bytes->startsWith('<')) {
        result.problem = DictionaryProblem::UnknownFormat;
        return result;
    }
    const QByteArrayView text = QByteArrayView(*bytes).chopped(checksumSize);
    const auto checksum = qFromLittleEndian<quint32>(bytes->constData() + text.size());
    if (checksum != checksumOf(text)) {
        result.problem = DictionaryProblem::Damaged;
        return result;
    }
    result.problem = interpret(readAttributes(headerText(text)), kind, result.header);
    result.header.end = lengthSize + bytes->size();
    return result;
}

} // namespace lexiquill::mdict
