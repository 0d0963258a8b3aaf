#include "dictionaries/article/html_tree.h"

#include "dictionaries/article/text_scan.h"

#include <QByteArrayView>

#include <algorithm>
#include <array>
#include <vector>

namespace lexiquill::article {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

template <size_t Size> bool isOneOf(const std::array<QByteArrayView, Size> &names, QByteArrayView name) {
    return std::any_of(names.begin(), names.end(), [name](QByteArrayView known) {
        return known.compare(name, Qt::CaseInsensitive) == 0;
    });
}

/// Follows the tags of a document without making a tree, to see whether its tree would be harmless. The
/// parser needs time and memory for each tag in proportion to the elements that are open there.
class TagSurvey {
public:
    explicit TagSurvey(QByteArrayView text) : m_text(text) {}

    bool isHarmless() {
        while (m_at < m_text.size()) {
            const qsizetype open = m_text.indexOf('<', m_at);
            if (open < 0)
                return true;
            m_at = open + 1;
            if (!readTag() || static_cast<qsizetype>(m_open.size()) > mostOpen || m_cost > mostCost())
                return false;
        }
        return true;
    }

private:
    static constexpr qsizetype mostOpen = 256;

    /// What documents of dictionaries need, with a wide margin.
    qsizetype mostCost() const { return 16 * m_text.size() + 4096; }

    bool startsWith(QByteArrayView mark) const { return m_text.sliced(m_at).startsWith(mark); }

    bool skipPast(QByteArrayView mark) {
        const qsizetype found = m_text.indexOf(mark, m_at);
        if (found < 0)
            return false;
        m_at = found + mark.size();
        return true;
    }

    /// Reads what follows a "<". False if the document ends there.
    bool readTag() {
        if (startsWith("!--"))
            return skipPast("-->");
        if (startsWith("!") || startsWith("?"))
            return skipPast(">");
        const bool closing = startsWith("/");
        const qsizetype start = m_at + (closing ? 1 : 0);
        if (start >= m_text.size() || !isLetter(m_text[start]))
            return true;
        qsizetype end = start;
        while (end < m_text.size() && m_text[end] != '>' && m_text[end] != '/' && m_text[end] > ' ')
            ++end;
        const QByteArrayView name = m_text.sliced(start, end - start);
        m_at = end;
        if (!skipAttributes())
            return false;
        m_cost += static_cast<qsizetype>(m_open.size()) + 1;
        if (closing)
            close(name);
        else
            return open(name);
        return true;
    }

    /// Moves behind the ">" of a tag.
    bool skipAttributes() {
        constexpr int mostMarks = 1024;
        char before = 0;
        int marks = 0;
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text[m_at];
            if (c == '>') {
                ++m_at;
                return true;
            }
            // The parser compares each attribute with all others.
            if ((c <= ' ' || c == '/' || c == '=') && ++marks > mostMarks)
                return false;
            if ((c == '"' || c == '\'') && before == '=') {
                m_at = m_text.indexOf(c, m_at + 1);
                if (m_at < 0)
                    return false;
            }
            if (c > ' ')
                before = c;
        }
        return false;
    }

    bool open(QByteArrayView name) {
        static constexpr std::array<QByteArrayView, 16> empty{
            "br",   "hr",    "img",    "input", "link",  "meta",  "col",    "area",
            "base", "embed", "source", "wbr",   "param", "track", "keygen", "bgsound"};
        // An element of these kinds ends where the next one begins.
        static constexpr std::array<QByteArrayView, 11> implied{
            "p", "li", "dt", "dd", "tr", "td", "th", "option", "tbody", "thead", "tfoot"};
        static constexpr std::array<QByteArrayView, 5> texts{"script", "style", "textarea", "title", "xmp"};
        // The content of these is text, or the rest of the document.
        static constexpr std::array<QByteArrayView, 5> rare{"plaintext", "noframes", "iframe", "noembed",
                                                            "noscript"};
        if (isOneOf(rare, name))
            return false;
        if (isOneOf(texts, name))
            return skipText(name);
        if (isOneOf(empty, name))
            return true;
        if (isOneOf(implied, name) && !m_open.empty() &&
            m_open.back().compare(name, Qt::CaseInsensitive) == 0)
            return true;
        m_open.push_back(name);
        return true;
    }

    /// Moves to the end of an element whose content is not markup.
    bool skipText(QByteArrayView name) {
        while (skipPast("</")) {
            if (m_text.sliced(m_at)
                    .first(std::min(name.size(), m_text.size() - m_at))
                    .compare(name, Qt::CaseInsensitive) == 0)
                return skipPast(">");
        }
        return false;
    }

    /// A tag that ends an element within another one leaves formatting open, so only the elements inside end.
    void close(QByteArrayView name) {
        static constexpr std::array<QByteArrayView, 9> walls{"td",     "th",     "caption", "table",   "html",
                                                             "object", "applet", "marquee", "template"};
        static constexpr std::array<QByteArrayView, 14> formatting{
            "a", "b", "big", "code", "em", "font", "i", "nobr", "s", "small", "strike", "strong", "tt", "u"};
        const bool isFormatting = isOneOf(formatting, name);
        auto found = m_open.end();
        for (auto at = m_open.end(); at != m_open.begin();) {
            --at;
            if (at->compare(name, Qt::CaseInsensitive) == 0) {
                found = at;
                break;
            }
            if (isFormatting && isOneOf(walls, *at))
                break;
        }
        if (found == m_open.end())
            return;
        if (isFormatting) {
            m_open.erase(found);
            return;
        }
        const auto kept = std::remove_if(found + 1, m_open.end(),
                                         [](QByteArrayView open) { return !isOneOf(formatting, open); });
        m_open.erase(kept, m_open.end());
        m_open.erase(found);
    }

    QByteArrayView m_text;
    std::vector<QByteArrayView> m_open;
    qsizetype m_at = 0;
    qsizetype m_cost = 0;
};

} // namespace

void HtmlTreeDeleter::operator()(GumboOutput *tree) const {
    gumbo_destroy_output(&kGumboDefaultOptions, tree);
}

HtmlTree::HtmlTree(const QString &text) : m_text(text.toUtf8()) {
    if (!TagSurvey(m_text).isHarmless())
        return;
    GumboOptions options = kGumboDefaultOptions;
    options.max_errors = 0;
    m_tree.reset(gumbo_parse_with_options(&options, m_text.constData(), static_cast<size_t>(m_text.size())));
}

std::optional<QString> textOf(const GumboNode &node) {
    const bool isText =
        node.type == GUMBO_NODE_TEXT || node.type == GUMBO_NODE_WHITESPACE || node.type == GUMBO_NODE_CDATA;
    return isText ? std::optional(QString::fromUtf8(node.v.text.text)) : std::nullopt;
}

QString elementName(const GumboNode &node) {
    const GumboElement &element = node.v.element;
    if (element.tag != GUMBO_TAG_UNKNOWN)
        return QString::fromLatin1(gumbo_normalized_tagname(element.tag));
    GumboStringPiece name = element.original_tag;
    gumbo_tag_from_original_text(&name);
    constexpr size_t longest = 32;
    return QString::fromUtf8(name.data, static_cast<qsizetype>(std::min(name.length, longest))).toLower();
}

QString attributeOf(const GumboNode &node, const char *name) {
    const GumboAttribute *attribute = gumbo_get_attribute(&node.v.element.attributes, name);
    return attribute ? QString::fromUtf8(attribute->value) : QString();
}

} // namespace lexiquill::article
