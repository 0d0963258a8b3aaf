#include "dictionaries/article/markup.h"

#include "dictionaries/article/entities.h"
#include "dictionaries/article/text_scan.h"

#include <QHash>
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
    case MarkupKind::PowerWord:
    case MarkupKind::WordNet:
        return !tag.isEmpty();
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
    // MediaWiki's notes.
    if (kind == MarkupKind::Pango)
        return tag == QStringLiteral("ref");
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
    while (end < std::min(inside.size(), longestName) &&
           (inside[end].isLetterOrNumber() || inside[end] == u'_'))
        ++end;
    tag.name = inside.first(end).toString().toLower();
    return tag;
}

/// What an element of an article in XML holds.
enum class Content { Unknown, Phonetic, Label, Sense, Example, Translation, Phrase, Headword, Aside };

Content powerWordContent(const QString &element) {
    const auto has = [&element](QStringView part) {
        return element.contains(part);
    };
    if (has(u"音标"))
        return Content::Phonetic;
    if (has(u"词性"))
        return Content::Label;
    if (has(u"例句"))
        return has(u"原型") ? Content::Example : has(u"解释") ? Content::Translation : Content::Unknown;
    if (has(u"惯用") || has(u"短语") || has(u"词组") || has(u"习语"))
        return has(u"原型") ? Content::Phrase : has(u"解释") ? Content::Translation : Content::Unknown;
    if (has(u"同义") || has(u"反义") || has(u"派生") || has(u"参考") || has(u"相关") || has(u"注释") ||
        has(u"图片") || has(u"变化") || has(u"音节"))
        return Content::Aside;
    if (has(u"原型") || has(u"词条"))
        return Content::Headword;
    return has(u"解释") || has(u"释义") ? Content::Sense : Content::Unknown;
}

Content wordNetContent(const QString &element) {
    static const QHash<QString, Content> contents{
        {QStringLiteral("type"), Content::Label},      {QStringLiteral("pos"), Content::Label},
        {QStringLiteral("gloss"), Content::Sense},     {QStringLiteral("definition"), Content::Sense},
        {QStringLiteral("example"), Content::Example}, {QStringLiteral("word"), Content::Aside},
        {QStringLiteral("wordgroup"), Content::Aside}, {QStringLiteral("syn"), Content::Aside},
    };
    return contents.value(element, Content::Unknown);
}

/// The label for the letter that marks a part of speech in WordNet.
QString wordNetLabel(const QString &letter) {
    static const QHash<QString, QString> names{
        {QStringLiteral("n"), QStringLiteral("noun")},
        {QStringLiteral("v"), QStringLiteral("verb")},
        {QStringLiteral("a"), QStringLiteral("adjective")},
        {QStringLiteral("s"), QStringLiteral("adjective")},
        {QStringLiteral("r"), QStringLiteral("adverb")},
    };
    return names.value(letter, letter);
}

class Reader {
public:
    Reader(QStringView text, MarkupKind kind) : m_text(text), m_kind(kind) {}

    PlainArticle read() {
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
            if (m_kind == MarkupKind::PowerWord && skipInlineMark())
                continue;
            append(c);
            ++m_at;
        }
        endLine();
        // Elements without a known name are of interest only if no name is known.
        for (const qsizetype i : std::as_const(m_unknownLines)) {
            if (m_hasKnown)
                m_result.lines[i].role = LineRole::Aside;
        }
        m_result.rawText = m_result.rawText.trimmed();
        return std::move(m_result);
    }

