#include "dictionaries/article/markup.h"

#include "dictionaries/article/entities.h"
#include "dictionaries/article/text_scan.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace lexiquill::article {

namespace {

constexpr char16_t lineFeed = u'\n';

/// The relevant parts of a tag.
struct Tag {
    QString name;
    bool closing = false;
    bool selfClosing = false;
};

bool breaksLine(const QString &tag, MarkupKind kind) {
    static const QSet<QString> html{
        QStringLiteral("br"),      QStringLiteral("p"),          QStringLiteral("div"),
        QStringLiteral("li"),      QStringLiteral("tr"),         QStringLiteral("h1"),
        QStringLiteral("h2"),      QStringLiteral("h3"),         QStringLiteral("h4"),
        QStringLiteral("h5"),      QStringLiteral("h6"),         QStringLiteral("dt"),
        QStringLiteral("dd"),      QStringLiteral("hr"),         QStringLiteral("ul"),
        QStringLiteral("ol"),      QStringLiteral("dl"),         QStringLiteral("table"),
        QStringLiteral("section"), QStringLiteral("article"),    QStringLiteral("pre"),
        QStringLiteral("body"),    QStringLiteral("blockquote"),
    };
    static const QSet<QString> xdxf{
        QStringLiteral("br"),
        QStringLiteral("def"),
        QStringLiteral("li"),
        QStringLiteral("blockquote"),
    };
    switch (kind) {
    case MarkupKind::Html:
        return html.contains(tag);
    case MarkupKind::Xdxf:
        return xdxf.contains(tag);
    case MarkupKind::Pango:
        break;
    }
    return false;
}

/// Elements whose content is not shown.
bool isHidden(const QString &tag, MarkupKind kind) {
    if (kind == MarkupKind::Html)
        return tag == QStringLiteral("script") || tag == QStringLiteral("style") ||
               tag == QStringLiteral("head");
    return kind == MarkupKind::Xdxf && tag == QStringLiteral("rref");
}

bool isHtmlBlank(QChar c) {
    return c == u' ' || c == lineFeed || c == u'\t' || c == u'\r' || c == u'\f';
}

Tag parseTag(QStringView inside) {
    Tag tag;
    if (inside.startsWith(u'/')) {
        tag.closing = true;
        inside = inside.sliced(1);
    }
    tag.selfClosing = inside.endsWith(u'/');
    constexpr qsizetype longestName = 16;
    qsizetype end = 0;
    while (end < std::min(inside.size(), longestName) && inside[end].isLetterOrNumber())
        ++end;
    tag.name = inside.first(end).toString().toLower();
    return tag;
}

class Reader {
public:
    Reader(QStringView text, MarkupKind kind, const QString &headword)
        : m_text(text),
          m_kind(kind),
          m_headword(headword) {}

    PlainArticle read() {
        m_result.text.reserve(m_text.size());
        m_result.rawText.reserve(m_text.size());
        while (m_at < m_text.size()) {
            const QChar c = m_text[m_at];
            if (c == u'<' && readTag())
                continue;
            if (c == u'&') {
                if (const Entity entity = readEntity(m_text.sliced(m_at)); entity.length > 0) {
                    append(entity.text);
                    m_at += entity.length;
                    continue;
                }
            }
            append(c);
            ++m_at;
        }
        m_result.rawText = m_result.rawText.trimmed();
        return std::move(m_result);
    }

private:
    void append(QStringView text) {
        m_result.text += text;
        m_result.rawText += text;
    }

    void append(QChar c) {
        const bool isSkipped = c == std::exchange(m_skippedMark, QChar());
        if (m_kind == MarkupKind::Html && isHtmlBlank(c)) {
            appendBlank(m_result.text);
            appendBlank(m_result.rawText);
            return;
        }
        m_result.rawText += c;
        const bool isLineBreak = c == lineFeed || c == u'\r';
        if (!isSkipped)
            m_result.text += isLineBreak && m_inExample ? u' ' : c;
    }

    /// A run of blanks and line breaks is shown as one blank.
    static void appendBlank(QString &text) {
        if (!text.isEmpty() && text.back() != u' ' && text.back() != lineFeed)
            text += u' ';
    }

    void separateCells() {
        appendBlank(m_result.text);
        appendBlank(m_result.rawText);
    }

    void breakLine() {
        m_result.text += m_inExample ? u' ' : lineFeed;
        breakRawLine();
    }

    /// Adds no empty line if one element ends a line and the next one starts a line.
    void breakRawLine() {
        if (!m_result.rawText.isEmpty() && m_result.rawText.back() != lineFeed)
            m_result.rawText += lineFeed;
    }

