#include "dictionaries/article/webster_text.h"

#include "dictionaries/article/part_of_speech.h"
#include "dictionaries/article/sense_numbers.h"
#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace lexiquill::article {

namespace {

qsizetype indentOf(QStringView line) {
    return skipBlanks(line, 0);
}

/// Where the text between the next two backslashes lies that repeats the words before it; an empty view if
/// there is none.
QStringView syllables(QStringView text) {
    constexpr qsizetype longest = 120;
    text = text.first(std::min(longest, text.size()));
    const qsizetype open = text.indexOf(u" \\") + 1;
    const qsizetype close = open > 0 ? text.indexOf(u'\\', open + 1) : -1;
    if (close < 0)
        return {};
    const auto letters = [](QStringView part) {
        QString only;
        for (const QChar c : part) {
            if (c.isLetterOrNumber())
                only += c.toCaseFolded();
        }
        return only;
    };
    const QStringView inside = text.sliced(open + 1, close - open - 1);
    const QString expected = letters(text.first(open));
    return !expected.isEmpty() && expected == letters(inside) ? inside : QStringView();
}

bool isTitle(QStringView line) {
    return !line.isEmpty() && !line[0].isSpace() && !syllables(line).isEmpty();
}

/// The text behind the group in brackets at its start, or the whole text.
QStringView withoutGroup(QStringView text, QStringView brackets) {
    text = text.trimmed();
    if (text.isEmpty() || !brackets.contains(text[0]))
        return text;
    int depth = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        depth += QStringView(u"([").contains(text[i]) ? 1 : QStringView(u")]").contains(text[i]) ? -1 : 0;
        if (depth == 0)
            return text.sliced(i + 1).trimmed();
    }
    return {};
}

/// The number of brackets that a line leaves open.
int openBrackets(QStringView line) {
    int open = 0;
    for (const QChar c : line)
        open += QStringView(u"([").contains(c) ? 1 : QStringView(u")]").contains(c) ? -1 : 0;
    return open;
}

/// The label of the part of speech in a title; empty without a known one.
QString labelIn(QStringView title) {
    for (QStringView part = syllables(title); !part.isEmpty(); part = syllables(title))
        title = title.sliced(part.data() + part.size() + 1 - title.data());
    // The pronunciation, perhaps with another headword behind it.
    QStringView rest = title.trimmed();
    while (!rest.isEmpty() && QStringView(u",(; ").contains(rest[0]))
        rest = rest[0] == u'(' ? withoutGroup(rest, u"(") : rest.sliced(1);
    if (rest.startsWith(u"prop. "))
        rest = rest.sliced(6);
    if (rest.startsWith(u"p. a.") || rest.startsWith(u"a. &"))
        return QStringLiteral("adj.");
    if (rest.startsWith(u"vb. n.") || rest.startsWith(u"n. pl."))
        return QStringLiteral("n.");
    for (const QStringView form : {u"imp.", u"p. p.", u"p. pr.", u"pres.", u"p. pr"}) {
        if (rest.startsWith(form))
            return QStringLiteral("v.");
    }
    const auto label = labelAtStart(rest, false);
    return label ? rest.first(label->length).trimmed().toString() : QString();
}

/// A remark in brackets, without braces and the brackets.
QString remark(QStringView inside) {
    QString text = inside.trimmed().toString();
    text.remove(u'{').remove(u'}').remove(u'(').remove(u')');
    return text;
}

/// Whether a line only has the source of the text above it, such as "[1913 Webster]".
bool isSource(QStringView line) {
    line = line.trimmed();
    const qsizetype close = line.startsWith(u'[') ? line.indexOf(u']') : -1;
    const QStringView inside = line.first(std::max<qsizetype>(close, 0));
    const auto has = [inside](bool (*test)(QChar)) {
        return std::any_of(inside.begin(), inside.end(), test);
    };
    return close > 0 && (inside.contains(u"Webster") || inside.contains(u"WordNet") ||
                         (!inside.contains(u'.') && !has([](QChar c) { return c.isLower(); })));
}

