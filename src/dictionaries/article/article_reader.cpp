#include "dictionaries/article/article_reader.h"

#include "dictionaries/article/definition_parser.h"
#include "dictionaries/article/part_of_speech.h"
#include "dictionaries/article/phonetics.h"
#include "dictionaries/article/plain_article.h"
#include "dictionaries/article/sections.h"
#include "dictionaries/article/senses.h"
#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <algorithm>

namespace lexiquill::article {

namespace {

bool saysAnything(QStringView text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.isLetterOrNumber() || c.isSurrogate(); });
}

/// Length of the headword at the start of a line, with dots between its syllables and the number of a
/// homograph; -1 if it is not there.
qsizetype matchHeadword(QStringView line, const QString &headword) {
    if (headword.isEmpty())
        return -1;
    qsizetype at = 0;
    for (const QChar expected : headword) {
        while (at > 0 && charAt(line, at) != expected && at < line.size() &&
               QStringView(u"·‧•ˈˌ|").contains(line[at]))
            ++at;
        if (at >= line.size() || line[at].toCaseFolded() != expected.toCaseFolded())
            return -1;
        ++at;
    }
    constexpr qsizetype mostDigits = 2;
    // "take 1 [teɪk]"
    const qsizetype number = skipBlanks(line, at);
    const QChar behind = charAt(line, skipBlanks(line, number + 1));
    const bool isApart =
        charAt(line, number).isDigit() && (behind.isNull() || behind == u'[' || behind == u'/');
    qsizetype end = isApart ? number : at;
    const qsizetype start = end;
    while (end < line.size() && (line[end].isDigit() || QStringView(u"¹²³⁴⁵⁶⁷⁸⁹").contains(line[end])))
        ++end;
    return end - start <= mostDigits ? end : at;
}

/// Whether a line is the pinyin of a Chinese headword.
bool isPinyin(QStringView line) {
    constexpr qsizetype longest = 40;
    const bool hasTone =
        std::any_of(line.begin(), line.end(), [](QChar c) { return c.isLetter() && c.unicode() > 0x7f; });
    return hasTone && line.size() <= longest && std::all_of(line.begin(), line.end(), [](QChar c) {
               return (c.isLetter() && c.script() == QChar::Script_Latin) || c == u' ' || c == u'\'' ||
                      c.isMark();
           });
}

/// Length of the pinyin at the start of a line, as in "píng guǒ apple"; 0 without one.
qsizetype pinyinLength(QStringView line) {
    qsizetype end = 0;
    for (qsizetype at = 0; at < line.size();) {
        qsizetype next = at;
        while (next < line.size() && !line[next].isSpace())
            ++next;
        if (!isPinyin(line.sliced(at, next - at)))
            break;
        end = next;
        at = skipBlanks(line, next);
    }
    return end;
}

/// The length of the headword and the blanks after it at the start of a line; 0 if the line does not start
/// with the headword as the title of the article.
qsizetype headwordLength(const QString &line, const QString &headword) {
    // A Chinese headword in two scripts: "蘋果 苹果 [ping2 guo3]".
    if (containsHan(headword)) {
        constexpr qsizetype longest = 80;
        const qsizetype bracket = line.left(longest).indexOf(u'[');
        const QStringView title = QStringView(line).first(std::max<qsizetype>(bracket, 0)).trimmed();
        const bool isTitle = title.contains(headword) && std::all_of(title.begin(), title.end(), [](QChar c) {
                                 return isHan(c) || c.isSpace() || c == u'|';
                             });
        if (isTitle)
            return bracket;
        // "开(開) kāi"
        qsizetype pinyin = line.startsWith(headword) ? headword.size() : 0;
        if (const QChar close = closingBracket(charAt(line, pinyin)); pinyin > 0 && !close.isNull()) {
            const qsizetype end = line.indexOf(close, pinyin);
            const bool isTraditional = end == 2 * headword.size() + 1 && isHan(line[pinyin + 1]);
            pinyin = isTraditional ? end + 1 : pinyin;
        }
        pinyin = pinyin > 0 ? skipBlanks(line, pinyin) : 0;
        if (pinyin > 0 && pinyinLength(QStringView(line).sliced(pinyin)) > 0)
            return pinyin;
    }
    const qsizetype length = matchHeadword(line, headword);
    if (length < 0)
        return 0;
    // "multi-" for "multi"
    const bool isOnlyMark = line.size() == length + 1 && QStringView(u"-.").contains(line.back());
    if (isOnlyMark)
        return line.size();
    const QStringView rest = QStringView(line).sliced(length);
    const QStringView next = rest.sliced(skipBlanks(rest, 0));
    // "colour (US color)"
    const bool hasRemark =
        next.startsWith(u'(') && next.indexOf(u')') == next.size() - 1 && !containsHan(next);
    if (next.isEmpty() || hasRemark)
        return line.size();
    if (isAsciiLetter(rest[0]) || isHan(rest[0]))
        return 0;
    const bool opensArticle = next[0] == u'*' || next[0] == u'★' || next[0] == u'☆' ||
                              leadingPhonetic(next, headword).length > 0 ||
                              (rest[0].isSpace() && labelAtStart(next, false));
    return opensArticle ? line.size() - next.size() : 0;
}