    /// Reads the tag that begins with the "<" at m_at; false if that is an ordinary character.
    bool readTag() {
        const QStringView rest = m_text.sliced(m_at);
        if (rest.startsWith(u"<!--"))
            return skipPast(QStringLiteral("-->")) || skipPast(QStringLiteral(">"));
        if (rest.startsWith(u"<![CDATA["))
            return readCharacterData();
        const QChar first = charAt(rest, 1);
        if (!isAsciiLetter(first) && first != u'/' && first != u'!' && first != u'?')
            return false;
        const qsizetype end = endOfTag(m_at + 1);
        if (charAt(m_text, end) != u'>')
            return false;
        const Tag tag = parseTag(m_text.sliced(m_at + 1, end - m_at - 1));
        m_at = end + 1;
        apply(tag);
        return true;
    }

    /// The first ">" or "<" that does not stand in the quoted value of an attribute.
    qsizetype endOfTag(qsizetype at) {
        while (at < m_text.size() && m_text[at] != u'>' && m_text[at] != u'<') {
            const QChar quote = charAt(m_text, at + 1);
            const bool opensValue = m_text[at] == u'=' && (quote == u'"' || quote == u'\'');
            const qsizetype close = opensValue ? indexOf(QStringView(&quote, 1), at + 2) : -1;
            at = close < 0 ? at + 1 : close + 1;
        }
        return at;
    }

    /// The place of the next `mark`, or -1. A failed search is never repeated: it would fail again, and
    /// repeating it would make malformed texts slow.
    qsizetype indexOf(QStringView mark, qsizetype from) {
        const QString key = mark.toString();
        if (m_missing.contains(key))
            return -1;
        const qsizetype found = m_text.indexOf(mark, from, Qt::CaseInsensitive);
        if (found < 0)
            m_missing.insert(key);
        return found;
    }

    /// Moves past the next `mark`, if there is one.
    bool skipPast(const QString &mark) {
        const qsizetype found = indexOf(mark, m_at);
        if (found < 0)
            return false;
        m_at = found + mark.size();
        return true;
    }

    bool readCharacterData() {
        constexpr qsizetype openingSize = 9;
        const qsizetype start = m_at + openingSize;
        if (!skipPast(QStringLiteral("]]>")))
            return false;
        append(m_text.sliced(start, std::max<qsizetype>(m_at - 3 - start, 0)));
        return true;
    }

    void apply(const Tag &tag) {
        if (isHidden(tag.name, m_kind)) {
            if (!tag.closing && !tag.selfClosing)
                skipPast(QStringLiteral("</") + tag.name + u'>');
            return;
        }
        if (breaksLine(tag.name, m_kind))
            breakLine();
        else if (m_kind == MarkupKind::Html &&
                 (tag.name == QStringLiteral("td") || tag.name == QStringLiteral("th")))
            separateCells();
        else if (m_kind == MarkupKind::Xdxf && !tag.selfClosing)
            applyXdxf(tag);
    }

    void applyXdxf(const Tag &tag) {
        if (tag.name == QStringLiteral("ex")) {
            m_inExample = !tag.closing;
            m_result.text += tag.closing ? QStringLiteral("\n") : QStringLiteral("\n▸ ");
            breakRawLine();
        } else if (tag.name == QStringLiteral("k")) {
            if (!tag.closing)
                m_keyStart = m_result.text.size();
            else
                endKey();
        } else if (tag.name == QStringLiteral("tr")) {
            if (!tag.closing)
                m_transcriptionStart = m_result.text.size();
            else
                endTranscription();
        }
    }

    void endKey() {
        if (m_keyStart < 0)
            return;
        const QStringView key = QStringView(m_result.text).sliced(m_keyStart).trimmed();
        if (key.compare(m_headword, Qt::CaseInsensitive) == 0)
            m_result.text.truncate(m_keyStart);
        m_keyStart = -1;
        breakLine();
    }

    void endTranscription() {
        constexpr qsizetype longest = 200;
        const qsizetype start = std::exchange(m_transcriptionStart, -1);
        if (start < 0 || start > m_result.text.size())
            return;
        const QStringView inside = QStringView(m_result.text).sliced(start);
        if (inside.size() > longest || inside.contains(lineFeed))
            return;
        if (m_result.phonetic.isEmpty())
            m_result.phonetic = inside.trimmed().toString();
        m_result.text.truncate(start);
        // Also remove the brackets around it.
        static constexpr std::pair<char16_t, char16_t> brackets[] = {
            {u'[', u']'}, {u'/', u'/'}, {u'(', u')'}};
        for (const auto &[open, close] : brackets) {
            if (!m_result.text.endsWith(QChar(open)))
                continue;
            m_skippedMark = QChar(close);
            m_result.text.chop(1);
            break;
        }
    }

    QStringView m_text;
    MarkupKind m_kind;
    QString m_headword;
    PlainArticle m_result;
    QSet<QString> m_missing;
    qsizetype m_at = 0;
    qsizetype m_keyStart = -1;
    qsizetype m_transcriptionStart = -1;
    QChar m_skippedMark;
    bool m_inExample = false;
};

} // namespace

PlainArticle readMarkup(const QString &text, MarkupKind kind, const QString &headword) {
    return Reader(text, kind, headword).read();
}

} // namespace lexiquill::article