/// The characters that are written as "['e]", "[aum]" or "[ae]".
QString withAccents(const QString &text) {
    static constexpr std::pair<char16_t, char16_t> marks[] = {{u'\'', 0x301}, {u'`', 0x300}, {u'^', 0x302},
                                                              {u'"', 0x308},  {u'~', 0x303}, {u'=', 0x304},
                                                              {u',', 0x327}};
    QString result;
    qsizetype start = 0;
    for (qsizetype at = text.indexOf(u'['); at >= 0; at = text.indexOf(u'[', at + 1)) {
        constexpr qsizetype longest = 5;
        const QStringView front = QStringView(text).sliced(at, std::min(longest, text.size() - at));
        const qsizetype close = front.indexOf(u']');
        const QStringView inside = front.sliced(1, std::max<qsizetype>(close - 1, 0));
        QString meant;
        if (inside.size() == 3 && inside.endsWith(u"um"))
            meant = inside.first(1).toString() + QChar(0x308);
        else if (inside == u"ae" || inside == u"AE")
            meant = inside == u"ae" ? QStringLiteral("æ") : QStringLiteral("Æ");
        else if (inside == u"oe")
            meant = QStringLiteral("œ");
        for (const auto &[mark, accent] : marks) {
            if (inside.size() == 2 && inside[0] == mark && inside[1].isLetter())
                meant = inside.sliced(1).toString() + QChar(accent);
        }
        if (meant.isEmpty())
            continue;
        result += QStringView(text).sliced(start, at - start);
        result += meant.normalized(QString::NormalizationForm_C);
        start = at + close + 1;
    }
    return result += QStringView(text).sliced(start);
}

/// The text before the derivatives ("-- {Nice"ly}, adv.") and references at its end.
QString withoutDerivatives(const QString &text) {
    qsizetype end = text.indexOf(QStringLiteral(" [Narrower term"), 0, Qt::CaseInsensitive);
    const qsizetype other = text.indexOf(QStringLiteral(" [Wider term"), 0, Qt::CaseInsensitive);
    end = end < 0 ? other : end;
    for (qsizetype at = text.indexOf(QStringLiteral(" -- {")); at >= 0 && end < 0;
         at = text.indexOf(QStringLiteral(" -- {"), at + 1)) {
        const qsizetype close = text.indexOf(u'}', at);
        if (close < 0)
            break;
        qsizetype label = close + 1;
        while (QStringView(u", ").contains(charAt(text, label)) && label < text.size())
            ++label;
        if (labelAtStart(QStringView(text).sliced(label), false))
            end = at;
    }
    return end < 0 ? text : text.first(end);
}

/// A definition in its parts.
struct Definition {
    QString text;
    QStringList remarks;
    QStringList quotations;
};

/// Moves the author at the end of a text ("--Shak.") away.
QString withoutAuthor(const QString &text) {
    constexpr qsizetype longest = 48;
    const qsizetype dash = text.lastIndexOf(QStringLiteral("--"));
    const QChar next = charAt(text, skipBlanks(text, dash + 2));
    const bool isAuthor = dash >= 0 && text.size() - dash <= longest && (next.isUpper() || next.isDigit()) &&
                          (dash == 0 || text[dash - 1].isSpace());
    return isAuthor ? text.first(dash).trimmed() : text;
}

