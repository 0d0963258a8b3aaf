#include "dictionaries/article/formatted_article.h"

#include "dictionaries/article/html_lines.h"
#include "dictionaries/article/html_text.h"
#include "dictionaries/article/html_tree.h"
#include "dictionaries/article/plain_article.h"
#include "dictionaries/article/sense_numbers.h"
#include "dictionaries/article/text_scan.h"

#include <QHash>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace lexiquill::article {

namespace {

/// A path within a dictionary: relative, without a scheme, and never above the dictionary.
bool isSafePath(const QString &path) {
    constexpr qsizetype longest = 512;
    if (path.isEmpty() || path.size() > longest)
        return false;
    const QString decoded = QUrl::fromPercentEncoding(path.toUtf8());
    const auto isUnsafe = [](QChar c) {
        return c == u':' || c == u'\\' || c.category() == QChar::Other_Control ||
               c.category() == QChar::Other_Format;
    };
    return !decoded.startsWith(u'/') && std::none_of(decoded.begin(), decoded.end(), isUnsafe) &&
           !decoded.split(u'/').contains(QStringLiteral(".."));
}

/// Writes rich text whose elements are always closed and correctly nested, and whose size is bounded.
class RichText {
public:
    void text(const QString &text) {
        if (!canAdd())
            return;
        const QString plain = visible(text).left(longest - m_text.size());
        for (qsizetype start = 0; start < plain.size();) {
            if (m_runSize >= longestRun)
                endBlock();
            qsizetype count = std::min(plain.size() - start, longestRun - m_runSize);
            if (start + count < plain.size() && plain[start + count].isLowSurrogate())
                ++count;
            piece(QStringView(plain).sliced(start, count));
            start += count;
        }
    }

    void image(const QString &path) {
        if (!canAdd() || !isSafePath(path))
            return;
        beginParagraph();
        m_text += QStringLiteral("<img src=\"dict:") + path.toHtmlEscaped() + QStringLiteral("\">");
        m_hasContent = true;
    }

    /// Ends a paragraph; within an item of a list, ends its line.
    void endBlock() {
        m_runSize = 0;
        if (m_inParagraph) {
            closeInline();
            m_text += QStringLiteral("</p>");
            m_inParagraph = false;
            m_hasContent = false;
            m_breakPending = false;
        } else if (m_items > 0 && m_hasContent) {
            m_breakPending = true;
        }
    }

    void breakLine() {
        if (m_inParagraph)
            m_breakPending = m_hasContent;
        else
            endBlock();
    }

    /// Opens and closes b, i, u, sub and sup. Their tags are written with the next text.
    void openInline(const QString &name) {
        closeInline();
        m_inline.append(name);
    }
    void closeInline(const QString &name) {
        if (m_inline.isEmpty() || m_inline.last() != name)
            return;
        closeInline();
        m_inline.removeLast();
    }

    void openList(bool numbered) {
        endBlock();
        closeInline();
        m_lists.append({numbered ? QStringLiteral("ol") : QStringLiteral("ul"), false});
        if (isShownList() && canAdd()) {
            m_text += u'<' + m_lists.last().name + u'>';
            m_lists.last().isOpen = true;
        }
        m_hasContent = false;
        m_breakPending = false;
    }
    void closeList() {
        if (m_lists.isEmpty())
            return;
        closeItem();
        const List list = m_lists.takeLast();
        if (list.isOpen)
            m_text += QStringLiteral("</") + list.name + u'>';
        m_hasContent = false;
        m_breakPending = false;
    }
    void openItem() {
        endBlock();
        closeItem();
        if (m_lists.isEmpty() || !m_lists.last().isOpen || !canAdd())
            return;
        m_text += QStringLiteral("<li>");
        m_lists.last().inItem = true;
        ++m_items;
        m_hasContent = false;
        m_breakPending = false;
    }
    void closeItem() {
        if (m_lists.isEmpty() || !m_lists.last().inItem)
            return;
        endBlock();
        closeInline();
        m_text += QStringLiteral("</li>");
        m_lists.last().inItem = false;
        --m_items;
        m_hasContent = false;
        m_breakPending = false;
    }