private:
    void append(QStringView text) {
        m_line += text;
        m_result.rawText += text;
    }

    void append(QChar c) {
        const bool isSkipped = c == std::exchange(m_skippedMark, QChar());
        if (m_kind == MarkupKind::Html && isHtmlBlank(c)) {
            separateCells();
            return;
        }
        m_result.rawText += c;
        const bool isLineBreak = c == lineFeed || c == u'\r';
        if (isLineBreak && !m_inExample && m_kind != MarkupKind::PowerWord)
            endLine();
        else if (!isSkipped)
            m_line += isLineBreak ? u' ' : c;
    }

    /// PowerWord marks type within a text as "&b{…}".
    bool skipInlineMark() {
        const QChar c = m_text[m_at];
        const bool opens =
            c == u'&' && isAsciiLetter(charAt(m_text, m_at + 1)) && charAt(m_text, m_at + 2) == u'{';
        if (!opens && (c != u'}' || m_openMarks == 0))
            return false;
        m_openMarks += opens ? 1 : -1;
        m_at += opens ? 3 : 1;
        return true;
    }

    /// Ends the line of text.
    void endLine() {
        m_transcriptionStart = -1;
        m_remarkStart = -1;
        QString text = std::exchange(m_line, QString()).trimmed();
        if (text.isEmpty())
            return;
        if (m_inExample)
            text.replace(QStringLiteral("  "), QStringLiteral(" "));
        LineRole role = m_inExample ? LineRole::Example : LineRole::Plain;
        if (m_kind == MarkupKind::PowerWord || m_kind == MarkupKind::WordNet) {
            addElement(text);
            return;
        }
        if (std::exchange(m_beginsItem, false))
            role = LineRole::Item;
        // A line that only refers to another word is no meaning.
        if (m_isAside || text == std::exchange(m_reference, QString()))
            role = LineRole::Aside;
        m_result.lines.append({text, role});
    }

    /// Adds the text of an element by its meaning.
    void addElement(const QString &text) {
        m_hasKnown = m_hasKnown || m_content == Content::Sense;
        switch (m_content) {
        case Content::Phonetic:
            if (m_result.phonetic.isEmpty())
                m_result.phonetic = text;
            return;
        case Content::Label:
            m_result.lines.append(
                {m_kind == MarkupKind::WordNet ? wordNetLabel(text) : text, LineRole::Heading});
            return;
        case Content::Sense:
            m_result.lines.append({text, LineRole::Item});
            return;
        case Content::Example:
            m_result.lines.append({text, LineRole::Example});
            return;
        case Content::Translation:
            m_result.lines.append({text, LineRole::Translation});
            return;
        case Content::Phrase:
            m_result.lines.append({text, LineRole::Phrase});
            return;
        case Content::Headword:
            return;
        case Content::Aside:
            m_result.lines.append({text, LineRole::Aside});
            return;
        case Content::Unknown:
            m_unknownLines.append(m_result.lines.size());
            m_result.lines.append({text, LineRole::Plain});
        }
    }

    /// A run of blanks and line breaks is shown as one blank.
    static void appendBlank(QString &text) {
        if (!text.isEmpty() && text.back() != u' ' && text.back() != lineFeed)
            text += u' ';
    }

    void separateCells() {
        appendBlank(m_line);
        appendBlank(m_result.rawText);
    }

    void breakLine() {
        if (m_inExample)
            m_line += u' ';
        else
            endLine();
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
        const bool isXml = m_kind == MarkupKind::PowerWord || m_kind == MarkupKind::WordNet;
        if (!isAsciiLetter(first) && !(isXml && first.isLetter()) && first != u'/' && first != u'!' &&
            first != u'?')
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
        const qsizetype end = std::max(m_at - 3, start);
        const qsizetype after = std::exchange(m_at, start);
        while (m_at < end) {
            if (m_kind == MarkupKind::PowerWord && skipInlineMark())
                continue;
            append(m_text[m_at]);
            ++m_at;
        }
        m_at = after;
        return true;
    }

    void apply(const Tag &tag) {
        if (isHidden(tag.name, m_kind)) {
            if (!tag.closing && !tag.selfClosing)
                skipPast(QStringLiteral("</") + tag.name + u'>');
            return;
        }
        if (m_kind == MarkupKind::PowerWord || m_kind == MarkupKind::WordNet) {
            applyXml(tag);
        } else if (breaksLine(tag.name, m_kind)) {
            breakLine();
            if (tag.name == QStringLiteral("def") && !tag.selfClosing)
                applyDefinition(tag.closing);
        } else if (m_kind == MarkupKind::Html &&
                   (tag.name == QStringLiteral("td") || tag.name == QStringLiteral("th"))) {
            separateCells();
        } else if (m_kind == MarkupKind::Xdxf && !tag.selfClosing) {
            applyXdxf(tag);
        }
    }

    void applyXml(const Tag &tag) {
        breakLine();
        if (tag.selfClosing)
            return;
        if (tag.closing)
            m_content = Content::Unknown;
        else
            m_content =
                m_kind == MarkupKind::PowerWord ? powerWordContent(tag.name) : wordNetContent(tag.name);
    }

    /// A definition within another one is a sense.
    void applyDefinition(bool closing) {
        m_definitionDepth = std::max(0, m_definitionDepth + (closing ? -1 : 1));
        m_beginsItem = !closing && m_definitionDepth > 1;
    }

    void applyXdxf(const Tag &tag) {
        if (tag.name == QStringLiteral("ex")) {
            endLine();
            breakRawLine();
            m_inExample = !tag.closing;
        } else if (tag.name == QStringLiteral("ex_orig") || tag.name == QStringLiteral("ex_tran")) {
            separateCells();
        } else if (tag.name == QStringLiteral("sr") || tag.name == QStringLiteral("etm")) {
            breakLine();
            m_isAside = !tag.closing;
        } else if (tag.name == QStringLiteral("k")) {
            endKey(tag.closing);
        } else if (tag.name == QStringLiteral("gr") || tag.name == QStringLiteral("pos")) {
            if (tag.closing)
                separateCells();
        } else if (tag.name == QStringLiteral("co") || tag.name == QStringLiteral("categ")) {
            applyRemark(tag.closing);
        } else if (tag.name == QStringLiteral("kref")) {
            if (!tag.closing)
                m_isReference = withoutComma(m_line) == m_reference;
            else if (m_isReference)
                m_reference = m_line.trimmed();
        } else if (tag.name == QStringLiteral("tr")) {
            if (!tag.closing)
                m_transcriptionStart = m_line.size();
            else
                endTranscription();
        }
    }

    static QStringView withoutComma(QStringView text) {
        text = text.trimmed();
        while (text.endsWith(u',') || text.endsWith(u';'))
            text = text.chopped(1).trimmed();
        return text;
    }

    /// A headword is not part of the text below it.
    void endKey(bool closing) {
        if (!closing) {
            endLine();
            m_inKey = true;
        } else if (std::exchange(m_inKey, false)) {
            m_line.clear();
            breakLine();
        }
    }

    /// Remarks are put in brackets, unless they already have some.
    void applyRemark(bool closing) {
        if (!closing) {
            m_remarkStart = m_line.size();
            return;
        }
        const qsizetype start = std::exchange(m_remarkStart, -1);
        if (start < 0 || start >= m_line.size())
            return;
        const QString inside = m_line.sliced(start).trimmed();
        if (inside.isEmpty() || !closingBracket(inside[0]).isNull())
            return;
        m_line.truncate(start);
        m_line += u'(' + inside + QStringLiteral(") ");
    }

    void endTranscription() {
        constexpr qsizetype longest = 200;
        const qsizetype start = std::exchange(m_transcriptionStart, -1);
        if (start < 0 || start > m_line.size())
            return;
        const QStringView inside = QStringView(m_line).sliced(start);
        if (inside.size() > longest)
            return;
        if (m_result.phonetic.isEmpty())
            m_result.phonetic = inside.trimmed().toString();
        m_line.truncate(start);
        // Also remove the brackets around it.
        static constexpr std::pair<char16_t, char16_t> brackets[] = {
            {u'[', u']'}, {u'/', u'/'}, {u'(', u')'}};
        for (const auto &[open, close] : brackets) {
            if (!m_line.endsWith(QChar(open)))
                continue;
            m_skippedMark = QChar(close);
            m_line.chop(1);
            break;
        }
    }

    QStringView m_text;
    MarkupKind m_kind;
    PlainArticle m_result;
    QString m_line;
    /// The line so far, if it only has references to other words.
    QString m_reference;
    QList<qsizetype> m_unknownLines;
    QSet<QString> m_missing;
    Content m_content = Content::Unknown;
    qsizetype m_at = 0;
    qsizetype m_transcriptionStart = -1;
    qsizetype m_remarkStart = -1;
    int m_definitionDepth = 0;
    int m_openMarks = 0;
    QChar m_skippedMark;
    bool m_inExample = false;
    bool m_inKey = false;
    bool m_isReference = false;
    bool m_isAside = false;
    bool m_beginsItem = false;
    bool m_hasKnown = false;
};

} // namespace

PlainArticle readMarkup(const QString &text, MarkupKind kind) {
    return Reader(text, kind).read();
}

} // namespace lexiquill::article