/// Writes the part of speech of a Chinese word at the start of a line, as in "(动) to beat" or
/// "①〈名〉water", in the brackets of a label: elsewhere these brackets hold subjects.
void markLabel(QString &line, const QString &headword) {
    const QStringView names = u"名动形副代介连叹量数";
    const auto label = [](QChar name) {
        const bool isSubject = name == u'量' || name == u'数';
        return u'【' + QString(name) + (isSubject ? QStringLiteral("词】") : QStringLiteral("】"));
    };
    if (line.size() == 1 && names.contains(line[0]) && line != headword) {
        line = label(line[0]);
        return;
    }
    constexpr qsizetype latest = 4;
    for (qsizetype at = 0; at < std::min(latest, line.size()); ++at) {
        if (!QStringView(u"(（〈[<").contains(line[at]))
            continue;
        if (charAt(line, at + 2) == closingBracket(line[at]) && names.contains(line[at + 1]))
            line.replace(at, 3, label(line[at + 1]));
        return;
    }
}

/// The lines of an article, without the headword and the phonetic at the start.
class ArticleLines {
public:
    explicit ArticleLines(const QString &headword) : m_headword(headword) {}

    void add(const QList<Line> &lines) {
        bool isOpening = true;
        for (const Line &added : containsHan(m_headword) ? withPartsApart(lines) : lines) {
            Line line{added.text.trimmed(), added.role};
            line.text.replace(u'［', u'[').replace(u'］', u']');
            if (!isOpening && isHomograph(line.text)) {
                isOpening = true;
                // Ends a section of the word above.
                m_lines.append({QString(), LineRole::Heading});
            }
            if (containsHan(m_headword))
                markLabel(line.text, m_headword);
            if (isOpening && !line.text.isEmpty())
                isOpening = trimOpening(line.text);
            if (!line.text.isEmpty() || line.role == LineRole::Heading)
                m_lines.append(line);
        }
    }

    /// Begins a line at each numbered part of speech, as in "Ⅰ(动)…Ⅱ(量)…".
    static QList<Line> withPartsApart(const QList<Line> &lines) {
        QList<Line> result;
        for (const Line &line : lines) {
            qsizetype start = 0;
            for (qsizetype at = 1; at + 1 < line.text.size(); ++at) {
                if (line.text[at] < u'Ⅰ' || line.text[at] > u'Ⅹ' ||
                    closingBracket(line.text[at + 1]).isNull())
                    continue;
                result.append({line.text.sliced(start, at - start), line.role});
                start = at;
            }
            result.append({line.text.sliced(start), line.role});
        }
        return result;
    }

    void takePhonetic(QStringView text) {
        if (m_phonetic.isEmpty())
            m_phonetic = cleanPhonetic(text);
    }

    const QList<Line> &lines() const { return m_lines; }
    const QString &phonetic() const { return m_phonetic; }

private:
    /// The title of another word with the same spelling, such as "lie2", or the word with its phonetic.
    bool isHomograph(const QString &line) const {
        if (line.size() <= m_headword.size() || m_headword.isEmpty())
            return false;
        if (containsHan(m_headword)) {
            const qsizetype length = headwordLength(line, m_headword);
            return length > 0 && leadingPhonetic(QStringView(line).sliced(length), m_headword).length > 0;
        }
        const qsizetype length = matchHeadword(line, m_headword);
        if (length <= 0)
            return false;
        const bool isNumbered = !line[length - 1].isLetter() && length > m_headword.size();
        const QStringView rest = QStringView(line).sliced(length);
        const bool isTitle = line.startsWith(m_headword) && !rest.isEmpty() &&
                             leadingPhonetic(rest, m_headword).length == rest.size();
        return isTitle || (isNumbered && (length == line.size() || headwordLength(line, m_headword) > 0)) ||
               (line.startsWith(m_headword) && leadingPhonetic(rest, m_headword, true).length > 0);
    }

    /// Removes the headword and the phonetic from the start of a line. True if nothing is left, so that the
    /// article itself has not begun.
    bool trimOpening(QString &line) {
        line = withoutTags(line).toString();
        line.remove(0, headwordLength(line, m_headword));
        if (containsHan(m_headword)) {
            // The traditional characters: "[愛]".
            const qsizetype close = line.indexOf(u']');
            const bool isTraditional =
                line.startsWith(u'[') && close == m_headword.size() + 1 &&
                std::all_of(line.cbegin() + 1, line.cbegin() + close, [](QChar c) { return isHan(c); });
            if (isTraditional)
                line = line.sliced(close + 1).trimmed();
            if (const qsizetype length = pinyinLength(line); length > 0) {
                takePhonetic(QStringView(line).first(length));
                line = line.sliced(length).trimmed();
            }
            markLabel(line, m_headword);
        }
        const LeadingPhonetic leading = leadingPhonetic(line, m_headword);
        if (leading.length > 0) {
            takePhonetic(leading.phonetic);
            line = withoutTags(QStringView(line).sliced(leading.length)).toString();
        }
        return line.isEmpty();
    }

