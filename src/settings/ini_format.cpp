#include "settings/ini_format.h"

#include <QMap>
#include <QStringList>

#include <algorithm>
#include <optional>

namespace lexiquill {

namespace {

/// The group name for keys without a group.
constexpr QLatin1StringView generalGroup("General");

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
        // Surrogates, too: a lone one cannot be encoded in UTF-8.
        const bool needsEscape =
            character.unicode() < 0x20 || character.unicode() == 0x7f || character.isSurrogate();
        // A reader would treat a hexadecimal digit as part of the escape before it.
        const bool isHexEscaped = needsEscape || (followsHexEscape && isHexDigit(character));
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
        // Each byte is written as the Latin-1 character of its value. A leading "@" must not be doubled here.
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

/// Reads one value: items separated by commas, each plain or in quotes, with escapes.
class ValueReader {
public:
    explicit ValueReader(QStringView text) : m_text(text) {}

    QStringList items() {
        QStringList items;
        do {
            items += item();
        } while (m_position++ < m_text.size());
        return items;
    }

private:
    /// Reads up to a comma outside quotes, or the end.
    QString item() {
        QString result;
        bool isQuoted = false;
        bool wasQuoted = false;
        for (; m_position < m_text.size(); ++m_position) {
            const QChar character = m_text[m_position];
            if (character == u'"') {
                if (!wasQuoted)
                    result = result.trimmed();
                isQuoted = !isQuoted;
                wasQuoted = true;
            } else if (character == u'\\' && m_position + 1 < m_text.size()) {
                ++m_position;
                result += escaped();
            } else if (character == u',' && !isQuoted) {
                break;
            } else if (isQuoted || !wasQuoted) {
                result += character;
            }
        }
        return wasQuoted ? result : result.trimmed();
    }

    /// The character after a backslash. Leaves the position at the last character of the escape.
    QChar escaped() {
        const QChar kind = m_text[m_position];
        if (kind == u'n')
            return u'\n';
        if (kind == u't')
            return u'\t';
        if (kind == u'r')
            return u'\r';
        if (kind != u'x')
            return kind;
        char16_t code = 0;
        while (m_position + 1 < m_text.size() && isHexDigit(m_text[m_position + 1]))
            code = static_cast<char16_t>(code << 4 | m_text.sliced(++m_position, 1).toInt(nullptr, 16));
        return code;
    }

    QStringView m_text;
    qsizetype m_position = 0;
};

/// The value of an unescaped text; invalid for types that are not supported.
QVariant typedValue(const QString &text) {
    constexpr QLatin1StringView byteArray("@ByteArray(");
    if (!text.startsWith(u'@'))
        return text;
    if (text.startsWith(QLatin1StringView("@@")))
        return text.sliced(1);
    if (text.startsWith(byteArray) && text.endsWith(u')'))
        return text.sliced(byteArray.size()).chopped(1).toLatin1();
    return {};
}

QString keyOf(QStringView text) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text.trimmed().toUtf8()));
}

} // namespace

QVariantMap iniValues(const QByteArray &text) {
    QVariantMap values;
    QString group;
    const QStringList lines = QString::fromUtf8(text).split(u'\n');
    for (const QString &rawLine : lines) {
        const QStringView line = QStringView(rawLine).trimmed();
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            const QString name = keyOf(line.sliced(1).chopped(1));
            group = name.isEmpty() || name == generalGroup ? QString() : name + u'/';
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (equals <= 0 || line.startsWith(u';') || line.startsWith(u'#'))
            continue;
        QStringList items = ValueReader(line.sliced(equals + 1)).items();
        QVariant value;
        if (items.size() == 1) {
            value = typedValue(items.first());
        } else {
            for (QString &item : items)
                item = typedValue(item).toString();
            value = items;
        }
        if (value.isValid())
            values.insert(group + keyOf(line.first(equals)), value);
    }
    return values;
}

QByteArray iniText(const QVariantMap &values) {
    QMap<QString, QByteArray> groups;
    for (auto iterator = values.cbegin(); iterator != values.cend(); ++iterator) {
        const auto text = valueText(iterator.value());
        if (!text)
            continue;
        const qsizetype slash = iterator.key().indexOf(u'/');
        QString group = iterator.key().first(std::max<qsizetype>(slash, 0));
        QString name = iterator.key().sliced(slash + 1);
        // A line needs a name, and the group "General" means no group.
        if (group.isEmpty() || name.isEmpty() || group == generalGroup) {
            group.clear();
            name = iterator.key();
        }
        groups[group] += keyText(name) + '=' + text->toUtf8() + '\n';
    }
    QByteArray result;
    for (auto iterator = groups.cbegin(); iterator != groups.cend(); ++iterator) {
        const QByteArray name = keyText(iterator.key().isEmpty() ? QString(generalGroup) : iterator.key());
        result += '[' + name + "]\n" + iterator.value();
    }
    return result;
}

} // namespace lexiquill
