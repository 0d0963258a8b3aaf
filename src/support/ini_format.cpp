#include "support/ini_format.h"

#include <QMap>
#include <QStringList>

#include <optional>

namespace lexiquill {

namespace {

bool isHexDigit(QChar character) {
    const char16_t unit = character.unicode();
    return (unit >= u'0' && unit <= u'9') || ((unit | 0x20) >= u'a' && (unit | 0x20) <= u'f');
}

QString quoted(const QString &text) {
    QString result = QStringLiteral("\"");
    // A leading "@" introduces a typed value unless it is doubled.
    if (text.startsWith(u'@'))
        result += u'@';
    bool followsHexEscape = false;
    for (const QChar character : text) {
        const bool isControl = character.unicode() < 0x20 || character.unicode() == 0x7f;
        // The reader would take a hexadecimal digit for a part of the escape before it.
        const bool isHexEscaped = isControl || (followsHexEscape && isHexDigit(character));
        if (isHexEscaped) {
            result += QStringLiteral("\\x") + QString::number(character.unicode(), 16);
        } else {
            if (character == u'"' || character == u'\\')
                result += u'\\';
            result += character;
        }
        followsHexEscape = isHexEscaped;
    }
    return result + u'"';
}

std::optional<QString> valueText(const QVariant &value) {
    switch (value.typeId()) {
    case QMetaType::QStringList: {
        QStringList items;
        for (const QString &item : value.toStringList())
            items += quoted(item);
        return items.isEmpty() ? QStringLiteral("@Invalid()") : items.join(QStringLiteral(", "));
    }
    case QMetaType::QByteArray: {
        // The bytes stand as the first 256 characters; the "@" here must not be doubled.
        const QString inside = quoted(QString::fromLatin1(value.toByteArray()));
        const qsizetype start = inside.startsWith(QStringLiteral("\"@@")) ? 2 : 1;
        return QStringLiteral("\"@ByteArray(") + inside.sliced(start).chopped(1) + QStringLiteral(")\"");
    }
    case QMetaType::QString:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return quoted(value.toString());
    default:
        return std::nullopt;
    }
}

QByteArray keyText(const QString &key) {
    return key.toUtf8().toPercentEncoding({}, "~");
}

} // namespace

QByteArray iniText(const QVariantMap &values) {
    QMap<QString, QByteArray> groups;
    for (auto iterator = values.cbegin(); iterator != values.cend(); ++iterator) {
        const auto text = valueText(iterator.value());
        if (!text)
            continue;
        const qsizetype slash = iterator.key().indexOf(u'/');
        const QString group = slash < 0 ? QString() : iterator.key().first(slash);
        groups[group] += keyText(iterator.key().sliced(slash + 1)) + '=' + text->toUtf8() + '\n';
    }
    QByteArray result;
    for (auto iterator = groups.cbegin(); iterator != groups.cend(); ++iterator) {
        const QByteArray name = iterator.key().isEmpty() ? QByteArray("General") : keyText(iterator.key());
        result += '[' + name + "]\n" + iterator.value();
    }
    return result;
}

} // namespace lexiquill