    void openHeading() {
        endBlock();
        // Between the items of a list, a heading would hold the next one.
        const bool isInList =
            std::any_of(m_lists.begin(), m_lists.end(), [](const List &list) { return list.isOpen; });
        const bool isShown = !isInList && !m_inHeading && canAdd();
        m_headings.append(isShown);
        if (!isShown) {
            openInline(QStringLiteral("b"));
            return;
        }
        closeInline();
        m_text += QStringLiteral("<h3>");
        m_inHeading = true;
        m_hasContent = false;
    }
    void closeHeading() {
        if (m_headings.isEmpty())
            return;
        if (m_headings.takeLast()) {
            closeInline();
            m_text += QStringLiteral("</h3>");
            m_inHeading = false;
            m_hasContent = false;
            m_breakPending = false;
        } else {
            closeInline(QStringLiteral("b"));
            endBlock();
        }
    }

    QString result() {
        closeInline();
        m_inline.clear();
        while (!m_lists.isEmpty())
            closeList();
        while (!m_headings.isEmpty())
            closeHeading();
        endBlock();
        return std::move(m_text);
    }

private:
    struct List {
        QString name;
        bool isOpen = false;
        bool inItem = false;
    };
    static constexpr qsizetype longest = 200'000;
    /// Text without any end of a line takes the longer to lay out per character, the more there is.
    static constexpr qsizetype longestRun = 4000;
    static constexpr qsizetype deepestList = 6;
    static constexpr qsizetype deepestInline = 8;

    void piece(QStringView plain) {
        m_runSize += plain.size();
        const bool isBlank = plain.trimmed().isEmpty();
        if (isBlank && !m_hasContent)
            return;
        beginParagraph();
        m_text += plain.toString().toHtmlEscaped();
        m_hasContent = m_hasContent || !isBlank;
    }

    bool canAdd() const { return m_text.size() < longest; }

    bool isShownList() const {
        const auto open =
            std::count_if(m_lists.begin(), m_lists.end(), [](const List &list) { return list.isOpen; });
        // A list within a list stands in one of its items.
        const bool fits = open == 0 || std::any_of(m_lists.begin(), m_lists.end(),
                                                   [](const List &list) { return list.inItem; });
        return open < deepestList && fits && !m_inHeading;
    }

    /// Characters that change the direction of the text around them could hide or move other text.
    static QString visible(QString text) {
        text.removeIf([](QChar c) {
            const char16_t code = c.unicode();
            const bool isDirection = (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
            return isDirection || (c.category() == QChar::Other_Control && c != u'\n' && c != u'\t');
        });
        return text;
    }

    void beginParagraph() {
        // Text between the items of a list becomes an item.
        if (!m_lists.isEmpty() && m_lists.last().isOpen && !m_lists.last().inItem)
            openItem();
        if (std::exchange(m_breakPending, false))
            m_text += QStringLiteral("<br>");
        if (!m_inParagraph && m_items == 0 && !m_inHeading) {
            m_text += QStringLiteral("<p>");
            m_inParagraph = true;
        }
        if (!m_inlineOpen) {
            for (const QString &name :
                 std::as_const(m_inline).first(std::min(deepestInline, m_inline.size())))
                m_text += u'<' + name + u'>';
            m_inlineOpen = true;
        }
    }

    /// Closes the open formatting; it opens again with the next text.
    void closeInline() {
        if (!std::exchange(m_inlineOpen, false))
            return;
        for (qsizetype i = std::min(deepestInline, m_inline.size()) - 1; i >= 0; --i)
            m_text += QStringLiteral("</") + m_inline[i] + u'>';
    }

    QString m_text;
    qsizetype m_runSize = 0; ///< characters since the last end of a block
    QStringList m_inline;
    QList<List> m_lists;
    /// For each open heading whether it is shown as one.
    QList<bool> m_headings;
    int m_items = 0;
    bool m_inlineOpen = false;
    bool m_inParagraph = false;
    bool m_inHeading = false;
    bool m_hasContent = false;
    bool m_breakPending = false;
};

/// What an element is shown as; empty for those that only hold text.
QString inlineName(const QString &name) {
    static const QHash<QString, QString> names{
        {QStringLiteral("b"), QStringLiteral("b")},     {QStringLiteral("strong"), QStringLiteral("b")},
        {QStringLiteral("i"), QStringLiteral("i")},     {QStringLiteral("em"), QStringLiteral("i")},
        {QStringLiteral("cite"), QStringLiteral("i")},  {QStringLiteral("var"), QStringLiteral("i")},
        {QStringLiteral("u"), QStringLiteral("u")},     {QStringLiteral("ins"), QStringLiteral("u")},
        {QStringLiteral("sub"), QStringLiteral("sub")}, {QStringLiteral("sup"), QStringLiteral("sup")},
        {QStringLiteral("ex"), QStringLiteral("i")},    {QStringLiteral("gr"), QStringLiteral("i")},
        {QStringLiteral("co"), QStringLiteral("i")},    {QStringLiteral("k"), QStringLiteral("b")},
    };
    return names.value(name);
}

/// Writes the nodes of a document.
class NodeWriter {
public:
    explicit NodeWriter(RichText &text) : m_text(text) {}