/// Moves the quotations at the end of a text to `quotations`.
void takeQuotations(QString &text, QStringList &quotations) {
    const qsizetype first = text.indexOf(QStringLiteral(" \""));
    if (first < 0 || !text.sliced(first).contains(QStringLiteral("\" --")))
        return;
    // A word between quotation marks may come before the quotations.
    const qsizetype behind = text.indexOf(QStringLiteral("\" --"), first);
    qsizetype start = text.lastIndexOf(QStringLiteral(" \""), behind - 2);
    if (start < 0)
        return;
    const QString all = text.sliced(start + 1).trimmed();
    text = text.first(start).trimmed();
    for (qsizetype at = 0; at < all.size();) {
        const qsizetype author = all.indexOf(QStringLiteral("\" --"), at);
        qsizetype next = author < 0 ? -1 : all.indexOf(QStringLiteral(" \""), author + 1);
        next = next < 0 ? all.size() : next;
        quotations.append(all.sliced(at, next - at).trimmed());
        at = next + 1;
    }
}

Definition definitionIn(QString text) {
    Definition result;
    text = withAccents(withoutDerivatives(text));
    // The origin of one sense.
    constexpr qsizetype shortestOrigin = 10;
    if (const QStringView rest = withoutGroup(text, u"["); rest.size() + shortestOrigin < text.size())
        text = rest.toString();
    text.remove(u'{').remove(u'}');
    text = text.simplified();
    takeQuotations(text, result.quotations);
    text = withoutAuthor(text);
    constexpr qsizetype longest = 28;
    constexpr int mostRemarks = 4;
    for (int i = 0; i < mostRemarks && text.endsWith(u']'); ++i) {
        const qsizetype open = text.lastIndexOf(u'[');
        if (open < 1 || !text[open - 1].isSpace())
            break;
        if (text.size() - open <= longest && !isSource(QStringView(text).sliced(open)))
            result.remarks.prepend(remark(QStringView(text).sliced(open + 1).chopped(1)));
        text = withoutAuthor(text.first(open).trimmed());
    }
    result.text = text;
    return result;
}

/// Reads the lines of an article.
class Reader {
public:
    PlainArticle read(const QString &text) {
        m_result.rawText = text;
        for (const QStringView line : QStringView(text).tokenize(u'\n'))
            readLine(line);
        endBlock();
        return std::move(m_result);
    }

private:
    enum class Block { None, Title, Definition, Phrase, Quotation, Note };

    void readLine(QStringView line) {
        QStringView words = line.trimmed();
        const qsizetype source = words.endsWith(u']') ? words.lastIndexOf(u'[') : -1;
        if (source > 0 && isSource(words.sliced(source))) {
            line = line.first(words.data() - line.data() + source);
            words = line.trimmed();
        }
        if (words.isEmpty() || isSource(words)) {
            endBlock();
            m_isApart = m_isApart || words.isEmpty();
            // Derivatives may follow the source.
            m_text = words.sliced(words.indexOf(u']') + 1).trimmed().toString();
            m_block = m_text.isEmpty() ? Block::None : Block::Note;
            return;
        }
        const qsizetype indent = indentOf(line);
        const bool isApart = std::exchange(m_isApart, false);
        if (isTitle(line)) {
            endBlock();
            m_block = Block::Title;
            m_open = 0;
        } else if (m_block == Block::Title) {
            // Etymologies and inflections go on until their brackets are closed.
            if (!continuesTitle(words))
                endBlock();
        }
        if (m_block != Block::Title && beginsBlock(words, indent, isApart))
            m_indent = indent;
        m_open += openBrackets(words);
        if (!m_text.isEmpty())
            m_text += u' ';
        m_text += words;
    }

    bool continuesTitle(QStringView words) const {
        constexpr qsizetype longest = 3000;
        if (m_text.size() > longest)
            return false;
        const bool isOpen = m_open > 0 || m_text.count(u'\\') % 2 == 1;
        const bool isJoined = QStringView(u",;&").contains(m_text.back()) || m_text.endsWith(u" or");
        const bool isAddition = words[0] == u'[' || words[0] == u'\\' ||
                                (words[0] == u'(' && (m_text.endsWith(u'}') || labelIn(m_text).isEmpty() ||
                                                      withoutGroup(words, u"(").isEmpty()));
        return isOpen || isJoined || isAddition;
    }

