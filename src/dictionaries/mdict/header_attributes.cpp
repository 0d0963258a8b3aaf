#include "dictionaries/mdict/header_attributes.h"

#include "dictionaries/article/entities.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace lexiquill::mdict {

namespace {

constexpr qsizetype longestName = 64;

bool isNameCharacter(QChar c) {
    return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'_' || c == u':' || c == u'-' || c == u'.');
}

bool isQuote(QChar c) {
    return c == u'"' || c == u'\'';
}

qsizetype skipBlanks(QStringView text, qsizetype at) {
    // Nobody needs more, and the limit keeps repeated looks ahead cheap.
    constexpr qsizetype mostBlanks = 256;
    const qsizetype end = std::min(text.size(), at + mostBlanks);
    while (at < end && (text[at].isSpace() || text[at].isNull()))
        ++at;
    return at;
}

/// The start of an attribute: its name, and where its value begins.
struct Start {
    QStringView name;
    qsizetype value = 0;
};

std::optional<Start> readStart(QStringView text, qsizetype at) {
    const qsizetype from = at;
    while (at < text.size() && at - from <= longestName && isNameCharacter(text[at]))
        ++at;
    const QStringView name = text.sliced(from, at - from);
    at = skipBlanks(text, at);
    if (name.isEmpty() || name.size() > longestName || at == text.size() || text[at] != u'=')
        return std::nullopt;
    return Start{name, skipBlanks(text, at + 1)};
}

/// Whether only the end of the element follows.
bool isEnd(QStringView text, qsizetype at) {
    at = skipBlanks(text, at);
    if (at < text.size() && text[at] == u'/')
        ++at;
    if (at < text.size() && text[at] == u'>')
        ++at;
    at = skipBlanks(text, at);
    if (text.sliced(at).startsWith(u"</")) {
        at += 2;
        while (at < text.size() && isNameCharacter(text[at]))
            ++at;
        at = skipBlanks(text, std::min(at + 1, text.size()));
    }
    return at == text.size();
}

/// Whether `name` is written as this format writes its names. Attributes of HTML are usually written in one
/// case.
bool isFormatName(QStringView name) {
    return name[0].isUpper() && std::any_of(name.begin(), name.end(), [](QChar c) { return c.isLower(); });
}

/// Whether a quotation mark before `at` ends a value: an attribute of the format or the end follows.
bool endsValue(QStringView text, qsizetype at) {
    const qsizetype next = skipBlanks(text, at);
    if (const auto start = readStart(text, next); start && isFormatName(start->name))
        return start->value < text.size() && isQuote(text[start->value]);
    return isEnd(text, at);
}

QString withoutReferences(QStringView value) {
    QString text;
    text.reserve(value.size());
    for (qsizetype at = 0; at < value.size();) {
        const article::Entity entity = article::readEntity(value.sliced(at));
        if (entity.length > 0)
            text += entity.text;
        else
            text += value[at];
        at += std::max(entity.length, qsizetype(1));
    }
    return text;
}

class AttributeScan {
public:
    explicit AttributeScan(QStringView text) : m_text(text) {
        while (m_start < text.size() && text[m_start] != u'<')
            ++m_start;
        m_start = std::min(m_start + 1, text.size());
        while (m_start < text.size() && isNameCharacter(text[m_start]))
            ++m_start;
    }

    /// The attributes of well-formed text; no value for other text. Characters that should have been written
    /// as references do no harm.
    std::optional<QHash<QString, QString>> strict() {
        m_values.clear();
        qsizetype at = skipAllBlanks(m_start);
        while (!isEnd(m_text, at)) {
            const auto start = readStart(m_text, at);
            if (!start || start->value == m_text.size() || !isQuote(m_text[start->value]))
                return std::nullopt;
            const qsizetype from = start->value + 1;
            const qsizetype end = m_text.indexOf(m_text[start->value], from);
            if (end < 0)
                return std::nullopt;
            keep(start->name, from, end);
            at = skipAllBlanks(end + 1);
        }
        return m_values;
    }

    QHash<QString, QString> loose() {
        m_values.clear();
        for (qsizetype at = m_start; at < m_text.size();) {
            const auto start = isNameCharacter(m_text[at]) ? readStart(m_text, at) : std::nullopt;
            if (start)
                at = takeValue(*start);
            else if (isNameCharacter(m_text[at]))
                at = skipName(at);
            else
                ++at;
        }
        return m_values;
    }

private:
    qsizetype skipAllBlanks(qsizetype at) const {
        while (at < m_text.size() && (m_text[at].isSpace() || m_text[at].isNull()))
            ++at;
        return at;
    }

    qsizetype skipName(qsizetype at) const {
        while (at < m_text.size() && isNameCharacter(m_text[at]))
            ++at;
        return at;
    }

    void keep(QStringView name, qsizetype from, qsizetype end) {
        const QString key = name.toString().toLower();
        if (!m_values.contains(key))
            m_values.insert(key, withoutReferences(m_text.sliced(from, end - from)));
    }

    /// The quotation mark that ends the value beginning at `from`; -1 if there is none.
    qsizetype findEnd(QChar quote, qsizetype from) {
        // What ends a value does not depend on its start, so one search that fails is enough.
        bool &isHopeless = quote == u'"' ? m_noMoreDouble : m_noMoreSingle;
        qsizetype end = isHopeless ? -1 : m_text.indexOf(quote, from);
        while (end >= 0 && !endsValue(m_text, end + 1))
            end = m_text.indexOf(quote, end + 1);
        isHopeless = end < 0;
        return end;
    }

    /// Keeps a value and returns where the text continues.
    qsizetype takeValue(const Start &start) {
        qsizetype end = start.value;
        if (end < m_text.size() && isQuote(m_text[end])) {
            const qsizetype from = end + 1;
            end = findEnd(m_text[end], from);
            if (end >= 0) {
                keep(start.name, from, end);
                return end + 1;
            }
            // There is no end: what looks like a word is the value.
            end = from;
        }
        const qsizetype from = end;
        while (end < m_text.size() && !m_text[end].isSpace() && m_text[end] != u'>' &&
               !isQuote(m_text[end]) && !m_text[end].isNull())
            ++end;
        keep(start.name, from, end);
        return std::max(end, start.value + 1);
    }

    QStringView m_text;
    qsizetype m_start = 0;
    bool m_noMoreDouble = false;
    bool m_noMoreSingle = false;
    QHash<QString, QString> m_values;
};

} // namespace

QHash<QString, QString> readAttributes(QStringView header) {
    AttributeScan scan(header);
    if (auto values = scan.strict())
        return std::move(*values);
    return scan.loose();
}

} // namespace lexiquill::mdict