    bool enter(const GumboNode &node) {
        if (const auto text = textOf(node)) {
            m_text.text(*text);
            return false;
        }
        if (node.type != GUMBO_NODE_ELEMENT)
            return false;
        const QString name = elementName(node);
        if (isHiddenElement(name))
            return false;
        if (name == QStringLiteral("br"))
            m_text.breakLine();
        else if (name == QStringLiteral("img"))
            m_text.image(attributeOf(node, "src").trimmed());
        else if (name == QStringLiteral("ol") || name == QStringLiteral("ul"))
            m_text.openList(name == QStringLiteral("ol"));
        else if (name == QStringLiteral("li"))
            m_text.openItem();
        else if (isHeadingElement(name))
            m_text.openHeading();
        else if (name == QStringLiteral("td") || name == QStringLiteral("th"))
            m_text.text(QStringLiteral(" "));
        else if (isBlockElement(name))
            m_text.endBlock();
        if (const QString shown = inlineName(name); !shown.isEmpty())
            m_text.openInline(shown);
        return true;
    }

    void leave(const GumboNode &node) {
        const QString name = elementName(node);
        if (const QString shown = inlineName(name); !shown.isEmpty())
            m_text.closeInline(shown);
        if (name == QStringLiteral("ol") || name == QStringLiteral("ul"))
            m_text.closeList();
        else if (name == QStringLiteral("li"))
            m_text.closeItem();
        else if (isHeadingElement(name))
            m_text.closeHeading();
        else if (isBlockElement(name))
            m_text.endBlock();
    }

private:
    RichText &m_text;
};

/// Writes plain text: paragraphs between empty lines, and lists of lines with numbers or bullets.
void writePlain(RichText &text, const QString &plain) {
    int items = 0;
    bool inBullets = false;
    const auto endList = [&] {
        if (items > 0 || inBullets)
            text.closeList();
        items = 0;
        inBullets = false;
    };
    for (const QStringView raw : QStringView(plain).tokenize(u'\n')) {
        const QStringView line = raw.trimmed();
        if (line.isEmpty()) {
            if (items == 0)
                endList();
            text.endBlock();
            continue;
        }
        const auto number = SenseNumberFinder::atStart(line);
        const bool isItem = number && number->value == items + 1;
        const bool isBullet = charAt(line, 1).isSpace() && QStringView(u"•*-–·").contains(line[0]);
        if (isItem || isBullet) {
            if (isItem ? items == 0 : !inBullets) {
                endList();
                text.openList(isItem);
            }
            items = isItem ? items + 1 : 0;
            inBullets = isBullet;
            text.openItem();
            text.text(line.sliced(isItem ? number->end : 1).trimmed().toString());
            continue;
        }
        // Examples stay with the item above them.
        if (inBullets || (items > 0 && line[0] != u'▸' && line[0] != u'•'))
            endList();
        if (items == 0)
            text.breakLine();
        else
            text.endBlock();
        text.text(line.toString());
    }
    endList();
    text.endBlock();
}

/// Writes an article by what is known of its lines.
void writeLines(RichText &text, const QList<Line> &lines) {
    bool inList = false;
    const auto setList = [&](bool wanted) {
        if (inList && !wanted)
            text.closeList();
        if (!inList && wanted)
            text.openList(true);
        inList = wanted;
    };
    for (const Line &line : lines) {
        const bool isDetail = line.role == LineRole::Example || line.role == LineRole::Translation;
        setList(line.role == LineRole::Item || (inList && isDetail));
        if (line.role == LineRole::Heading)
            text.openHeading();
        else if (line.role == LineRole::Item)
            text.openItem();
        if (line.role == LineRole::Example)
            text.openInline(QStringLiteral("i"));
        text.text(line.text);
        if (line.role == LineRole::Example)
            text.closeInline(QStringLiteral("i"));
        if (line.role == LineRole::Heading)
            text.closeHeading();
        text.endBlock();
    }
    setList(false);
}

void writePart(RichText &text, const Part &part) {
    QString html = part.text;
    switch (part.form) {
    case Form::Phonetic:
        if (!part.text.trimmed().isEmpty())
            writePlain(text, u'/' + part.text.trimmed() + u'/');
        return;
    case Form::Text:
        writePlain(text, part.text);
        return;
    case Form::PowerWord:
    case Form::MediaWiki:
    case Form::WordNet:
        writeLines(text, plainArticle(part).lines);
        return;
    case Form::Xdxf:
    case Form::Pango:
        // Their lines count, those of HTML do not. Apart from that, HTML has the elements for formatting.
        html.replace(QStringLiteral("<br/>"), QStringLiteral("\n"))
            .replace(QStringLiteral("/>"), QStringLiteral(">"));
        html.replace(u'\n', QStringLiteral("<br>"));
        break;
    case Form::Html:
        break;
    }
    const HtmlTree tree(html);
    if (!tree.root()) {
        writePlain(text, plainArticle(part).rawText);
        return;
    }
    NodeWriter writer(text);
    visitHtml(tree.root(), writer);
    text.endBlock();
}

/// Collects links to sounds.
class SoundFinder {
public:
    explicit SoundFinder(QStringList &paths) : m_paths(paths) {}

