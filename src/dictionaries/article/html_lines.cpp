#include "dictionaries/article/html_lines.h"

#include "dictionaries/article/html_tree.h"
#include "dictionaries/article/markup.h"
#include "dictionaries/article/phonetics.h"
#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>
#include <vector>

namespace lexiquill::article {

namespace {

constexpr char16_t lineFeed = u'\n';

/// What the class of an element says about its text.
enum class Hint { None, Example, Translation, Definition, Phonetic, Label, Phrase, Title };

Hint hintOf(const QString &classes) {
    static const QHash<QString, Hint> hints{
        {QStringLiteral("idm"), Hint::Phrase},
        {QStringLiteral("idiom"), Hint::Phrase},
        {QStringLiteral("title"), Hint::Title},
        {QStringLiteral("section-title"), Hint::Title},
        {QStringLiteral("exmp"), Hint::Example},
        {QStringLiteral("ex"), Hint::Example},
        {QStringLiteral("exp"), Hint::Example},
        {QStringLiteral("exa"), Hint::Example},
        {QStringLiteral("example"), Hint::Example},
        {QStringLiteral("examples"), Hint::Example},
        {QStringLiteral("eg"), Hint::Example},
        {QStringLiteral("x"), Hint::Example},
        {QStringLiteral("sentence"), Hint::Example},
        {QStringLiteral("def"), Hint::Definition},
        {QStringLiteral("definition"), Hint::Definition},
        {QStringLiteral("phon"), Hint::Phonetic},
        {QStringLiteral("phonetic"), Hint::Phonetic},
        {QStringLiteral("pron"), Hint::Phonetic},
        {QStringLiteral("ipa"), Hint::Phonetic},
        {QStringLiteral("pinyin"), Hint::Phonetic},
        {QStringLiteral("pinyins"), Hint::Phonetic},
        {QStringLiteral("pos"), Hint::Label},
        {QStringLiteral("part-of-speech"), Hint::Label},
        {QStringLiteral("ps"), Hint::Label},
        {QStringLiteral("trans"), Hint::Translation},
        {QStringLiteral("translation"), Hint::Translation},
        {QStringLiteral("ex-tran"), Hint::Translation},
    };
    for (const QStringView name : QStringView(classes).tokenize(u' ')) {
        if (const auto hint = hints.constFind(name.toString().toLower()); hint != hints.constEnd())
            return *hint;
    }
    return Hint::None;
}

/// Makes lines of the nodes of a document.
class LineMaker {
public:
    bool enter(const GumboNode &node) {
        if (const auto text = textOf(node)) {
            append(*text);
            return false;
        }
        if (node.type != GUMBO_NODE_ELEMENT)
            return false;
        const QString name = elementName(node);
        if (isHiddenElement(name))
            return false;
        const Hint hint = hintOf(attributeOf(node, "class"));
        m_hints.push_back(hint);
        m_isBoundary = true;
        if (name == QStringLiteral("br")) {
            breakLine();
        } else if (name == QStringLiteral("td") || name == QStringLiteral("th")) {
            appendBlank();
        } else if (isBlockElement(name) || hint != Hint::None) {
            if (isBlockElement(name) || hint != Hint::Phonetic)
                breakLine(isBlockElement(name));
            if (isHeadingElement(name))
                m_isHeading = true;
            enterList(name);
        }
        if (hint == Hint::Example && m_exampleDepth++ == 0)
            m_hasExample = false;
        if (hint == Hint::Phonetic)
            m_phoneticStart = m_line.size();
        return true;
    }

    void leave(const GumboNode &node) {
        const QString name = elementName(node);
        const Hint hint = m_hints.back();
        m_hints.pop_back();
        m_isBoundary = true;
        if (hint == Hint::Phonetic)
            endPhonetic();
        if (isBlockElement(name) || (hint != Hint::None && hint != Hint::Phonetic))
            endLine(hint);
        if (hint == Hint::Example)
            --m_exampleDepth;
        if (isBlockElement(name))
            breakRawLine();
        if (isHeadingElement(name))
            m_isHeading = false;
        if ((name == QStringLiteral("ol") || name == QStringLiteral("ul")) && !m_lists.empty())
            m_lists.pop_back();
    }

    PlainArticle result() {
        endLine(Hint::None);
        m_result.rawText = m_result.rawText.trimmed();
        return std::move(m_result);
    }

private:
    void append(const QString &text) {
        // Elements often separate languages where the text has no blank.
        const QChar first = charAt(text, 0);
        const QChar last = charAt(m_line, m_line.size() - 1);
        const bool changes = first.isLetterOrNumber() && (last.isLetterOrNumber() || endsSentence(last)) &&
                             isHan(first) != isHan(last);
        // The number of a sense before a remark on it.
        constexpr qsizetype mostDigits = 2;
        const bool isNumber =
            m_line.size() <= mostDigits &&
            std::all_of(m_line.cbegin(), m_line.cend(), [](QChar c) { return c.isDigit(); }) &&
            (first.isLetter() || !closingBracket(first).isNull());
        if (std::exchange(m_isBoundary, false) && (changes || (isNumber && !m_line.isEmpty())))
            m_line += u' ';
        for (const QChar c : text) {
            if (c == u' ' || c == lineFeed || c == u'\t' || c == u'\r' || c == u'\f') {
                appendBlank();
                continue;
            }
            beginRawLine();
            m_line += c;
            m_result.rawText += c;
        }
    }