    QString m_headword;
    QList<Line> m_lines;
    QString m_phonetic;
};

PartOfSpeechGroup groupOf(const SenseGroup &group) {
    PartOfSpeechGroup result = PartOfSpeechGroup::named(group.part.pos, {});
    if (!group.part.chineseName.isEmpty())
        result.posChinese = group.part.chineseName;
    result.senses.reserve(group.senses.size());
    for (const Sense &sense : group.senses) {
        SenseItem item{
            .number = result.senses.size() + 1, .chineseMeaning = sense.meaning, .examples = sense.examples};
        if (!sense.contexts.isEmpty())
            item.context = sense.contexts.join(u'，');
        result.senses += item;
    }
    return result;
}

/// Collects the articles on one word.
class EntryBuilder {
public:
    explicit EntryBuilder(const QString &headword) : m_headword(headword) {}

    void add(const Article &article) {
        ArticleLines lines(m_headword);
        // A separate phonetic part is more reliable than a phonetic at the start of the text.
        for (const Part &part : article) {
            if (part.form == Form::Phonetic)
                lines.takePhonetic(readable(part.text));
        }
        for (const Part &part : article) {
            const PlainArticle plain = plainArticle(part);
            m_rawTexts += plain.rawText;
            if (part.form == Form::Phonetic)
                continue;
            m_definitions += plain.rawText;
            lines.takePhonetic(plain.phonetic);
            lines.add(plain.lines);
        }
        ArticleSenses senses = readSenses(lines.lines(), m_headword);
        if (m_phonetic.isEmpty())
            m_phonetic = lines.phonetic().isEmpty() ? senses.phonetic : lines.phonetic();
        m_loose += senses.loose;
        m_terms += senses.terms;
        m_phrases += senses.phrases;
        m_examples += senses.examples;
        m_isUnclear = m_isUnclear || senses.isProse || senses.hasTrailers;
        for (const SenseGroup &group : std::as_const(senses.groups))
            addGroup(m_groups, group);
    }

    std::optional<DictionaryEntry> entry() const {
        const QString definition = m_definitions.join(u'\n');
        if (m_headword.trimmed().isEmpty() || !saysAnything(definition))
            return std::nullopt;
        DictionaryEntry entry{.headword = m_headword,
                              .posGroups = groups(),
                              .rawText = m_rawTexts.join(u'\n'),
                              .examples = m_examples};
        if (!m_phonetic.isEmpty())
            entry.phonetic = m_phonetic;
        // A few words without structure, such as a label alone, are the meaning.
        constexpr qsizetype longestMeaning = 60;
        const QString meaning = readable(definition).trimmed();
        if (entry.posGroups.isEmpty() && m_examples.isEmpty() && !m_isUnclear &&
            meaning.size() <= longestMeaning && !meaning.contains(u'\n'))
            entry.posGroups = groupsOfText(meaning);
        return entry;
    }

private:
    /// The name of a group without a part of speech.
    static QString unnamed() { return QStringLiteral("释义"); }

    /// For a few words without structure.
    static QList<PartOfSpeechGroup> groupsOfText(const QString &text) {
        QList<PartOfSpeechGroup> groups = extractPOSGroups(text);
        groups.removeIf([](const PartOfSpeechGroup &group) { return group.senses.isEmpty(); });
        if (groups.isEmpty())
            groups += PartOfSpeechGroup::named(unnamed(), {{.number = 1, .chineseMeaning = text}});
        return groups;
    }

    static void addGroup(QList<SenseGroup> &groups, const SenseGroup &group) {
        if (group.senses.isEmpty())
            return;
        if (!groups.isEmpty() && groups.last().part == group.part)
            groups.last().senses += group.senses;
        else
            groups.append(group);
    }

    QList<PartOfSpeechGroup> groups() const {
        QList<SenseGroup> groups = m_groups;
        if (groups.isEmpty())
            addGroup(groups, {PartOfSpeech{.pos = unnamed()}, m_loose});
        else
            groups.first().senses += m_loose;
        addGroup(groups, {PartOfSpeech{.pos = unnamed()}, m_terms});
        addGroup(groups, {PartOfSpeech{.pos = QStringLiteral("phrase")}, m_phrases});
        QList<PartOfSpeechGroup> result;
        for (const SenseGroup &group : std::as_const(groups))
            result += groupOf(group);
        return result;
    }

    QString m_headword;
    QString m_phonetic;
    QList<SenseGroup> m_groups;
    QList<Sense> m_loose;
    QList<Sense> m_terms;
    QList<Sense> m_phrases;
    QList<ExampleSentence> m_examples;
    QStringList m_rawTexts;
    QStringList m_definitions; ///< the same without the separate phonetics
    bool m_isUnclear = false;
};

} // namespace

std::optional<DictionaryEntry> readArticles(const QString &headword, const std::vector<Article> &articles) {
    EntryBuilder builder(headword);
    for (const Article &article : articles)
        builder.add(article);
    return builder.entry();
}

} // namespace lexiquill::article