    /// Ends the block above and begins the next one if the line does that.
    bool beginsBlock(QStringView words, qsizetype indent, bool isApart) {
        constexpr qsizetype deepest = 4;
        const auto number = indent <= deepest ? SenseNumberFinder::atStart(words) : std::nullopt;
        const bool isInNote = m_block == Block::Note || (m_block == Block::None && m_last == Block::Note);
        Block next = Block::None;
        for (const QStringView mark : {u"Note:", u"Syn:", u"Usage:"}) {
            if (words.startsWith(mark))
                next = Block::Note;
        }
        if (next == Block::Note || (isInNote && indent > deepest)) {
            next = Block::Note;
        } else if (number && words[0].isDigit()) {
            next = Block::Definition;
            m_remarks.clear();
        } else if (SenseNumberFinder::letterLength(words) > 0 && words[0] == u'(') {
            next = m_last == Block::Phrase || m_block == Block::Phrase ? Block::Phrase : Block::Definition;
        } else if (words[0] == u'{' && indent <= deepest && (isApart || m_block == Block::None)) {
            next = Block::Phrase;
            m_phrase.clear();
        } else if (m_block == Block::None) {
            next = isApart && indent > m_indent + 2 ? Block::Quotation : Block::Definition;
        } else {
            return false;
        }
        if (next == m_block && next == Block::Note)
            return false;
        endBlock();
        m_block = next;
        return next != Block::Quotation && next != Block::Note;
    }

    void endBlock() {
        const QString text = std::exchange(m_text, QString());
        const Block block = std::exchange(m_block, Block::None);
        m_open = 0;
        if (text.isEmpty())
            return;
        m_last = block == Block::Quotation ? m_last : block;
        switch (block) {
        case Block::Title:
            m_indent = 3;
            m_remarks.clear();
            m_phrase.clear();
            m_result.lines.append({labelIn(text), LineRole::Heading});
            addFieldOfTitle(text);
            break;
        case Block::Definition:
            addDefinition(text);
            break;
        case Block::Phrase:
            addPhrase(text);
            break;
        case Block::Quotation:
            addQuotation(text);
            break;
        case Block::Note:
        case Block::None:
            m_result.lines.append({text, LineRole::Aside});
        }
    }

    /// The field at the end of a title, as in "n. (Bot.)", applies to all definitions.
    void addFieldOfTitle(const QString &title) {
        constexpr qsizetype longest = 24;
        const qsizetype open = title.lastIndexOf(u'(');
        m_fieldOfTitle.clear();
        const bool isField = title.endsWith(u')') && title.size() - open <= longest &&
                             charAt(title, title.size() - 2) == u'.' && charAt(title, open + 1).isUpper();
        if (isField)
            m_fieldOfTitle = remark(QStringView(title).sliced(open + 1).chopped(1));
    }

    static void addQuotations(PlainArticle &result, const QStringList &quotations) {
        for (const QString &quotation : quotations)
            result.lines.append({quotation, LineRole::Example});
    }

    void addQuotation(QString text) {
        text.remove(u'{').remove(u'}');
        m_result.lines.append({withAccents(text.simplified()), LineRole::Example});
    }

    /// Text without a number or letter in front of it.
    static QString withoutNumber(const QString &text) {
        QStringView rest = text;
        if (const auto number = SenseNumberFinder::atStart(rest); number && rest[0].isDigit())
            rest = rest.sliced(number->end).trimmed();
        else if (rest.startsWith(u'('))
            rest = rest.sliced(SenseNumberFinder::letterLength(rest));
        return rest.toString();
    }