    /// A run of blanks and line breaks is shown as one blank.
    void appendBlank() {
        for (QString *text : {&m_line, &m_result.rawText}) {
            if (!text->isEmpty() && text->back() != u' ' && text->back() != lineFeed)
                *text += u' ';
        }
    }

    void breakLine(bool alsoRaw = true) {
        endLine(Hint::None);
        if (alsoRaw)
            breakRawLine();
    }

    void breakRawLine() {
        if (!m_result.rawText.isEmpty() && m_result.rawText.back() != lineFeed)
            m_result.rawText += lineFeed;
    }

    void enterList(const QString &name) {
        if (name == QStringLiteral("ol") || name == QStringLiteral("ul")) {
            m_lists.push_back(name == QStringLiteral("ol") ? 1 : 0);
        } else if (name == QStringLiteral("li")) {
            int *number = m_lists.empty() ? nullptr : &m_lists.back();
            m_beginsItem = number && *number > 0;
            m_beginsBullet = !m_beginsItem;
            m_rawMark =
                m_beginsItem ? QString::number((*number)++) + QStringLiteral(". ") : QStringLiteral("• ");
        }
    }

    /// Puts the mark of a list's item in front of its text.
    void beginRawLine() {
        if (!m_rawMark.isEmpty())
            m_result.rawText += std::exchange(m_rawMark, QString());
    }

    void endPhonetic() {
        const qsizetype start = std::exchange(m_phoneticStart, -1);
        if (start < 0 || start >= m_line.size())
            return;
        const QString phonetic = m_line.sliced(start).trimmed();
        constexpr qsizetype longest = 200;
        if (phonetic.isEmpty() || phonetic.size() > longest)
            return;
        if (m_result.phonetic.isEmpty())
            m_result.phonetic = phonetic;
        m_line.truncate(withoutLastSourceMark(QStringView(m_line).first(start)).size());
    }

    void endLine(Hint hint) {
        m_phoneticStart = -1;
        const QString text = std::exchange(m_line, QString()).trimmed();
        if (text.isEmpty())
            return;
        LineRole role = LineRole::Plain;
        if (m_exampleDepth > 0) {
            const bool isTranslation = m_hasExample && isHan(text[0]);
            role = isTranslation ? LineRole::Translation : LineRole::Example;
            m_hasExample = true;
        } else if (m_isHeading || hint == Hint::Label || hint == Hint::Title) {
            role = LineRole::Heading;
        } else if (std::exchange(m_beginsItem, false)) {
            role = LineRole::Item;
        } else if (m_beginsBullet && hint == Hint::None) {
            role = LineRole::Bullet;
        } else if (hint == Hint::Definition && !containsHan(text)) {
            role = LineRole::Definition;
        } else if (hint == Hint::Phrase) {
            role = LineRole::Phrase;
        } else if (hint == Hint::Translation) {
            role = LineRole::Translation;
        }
        m_beginsBullet = false;
        m_result.lines.append({text, role});
    }

    PlainArticle m_result;
    QString m_line;
    QString m_rawMark;
    std::vector<Hint> m_hints;
    /// For each open list the number of its next item; 0 for a list without numbers.
    std::vector<int> m_lists;
    qsizetype m_phoneticStart = -1;
    int m_exampleDepth = 0;
    bool m_hasExample = false;
    bool m_isHeading = false;
    bool m_beginsItem = false;
    bool m_beginsBullet = false;
    bool m_isBoundary = false;
};

} // namespace

bool isHiddenElement(const QString &name) {
    static const QSet<QString> names{
        QStringLiteral("script"),   QStringLiteral("style"),  QStringLiteral("head"),
        QStringLiteral("noscript"), QStringLiteral("object"), QStringLiteral("template"),
        QStringLiteral("audio"),    QStringLiteral("video"),  QStringLiteral("rref"),
        QStringLiteral("svg"),      QStringLiteral("math"),
    };
    return names.contains(name);
}

bool isBlockElement(const QString &name) {
    static const QSet<QString> names{
        QStringLiteral("p"),          QStringLiteral("div"),    QStringLiteral("li"),
        QStringLiteral("tr"),         QStringLiteral("h1"),     QStringLiteral("h2"),
        QStringLiteral("h3"),         QStringLiteral("h4"),     QStringLiteral("h5"),
        QStringLiteral("h6"),         QStringLiteral("dt"),     QStringLiteral("dd"),
        QStringLiteral("hr"),         QStringLiteral("ul"),     QStringLiteral("ol"),
        QStringLiteral("dl"),         QStringLiteral("table"),  QStringLiteral("section"),
        QStringLiteral("article"),    QStringLiteral("pre"),    QStringLiteral("body"),
        QStringLiteral("blockquote"), QStringLiteral("header"), QStringLiteral("footer"),
        QStringLiteral("caption"),    QStringLiteral("center"), QStringLiteral("def"),
        QStringLiteral("ex"),         QStringLiteral("k"),      QStringLiteral("sr"),
        QStringLiteral("etm"),
    };
    return names.contains(name);
}

bool isHeadingElement(const QString &name) {
    return name.size() == 2 && name[0] == u'h' && name[1] >= u'1' && name[1] <= u'6';
}

PlainArticle readHtml(const QString &text) {
    const HtmlTree tree(text);
    if (!tree.root())
        return readMarkup(text, MarkupKind::Html);
    LineMaker lines;
    visitHtml(tree.root(), lines);
    return lines.result();
}

} // namespace lexiquill::article