    bool enter(const GumboNode &node) {
        if (node.type != GUMBO_NODE_ELEMENT)
            return node.type == GUMBO_NODE_TEMPLATE;
        constexpr qsizetype most = 100;
        const QString scheme = QStringLiteral("sound://");
        const QString address = attributeOf(node, "href").trimmed();
        if (address.startsWith(scheme, Qt::CaseInsensitive) && m_paths.size() < most &&
            isSafePath(address.sliced(scheme.size())))
            m_paths.append(address.sliced(scheme.size()));
        return true;
    }
    void leave(const GumboNode &) {}

private:
    QStringList &m_paths;
};

} // namespace

QString formattedArticle(const std::vector<Article> &articles) {
    RichText text;
    for (const Article &article : articles) {
        for (const Part &part : article)
            writePart(text, withRealForm(part));
    }
    return text.result();
}

QStringList soundLinks(const std::vector<Article> &articles) {
    QStringList paths;
    for (const Article &article : articles) {
        for (const Part &stored : article) {
            if (!stored.text.contains(QStringLiteral("sound://"), Qt::CaseInsensitive))
                continue;
            const Part part = withRealForm(stored);
            if (part.form != Form::Html)
                continue;
            const HtmlTree tree(part.text);
            SoundFinder finder(paths);
            if (tree.root())
                visitHtml(tree.root(), finder);
        }
    }
    return paths;
}

} // namespace lexiquill::article