    void addDefinition(const QString &block) {
        const QStringView line = block;
        const bool isLettered = line.startsWith(u'(') && SenseNumberFinder::letterLength(line) > 0;
        QString text = withoutNumber(block);
        // "2. (a) To go": the first of several letters.
        const bool beginsLetters = !isLettered && SenseNumberFinder::letterLength(text) > 0;
        if (beginsLetters)
            text = withoutNumber(text);
        Definition definition = definitionIn(text);
        QStringList remarks = isLettered ? m_remarks : QStringList();
        if (!isLettered)
            m_remarks.clear();
        // The field of the letters below a number, or what they have in common.
        constexpr qsizetype longest = 56;
        const bool isField = !isLettered && definition.text.startsWith(u'(') &&
                             definition.text.indexOf(u')') == definition.text.size() - 1;
        const bool isCommon = !isLettered && definition.text.endsWith(u':');
        if ((isField || isCommon) && definition.text.size() <= longest) {
            m_remarks = {remark(definition.text.chopped(isCommon ? 1 : 0))};
            addQuotations(m_result, definition.quotations);
            return;
        }
        if (!m_fieldOfTitle.isEmpty())
            remarks.prepend(m_fieldOfTitle);
        if (m_isInPhrases)
            m_result.lines.append({QString(), LineRole::Heading});
        m_isInPhrases = false;
        remarks += definition.remarks;
        QString labelled;
        for (const QString &label : std::as_const(remarks))
            labelled += u'(' + label + QStringLiteral(") ");
        if (!definition.text.isEmpty())
            m_result.lines.append({labelled + definition.text, LineRole::Definition});
        addQuotations(m_result, definition.quotations);
    }

    /// "{Apple blight} (Zool.), an aphid"
    void addPhrase(const QString &block) {
        QStringView rest = block;
        if (m_phrase.isEmpty()) {
            qsizetype end = 0;
            for (qsizetype at = 0; charAt(rest, at) == u'{';) {
                const qsizetype close = rest.indexOf(u'}', at);
                if (close < 0)
                    break;
                end = close + 1;
                at = end;
                while (QStringView(u", ").contains(charAt(rest, at)) && at < rest.size())
                    ++at;
                for (const QStringView joint : {u"or ", u"and "}) {
                    if (rest.sliced(at).startsWith(joint))
                        at += joint.size();
                }
            }
            m_phrase = remark(rest.first(end));
            rest = rest.sliced(end);
            while (!rest.isEmpty() && QStringView(u"([,.;: ").contains(rest[0]))
                rest = QStringView(u"([").contains(rest[0]) && SenseNumberFinder::letterLength(rest) == 0
                           ? withoutGroup(rest, u"([")
                       : rest[0] == u'(' ? rest.sliced(SenseNumberFinder::letterLength(rest))
                                         : rest.sliced(1);
            if (m_phrase.isEmpty())
                return;
            m_result.lines.append({m_phrase, LineRole::Phrase});
            m_isInPhrases = true;
        } else {
            rest = rest.sliced(SenseNumberFinder::letterLength(rest));
        }
        const Definition definition = definitionIn(rest.toString());
        const bool isReference = definition.text.startsWith(QStringLiteral("See "));
        if (!definition.text.isEmpty() && !isReference)
            m_result.lines.append({definition.text, LineRole::Definition});
        addQuotations(m_result, definition.quotations);
    }

    PlainArticle m_result;
    QString m_text; ///< of the block so far
    QStringList m_remarks;
    QString m_fieldOfTitle;
    QString m_phrase;
    Block m_block = Block::None;
    Block m_last = Block::None;
    qsizetype m_indent = 3;
    int m_open = 0;
    bool m_isApart = false; ///< there is an empty line above
    bool m_isInPhrases = false;
};

} // namespace

bool isWebsterText(const QString &text) {
    if (!text.contains(QStringLiteral(" \\")) || containsHan(text))
        return false;
    for (const QStringView line : QStringView(text).tokenize(u'\n')) {
        if (!line.trimmed().isEmpty())
            return isTitle(line);
    }
    return false;
}

PlainArticle readWebster(const QString &text) {
    return Reader().read(text);
}

} // namespace lexiquill::article
