#include "dictionaries/article/senses.h"

#include "dictionaries/article/gloss.h"
#include "dictionaries/article/phonetics.h"
#include "dictionaries/article/phrases.h"
#include "dictionaries/article/sections.h"
#include "dictionaries/article/sense_numbers.h"
#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <algorithm>
#include <iterator>

namespace lexiquill::article {

namespace {

/// A piece of an article between two boundaries: line breaks, numbers, parts of speech.
struct Chunk {
    enum class Kind { Text, Term, Numbered, Example };
    Kind kind;
    QString text;
    /// A definition in English that the markup identifies.
    QString definition = {};
    /// The markup or a mark identifies an example.
    bool isMarked = false;
    /// An English gloss of a Chinese word.
    bool isEnglish = false;
};

/// The chunks under one label, not yet divided into senses.
struct Part {
    QList<LabelledPart> labels;
    QList<Chunk> chunks;
};

/// True for a line that begins with an English sentence, not with a short phrase that is explained.
bool isEnglishSentence(QStringView line) {
    if (!line.isEmpty() && QStringView(u"\"“'‘").contains(line.front()))
        line = line.sliced(1);
    if (!isAsciiLetter(charAt(line, 0)))
        return false;
    const qsizetype han = std::find_if(line.begin(), line.end(), isHan) - line.begin();
    QStringView english = line.first(han).trimmed();
    int words = 0;
    bool inWord = false;
    for (const QChar c : english) {
        const bool letter = isAsciiLetter(c);
        words += letter && !inWord ? 1 : 0;
        inWord = letter || (inWord && (c == u'\'' || c == u'’' || c == u'-'));
    }
    while (!english.isEmpty() && QStringView(u"\"”'’([（“").contains(english.back()))
        english.chop(1);
    const bool begins = english.front().isUpper();
    const bool ends = endsSentence(english.back());
    constexpr int fewestWords = 3;
    return words > fewestWords || (words == fewestWords && (begins || ends)) ||
           (words + 1 == fewestWords && begins && ends);
}

/// True for the Chinese half of an example whose English half is on the line before.
bool isTranslation(const QString &line) {
    QStringView text = line;
    while (!text.isEmpty() && QStringView(u"”’》」）").contains(text.back()))
        text.chop(1);
    return !text.isEmpty() && QStringView(u"。！？…").contains(text.back()) &&
           isHan(charAt(line, skipBlanks(line, 0)));
}

/// Length of a remark such as "[C]", "(pl.)" or "~ (to do sth)" in front of a number, and the blanks after it
/// at the start of a line; 0 without one.
qsizetype grammarRemarkLength(QStringView line) {
    constexpr qsizetype longest = 16;
    constexpr qsizetype longestPattern = 80;
    const QChar open = charAt(line, 0);
    if (open == u'~' || open == u'～') {
        const qsizetype one = line.first(std::min(longestPattern, line.size())).indexOf(u" 1");
        return one > 0 && !charAt(line, one + 2).isDigit() ? one + 1 : 0;
    }
    if (open != u'[' && open != u'(')
        return 0;
    const QStringView front = line.first(std::min(longest, line.size()));
    const qsizetype close = front.indexOf(closingBracket(open));
    const bool isRemark = close > 1 && isAsciiLetter(front[1]) && !containsHan(front.first(close));
    return isRemark ? skipBlanks(line, close + 1) : 0;
}

/// Whether the Chinese is too short to be the translation of the whole English sentence, so that it explains
/// the word and the sentence is its definition.
bool isExplained(QStringView english, QStringView chinese) {
    constexpr int fewestWords = 5;
    const int words = latinWordCount(english);
    const auto count = std::count_if(chinese.begin(), chinese.end(), [](QChar c) { return isHan(c); });
    chinese = chinese.trimmed();
    return words >= fewestWords && count > 0 && count * 2 <= words && !endsSentence(chinese.back());
}

/// Whether a text is prose and not a list of meanings.
bool isProse(QStringView text, qsizetype shortest, int fewestSentences) {
    constexpr qsizetype longestMeaning = 400;
    // A Chinese character says as much as several letters.
    const auto han = std::count_if(text.begin(), text.end(), [](QChar c) { return isHan(c); });
    if (text.size() + han < shortest)
        return false;
    int sentences = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isEnd =
            text[i] == u'。' || text[i] == u'！' || text[i] == u'？' ||
            (QStringView(u".!?").contains(text[i]) &&
             (i + 1 == text.size() || (text[i + 1].isSpace() && charAt(text, i + 2).isUpper())));
        sentences += isEnd ? 1 : 0;
    }
    return sentences >= fewestSentences || text.size() > longestMeaning;
}

/// Drops a sense number or a letter at the end of a text, which belongs to the label behind it.
QString withoutLastNumber(QString text) {
    constexpr qsizetype longest = 6;
    QStringView rest = QStringView(text).trimmed();
    if (!rest.endsWith(u'.') && !rest.endsWith(u')') && !rest.endsWith(u'、'))
        return text;
    const qsizetype reach = std::max<qsizetype>(0, rest.size() - longest);
    qsizetype start = rest.size();
    while (start > reach && !rest[start - 1].isSpace())
        --start;
    if (start > 0 && !rest[start - 1].isSpace())
        return text;
    const QStringView last = rest.sliced(start);
    const bool isLetter = last.size() == 2 && last[0] >= u'A' && last[0] <= u'H';
    const auto number = SenseNumberFinder::atStart(last);
    if (isLetter || (number && number->end == last.size()))
        text.truncate(rest.data() - text.constData() + start);
    return text;
}

/// A line that only has the number or letter of a part of the article, such as "II" or "B."
bool isOutline(QStringView line) {
    constexpr qsizetype longest = 4;
    const bool isPointed = line.endsWith(u'.');
    if (isPointed)
        line = line.chopped(1);
    const auto isRoman = [](QChar c) {
        return QStringView(u"IVX").contains(c);
    };
    return (!line.isEmpty() && line.size() <= longest && std::all_of(line.begin(), line.end(), isRoman)) ||
           (line.size() == 1 && line[0] >= u'A' && line[0] <= u'H');
}

/// Divides the lines of one article into parts and chunks.
class LineReader {
public:
    LineReader(const QList<Line> &lines, const QString &headword) : m_lines(lines), m_headword(headword) {
        m_hasChinese =
            std::any_of(lines.begin(), lines.end(), [](const Line &line) { return containsHan(line.text); });
        m_lettersCount = std::any_of(lines.begin(), lines.end(), [](const Line &line) {
            return line.text.startsWith(QStringLiteral("b.")) || line.text.startsWith(QStringLiteral("b)")) ||
                   line.text.contains(QStringLiteral("(b) "));
        });
        m_bareCount = std::any_of(lines.begin(), lines.end(), [](const Line &line) {
            return line.text.startsWith(u'2') && (line.text.size() == 1 || line.text[1].isSpace());
        });
        const auto isTitle = [](const Line &line) {
            const auto title = sectionAtStart(line.text);
            return title && title->section == Section::Examples;
        };
        m_examplesBySense = std::count_if(lines.begin(), lines.end(), isTitle) > 1;
    }

    void read() {
        m_parts.append(Part());
        for (qsizetype i = 0; i < m_lines.size(); ++i) {
            const bool isLast = i + 1 == m_lines.size();
            m_nextIsChinese = !isLast && isTranslationOfLast(m_lines[i + 1].text);
            readLine(m_lines[i], isLast);
        }
    }

    const QList<Part> &parts() const { return m_parts; }
    const PhraseCollector &phrases() const { return m_phrases; }
    const ExampleCollector &examples() const { return m_examples; }
    const QString &phonetic() const { return m_phonetic; }
    bool hasTrailers() const { return m_hasTrailers; }

private:
    QList<Chunk> &chunks() { return m_parts.last().chunks; }
    bool hasSense() { return !chunks().isEmpty() || m_parts.size() > 1; }

    void readLine(const Line &line, bool isLast) {
        QString text = withoutTags(line.text).toString();
        if (text.startsWith(QStringLiteral("=>")) && containsHan(text))
            text = text.sliced(2).trimmed();
        if (line.role == LineRole::Heading && text.isEmpty()) {
            m_section = Section::Senses;
            return;
        }
        if (m_lines.size() > 1 && isOutline(text))
            return;
        if (line.role == LineRole::Aside || isTagLine(text)) {
            m_hasTrailers = true;
            return;
        }
        if (line.role == LineRole::Plain || line.role == LineRole::Heading || line.role == LineRole::Bullet) {
            const auto title = sectionAtStart(text);
            if (title && (title->certain || line.role == LineRole::Heading || (hasSense() && !isLast))) {
                beginSection(*title, text.sliced(title->length));
                return;
            }
        }
        switch (line.role) {
        case LineRole::Heading:
            m_section = Section::Senses;
            takeLabel(text);
            return;
        case LineRole::Phrase:
            m_section = Section::Phrases;
            m_sectionIsOpen = true;
            if (containsHan(text))
                m_phrases.add(text);
            else
                m_phrases.addPhrase(text);
            return;
        case LineRole::Example:
        case LineRole::Translation:
        case LineRole::Definition:
        case LineRole::Item:
        case LineRole::Bullet:
        case LineRole::Plain:
        case LineRole::Aside:
            readInSection(text, line.role);
        }
    }

    /// Whether a line may translate the one above.
    static bool isTranslationOfLast(const QString &line) {
        return isHan(charAt(line, 0)) && exampleMarkLength(line) == 0 && !sectionAtStart(line) &&
               !labelAtStart(line, true);
    }

    void beginSection(const SectionStart &title, const QString &rest) {
        m_section = title.section;
        m_sectionIsOpen = rest.isEmpty();
        m_hasTrailers = m_hasTrailers || m_section != Section::Senses;
        m_numbers.restart();
        if (m_section == Section::Examples && m_examplesBySense)
            m_section = Section::Senses;
        if (m_section == Section::Web) {
            begin({{LabelledPart{{QStringLiteral("释义")}, QStringLiteral("网络")}}, 0});
            m_section = Section::Senses;
        }
        // Without a Chinese meaning, the English definitions are all there is.
        if (m_section == Section::Definitions)
            m_section = m_hasChinese && hasSense() ? Section::Other : Section::Senses;
        if (!rest.isEmpty())
            readInSection(rest, m_examplesBySense && title.section == Section::Examples ? LineRole::Example
                                                                                        : LineRole::Plain);
    }

    /// Whether a line below a title belongs to the senses again.
    bool endsSection(const QString &text) {
        if (m_section == Section::Other && m_sectionIsOpen)
            return false;
        // A title with its text on one line between numbered senses.
        const bool isPlain = m_section == Section::Other || latinWordCount(text) == 0;
        if (!m_sectionIsOpen && isPlain && !SenseNumberFinder(m_numbers).find(text, m_bareCount).isEmpty())
            return true;
        const auto label = labelAtStart(text, true);
        return label && (m_section == Section::Other || label->length == text.size() ||
                         containsHan(text.sliced(label->length)));
    }

    void readInSection(const QString &text, LineRole role) {
        if (m_section != Section::Senses && role != LineRole::Example && endsSection(text))
            m_section = Section::Senses;
        if (m_section == Section::Phrases && isDerivative(text))
            beginDerivatives();
        switch (m_section) {
        case Section::Phrases:
            if (role == LineRole::Definition && !containsHan(text))
                m_phrases.addMeaning(text);
            else
                m_phrases.add(role == LineRole::Example ? QString(u'▸' + text) : text);
            return;
        case Section::Examples:
            m_examples.add(text);
            return;
        case Section::Other:
            if (text.startsWith(QStringLiteral("【例】")) || text.startsWith(QStringLiteral("[例]")))
                m_examples.add(text);
            return;
        case Section::Senses:
        case Section::Web:
        case Section::Definitions:
            break;
        }
        switch (role) {
        case LineRole::Example:
            addExample(text);
            return;
        case LineRole::Translation:
            if (!takeTranslation(text, true))
                readPlain(text);
            return;
        case LineRole::Definition:
            addDefinition(text);
            return;
        case LineRole::Item:
            if (!takeLabel(text)) {
                chunks().append({Chunk::Kind::Numbered, {}});
                readItem(text);
            }
            return;
        case LineRole::Bullet:
            if (!takeBullet(text))
                readPlain(text);
            return;
        default:
            readPlain(text);
        }
    }

    /// A phrase with its translation in a list below a sense.
    bool takeBullet(const QString &text) {
        constexpr int fewestWords = 2;
        const SentencePair pair = sentencePair(text);
        if (chunks().isEmpty() || !isAsciiLetter(text[0]) || latinWordCount(pair.english) < fewestWords ||
            pair.chinese.isEmpty() || labelAtStart(text, true))
            return false;
        addExample(text);
        return true;
    }

    void beginDerivatives() {
        m_section = Section::Other;
        m_sectionIsOpen = false;
        m_hasTrailers = true;
    }

    void readPlain(const QString &text) {
        if (isDerivative(text)) {
            beginDerivatives();
            return;
        }
        // The number of a sense on a line of its own.
        constexpr qsizetype mostDigits = 2;
        if (text.size() <= mostDigits &&
            std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); })) {
            chunks().append({Chunk::Kind::Numbered, {}});
            return;
        }
        if (takeSlashed(text) || takeLabel(text) || takeCompound(text))
            return;
        if (isReference(text)) {
            m_hasTrailers = true;
            return;
        }
        if (const qsizetype mark = exampleMarkLength(text); mark > 0) {
            // The same marks stand before the items of a list of meanings.
            const QString rest = text.sliced(mark);
            const bool isMeaning = isHan(charAt(rest, 0)) && latinWordCount(rest) == 0 &&
                                   (chunks().isEmpty() || chunks().last().kind == Chunk::Kind::Text) &&
                                   !endsSentence(rest.back()) && !text.startsWith(u'▸');
            if (isMeaning)
                readText(rest);
            else if (!rest.isEmpty())
                addExample(rest);
            return;
        }
        if (completesLast(text))
            return;
        if (takeDefinition(text))
            return;
        if (m_hasChinese && hasSense() && takeSentence(text))
            return;
        if (isFieldTerm(text)) {
            chunks().append({Chunk::Kind::Term, text});
            return;
        }
        readText(text);
    }

    /// "> abandoned adj", "~ly adv.": a word that is made from the headword.
    static bool isDerivative(QStringView line) {
        if (line.isEmpty())
            return false;
        const qsizetype word = skipBlanks(line, 1);
        if (QStringView(u">➤➢⇨").contains(line[0]))
            return isAsciiLetter(charAt(line, word));
        const bool isEnding = QStringView(u"~～-").contains(line[0]) && word == 1;
        if (!isAsciiLetter(charAt(line, word)) || (!isEnding && line[0] != u'▷'))
            return false;
        const qsizetype blank = line.indexOf(u' ', word);
        return blank > 0 && labelAtStart(line.sliced(blank + 1), true);
    }

    /// A phrase with the headword or the tilde below senses without numbers; below numbered senses it is an
    /// example.
    bool takeCompound(const QString &line) {
        constexpr int fewestWords = 2;
        constexpr int mostWords = 6;
        const bool isTilde = line.startsWith(u'~') || line.startsWith(u'～');
        if (!m_hasChinese || !hasSense() || latinWordCount(line) == 0)
            return false;
        const SentencePair pair = sentencePair(line);
        // A sentence with its translation, the Chinese first.
        const bool isSentence = !containsHan(m_headword) && isHan(line[0]) && !pair.chinese.isEmpty() &&
                                endsSentence(pair.chinese.back()) &&
                                latinWordCount(pair.english) > fewestWords;
        if (isSentence) {
            addExample(line);
            return true;
        }
        if (pair.english.isEmpty() || pair.chinese.isEmpty() || (!isTilde && !mentions(line, m_headword)))
            return false;
        const bool isNumbered = !chunks().isEmpty() && chunks().first().kind == Chunk::Kind::Numbered;
        if (containsHan(m_headword)) {
            const bool isChineseFirst = isTilde || isHan(line[0]);
            QStringView chinese = line;
            chinese =
                chinese.first(std::find_if(chinese.begin(), chinese.end(), isAsciiLetter) - chinese.begin());
            if (!isChineseFirst || chinese.trimmed() == m_headword)
                return false;
            if (isNumbered || endsSentence(chinese.trimmed().back())) {
                addExample(line);
                return true;
            }
            if (!chunks().isEmpty() && chunks().last().text.endsWith(u':'))
                chunks().last().text.chop(1);
            m_phrases.addPair(chinese, QStringView(line).sliced(chinese.size()));
            return true;
        }
        const int words = latinWordCount(pair.english) + (isTilde ? 1 : 0);
        constexpr int mostWordsOfPattern = 4;
        const bool hasObject =
            pair.english.contains(u" sb") || pair.english.contains(u" sth") || pair.english.contains(u" do");
        const bool isPattern = pair.english.contains(u'(') ||
                               (hasObject && (words > mostWordsOfPattern || isOnlyPattern(pair.english)));
        const QChar first = charAt(line, isTilde ? skipBlanks(line, 1) : 0);
        if ((!isAsciiLetter(first) && first != u'-') || (!isTilde && first.isUpper()) ||
            (isTilde && isPattern) || words < fewestWords || words > mostWords ||
            isTranslation(pair.chinese.toString()) || endsSentence(pair.english.back()) ||
            labelAtStart(line, true))
            return false;
        if (isNumbered)
            addExample(line);
        else
            m_phrases.addPair(pair.english, pair.chinese);
        return true;
    }

    /// An English definition on the line below the Chinese meaning. Unlike an example it is no sentence and
    /// does not have the headword.
    bool takeDefinition(const QString &line) {
        constexpr int fewestWords = 3;
        const bool hasArticle =
            line.startsWith(QStringLiteral("a ")) || line.startsWith(QStringLiteral("an ")) ||
            line.startsWith(QStringLiteral("the ")) || line.startsWith(QStringLiteral("to "));
        if (chunks().isEmpty() || m_nextIsChinese || !isAsciiLetter(line[0]) || containsHan(line) ||
            latinWordCount(line) < (hasArticle ? 2 : fewestWords) ||
            (line[0].isUpper() && endsSentence(line.back())) || mentions(line, m_headword) ||
            labelAtStart(line, true))
            return false;
        Chunk &last = chunks().last();
        if (last.kind == Chunk::Kind::Example || last.kind == Chunk::Kind::Term || !containsHan(last.text) ||
            !last.definition.isEmpty())
            return false;
        last.definition = line;
        return true;
    }

    /// "See also colour": refers to another word.
    bool isReference(const QString &whole) {
        QStringView rest = whole;
        if (const auto number = SenseNumberFinder::atStart(rest))
            rest = rest.sliced(number->end).trimmed();
        const qsizetype before = rest.size();
        while (!rest.isEmpty() && (rest[0].isSpace() || QStringView(u"→➔➜⇨☞").contains(rest[0])))
            rest = rest.sliced(1);
        const QString line = rest.toString();
        if (rest.size() < before && !line.isEmpty() && !containsHan(line))
            return true;
        if (line.startsWith(QStringLiteral("@@@LINK=")) || (line.startsWith(u'=') && !containsHan(line)))
            return true;
        if (!hasSense())
            return false;
        constexpr int mostWords = 4;
        const bool isChinese =
            line.startsWith(QStringLiteral("参见")) || line.startsWith(QStringLiteral("另见"));
        const bool isEnglish =
            line.startsWith(QStringLiteral("See ")) || line.startsWith(QStringLiteral("see "));
        return isChinese || (isEnglish && !containsHan(line) && latinWordCount(line) <= mostWords);
    }

    /// A line that completes the one before it: a translation, or a meaning below its definition.
    bool completesLast(const QString &line) {
        if (chunks().isEmpty())
            return false;
        Chunk &last = chunks().last();
        const bool isEmptyItem = last.kind == Chunk::Kind::Numbered && last.text.isEmpty();
        if (isEmptyItem) {
            last.text = line;
            return true;
        }
        const qsizetype start = chineseStart(line);
        const bool startsChinese = start < line.size() && latinWordCount(QStringView(line).first(start)) == 0;
        if (!startsChinese || containsHan(last.text) || isFieldTerm(line) ||
            !SenseNumberFinder(m_numbers).find(line, false).isEmpty())
            return false;
        if (last.kind == Chunk::Kind::Example)
            return takeTranslation(line, false);
        constexpr int fewestWords = 3;
        if (last.kind != Chunk::Kind::Numbered && latinWordCount(last.text) < fewestWords)
            return false;
        last.text += u' ' + line;
        return true;
    }

    bool takeTranslation(const QString &line, bool isCertain) {
        if (chunks().isEmpty() || chunks().last().kind != Chunk::Kind::Example ||
            containsHan(chunks().last().text))
            return false;
        Chunk &last = chunks().last();
        const bool isSentence = isTranslation(line) || endsSentence(charAt(last.text, last.text.size() - 1));
        const bool isPhrase = latinWordCount(last.text) > 1 && chunks().first().kind == Chunk::Kind::Numbered;
        if (!isCertain && !isSentence && !isPhrase)
            return false;
        if (!isCertain && !last.isMarked && isExplained(last.text, line))
            last.kind = Chunk::Kind::Numbered;
        last.text += u' ' + line;
        return true;
    }

    /// An English sentence: an example, or the definition of a short meaning behind it.
    bool takeSentence(const QString &line) {
        if (m_lettersCount && SenseNumberFinder::letterLength(line) > 0)
            return false;
        const SentencePair pair = sentencePair(line);
        // Below a sense with a number, a phrase with its translation is an example.
        const bool isNumbered =
            !chunks().isEmpty() &&
            (chunks().last().kind == Chunk::Kind::Numbered || chunks().last().kind == Chunk::Kind::Example) &&
            chunks().first().kind == Chunk::Kind::Numbered;
        const bool isPhrase = isNumbered && isAsciiLetter(line[0]) && latinWordCount(pair.english) > 1 &&
                              !pair.english.contains(u'~');
        if (!isPhrase && !isEnglishSentence(line))
            return false;
        if (isExplained(pair.english, pair.chinese)) {
            chunks().append({Chunk::Kind::Numbered, line});
            return true;
        }
        // The first sentence below a label defines the word.
        if (chunks().isEmpty())
            return false;
        chunks().append({Chunk::Kind::Example, line, {}, false});
        return true;
    }

    void addExample(const QString &text) {
        const bool isTranslated = isHan(charAt(text, 0)) && latinWordCount(text) == 0;
        if (chunks().isEmpty())
            m_examples.add(text);
        else if (!isTranslated || !takeTranslation(text, true))
            chunks().append({Chunk::Kind::Example, text, {}, true});
    }

    void addDefinition(const QString &text) {
        if (containsHan(text)) {
            readPlain(text);
            return;
        }
        const bool fits = !chunks().isEmpty() && chunks().last().kind != Chunk::Kind::Example &&
                          chunks().last().definition.isEmpty();
        if (!fits)
            chunks().append({Chunk::Kind::Numbered, {}});
        chunks().last().definition = text;
    }

    /// The label of a line such as "noun B1", where a level follows it.
    static QString withoutLevel(const QString &line) {
        constexpr qsizetype longest = 30;
        const qsizetype size = line.size();
        const bool hasLevel = size > 3 && size < longest && line[size - 1] >= u'1' &&
                              line[size - 1] <= u'2' && line[size - 2] >= u'A' && line[size - 2] <= u'C' &&
                              line[size - 3].isSpace();
        const QString label = hasLevel ? line.chopped(3) : line;
        const auto match = hasLevel ? labelAtStart(label, true) : std::nullopt;
        return match && match->length == label.size() ? label : line;
    }

    /// Reads a line that begins with a part of speech, possibly after a number. False for other lines.
    bool takeLabel(const QString &line) {
        if (line.isEmpty())
            return false;
        if (const QString label = withoutLevel(line); label.size() < line.size())
            return takeLabel(label);
        const bool numbered = line[0].isDigit() || line[0] == u'(';
        qsizetype at = 0;
        const bool isEnclosed = line[0] >= u'①' && line[0] <= u'⒛';
        if ((numbered || isEnclosed) && !labelAtStart(line, m_lettersCount)) {
            const auto number = SenseNumberFinder::atStart(line);
            // "1 n 甲": the number of a homograph.
            const bool isBare = !number && line[0].isDigit() && charAt(line, 1).isSpace();
            if (!number && !isBare)
                return false;
            at = skipBlanks(line, number ? number->end : 1);
        }
        const auto label = labelAtStart(QStringView(line).sliced(at), m_lettersCount);
        if (!label)
            return takePhonetic(line);
        // In an entry on a term of grammar, "1. 形容词" is a sense.
        const bool isSense =
            at > 0 && at + label->length >= line.size() && isHan(line[at]) && m_parts.size() > 1;
        if (isSense)
            return false;
        begin(*label);
        // An overview such as "noun, verb" names several.
        qsizetype end = at + label->length;
        LabelMatch others;
        const auto isJoined = [&] {
            return QStringView(line).first(end + others.length).trimmed().endsWith(u',');
        };
        while (isJoined()) {
            const auto next = labelAtStart(QStringView(line).sliced(end + others.length), true);
            if (!next)
                break;
            others.parts += next->parts;
            others.length += next->length;
        }
        if (end + others.length == line.size()) {
            m_parts.last().labels += others.parts;
            end = line.size();
        }
        readItem(line.sliced(end));
        return true;
    }

    /// A transcription in front of a part of speech: "[prɪˈzent] v. 赠送".
    bool takePhonetic(const QString &line) {
        const LeadingPhonetic leading = leadingPhonetic(line, m_headword, true);
        const QString rest = line.sliced(skipBlanks(line, leading.length));
        // A line that only has the transcription. Plain letters are one only in front of the first label.
        const LeadingPhonetic whole = m_parts.size() == 1 ? leadingPhonetic(line, m_headword) : leading;
        if (whole.length > 0 && whole.length == line.size()) {
            if (m_phonetic.isEmpty())
                m_phonetic = whole.phonetic;
            return true;
        }
        if (leading.length == 0 || !labelAtStart(rest, m_lettersCount))
            return false;
        if (m_phonetic.isEmpty())
            m_phonetic = leading.phonetic;
        return takeLabel(rest);
    }

    /// The text without the title of a homograph at its end, as in "带领; lead² [led]" before a label.
    QString withoutLastTitle(const QString &text) const {
        constexpr qsizetype longest = 60;
        const QStringView words = QStringView(text).trimmed();
        if (m_headword.isEmpty() || (!words.endsWith(u']') && !words.endsWith(u'/')))
            return text;
        const qsizetype reach = std::max<qsizetype>(0, words.size() - longest - m_headword.size());
        const qsizetype title = words.sliced(reach).lastIndexOf(m_headword);
        if (title < 0)
            return text;
        qsizetype end = reach + title + m_headword.size();
        while (end < words.size() && (words[end].isDigit() || QStringView(u"¹²³⁴⁵⁶⁷⁸⁹").contains(words[end])))
            ++end;
        const LeadingPhonetic leading = leadingPhonetic(words.sliced(end), m_headword);
        const bool isTitle = leading.length > 0 && end + leading.length == words.size() &&
                             !isAsciiLetter(charAt(words, reach + title - 1));
        return isTitle ? words.first(reach + title).toString() : text;
    }

    /// Reads the glosses of a Chinese headword between slashes.
    bool takeSlashed(const QString &line) {
        QStringView text = line;
        const LeadingPhonetic leading = leadingPhonetic(text, m_headword, true);
        if (charAt(text, leading.length + 1) == u'/' || containsHan(m_headword))
            text = text.sliced(leading.length).trimmed();
        const QStringList glosses = slashedGlosses(text);
        if (glosses.isEmpty() || (glosses.size() < 2 && !containsHan(m_headword)))
            return false;
        for (const QString &gloss : glosses)
            chunks().append({Chunk::Kind::Numbered, gloss, {}, false, true});
        return true;
    }

    void begin(const LabelMatch &label) {
        Part part;
        part.labels = label.parts;
        m_parts.append(part);
        m_numbers.restart();
    }

    /// Reads the text behind a label or an item's mark.
    void readItem(const QString &text) {
        const LeadingPhonetic leading = leadingPhonetic(text, m_headword, true);
        if (m_phonetic.isEmpty())
            m_phonetic = leading.phonetic;
        readText(text.sliced(skipBlanks(text, leading.length)));
    }

    static QStringView glanceAt(QStringView text, qsizetype at) {
        constexpr qsizetype longest = 24;
        return text.sliced(at, std::min(longest, text.size() - at));
    }

    /// A part of speech between brackets within a line, as in "雪【v.】下雪".
    static bool isLabelIn(QStringView text, qsizetype at) {
        const QStringView glance = glanceAt(text, at);
        const qsizetype close = glance.indexOf(closingBracket(glance[0]));
        if (close < 2 || !isAsciiLetter(glance[1]) || glance[close - 1] != u'.')
            return false;
        const auto label = labelAtStart(glance, true);
        return label && label->length == skipBlanks(glance, close + 1);
    }

    /// Divides text at parts of speech, then at sense numbers.
    void readText(const QString &text) {
        const QList<int> depths = bracketDepths(text);
        qsizetype start = 0;
        for (qsizetype i = 1; i < text.size(); ++i) {
            const bool isBracketed = depths[i] == 1 && depths[i - 1] == 0 &&
                                     QStringView(u"【<〈").contains(text[i]) && isLabelIn(text, i);
            if (!isBracketed && (!isAsciiLetter(text[i]) || isAsciiLetter(text[i - 1]) || depths[i] > 0))
                continue;
            const auto label =
                isBracketed ? labelAtStart(glanceAt(text, i), m_lettersCount) : labelInside(text, i);
            if (!label)
                continue;
            readNumbered(withoutLastTitle(withoutLastNumber(text.sliced(start, i - start))));
            begin(*label);
            start = i + label->length;
            constexpr qsizetype glance = 200;
            const LeadingPhonetic leading = leadingPhonetic(
                QStringView(text).sliced(start, std::min(glance, text.size() - start)), m_headword, true);
            start += leading.length;
            i = start - 1;
        }
        readNumbered(text.sliced(start));
    }

    void readNumbered(const QString &line) {
        // A grammar remark before the first number ("n. [C] 1 …") belongs to the sense of that number.
        const qsizetype remark = grammarRemarkLength(line);
        const QString text = line.sliced(remark);
        const QList<SenseNumber> numbers = m_numbers.find(text, m_bareCount);
        constexpr qsizetype shortestProse = 80;
        constexpr int fewestSentences = 3;
        const bool isText = m_parts.size() == 1 && !SenseNumberFinder::atStart(text) &&
                            isProse(text, shortestProse, fewestSentences);
        if (numbers.isEmpty() || isText) {
            add(Chunk::Kind::Text, line);
            return;
        }
        qsizetype start = 0;
        Chunk::Kind kind = Chunk::Kind::Text;
        QString front = line.first(remark);
        for (const SenseNumber &number : numbers) {
            if (number.start > start) {
                add(kind, front + text.sliced(start, number.start - start));
                front.clear();
            }
            start = number.end;
            kind = Chunk::Kind::Numbered;
        }
        add(kind, front + text.sliced(start));
    }

    /// Where "(a)", "(b)" and so on begin within a text.
    static QList<qsizetype> lettersIn(QStringView text) {
        QList<qsizetype> starts;
        for (qsizetype at = text.indexOf(u'('); at >= 0; at = text.indexOf(u'(', at + 1)) {
            const bool isNext = charAt(text, at + 1) == QChar(u'a' + static_cast<int>(starts.size()));
            if (isNext && SenseNumberFinder::letterLength(text.sliced(at)) > 0)
                starts.append(at);
        }
        return starts;
    }

    void add(Chunk::Kind kind, const QString &text) {
        if (kind == Chunk::Kind::Numbered && takeIdiom(QStringView(text).trimmed()))
            return;
        const QList<qsizetype> letters = m_lettersCount ? lettersIn(text) : QList<qsizetype>();
        if (letters.size() < 2) {
            addOne(kind, text);
            return;
        }
        if (!QStringView(text).first(letters.first()).trimmed().isEmpty())
            addOne(kind, text.first(letters.first()));
        for (qsizetype i = 0; i < letters.size(); ++i) {
            const qsizetype end = i + 1 < letters.size() ? letters[i + 1] : text.size();
            addOne(Chunk::Kind::Numbered, text.sliced(letters[i], end - letters[i]));
        }
    }

    /// "(idm 习语) in the end 最后" as one of the numbered senses.
    bool takeIdiom(QStringView text) {
        for (const QStringView mark : {u"(idm", u"(phr v", u"(习语", u"(短语动词"}) {
            constexpr qsizetype longest = 20;
            const qsizetype close = text.first(std::min(longest, text.size())).indexOf(u')');
            if (!text.startsWith(mark) || close < 0)
                continue;
            m_section = Section::Phrases;
            m_sectionIsOpen = true;
            m_phrases.add(text.sliced(close + 1));
            return true;
        }
        return false;
    }

    void addOne(Chunk::Kind kind, const QString &text) {
        QString trimmed = text.trimmed();
        if (m_lettersCount) {
            if (const qsizetype length = SenseNumberFinder::letterLength(trimmed); length > 0) {
                trimmed.remove(0, length);
                kind = Chunk::Kind::Numbered;
            }
        }
        // Inflections, as in "(took, taken)".
        const bool isBehindLabel = chunks().isEmpty() && m_parts.size() > 1;
        if (m_hasChinese && kind == Chunk::Kind::Text && isInflections(trimmed, isBehindLabel)) {
            m_hasTrailers = true;
            return;
        }
        if (const qsizetype mark = trimmed.indexOf(u']') + 1;
            isBehindLabel && mark > 0 && isOnlyGrammar(QStringView(trimmed).first(mark)) &&
            isInflections(trimmed.sliced(mark).trimmed(), true))
            trimmed.truncate(mark);
        // Grammar in front of the first number belongs to its sense.
        if (chunks().size() == 1 && isOnlyGrammar(chunks().first().text) && kind != Chunk::Kind::Example) {
            chunks().first() = {kind, chunks().first().text + u' ' + trimmed};
            return;
        }
        const bool fillsItem = !chunks().isEmpty() && chunks().last().kind == Chunk::Kind::Numbered &&
                               chunks().last().text.isEmpty();
        if (fillsItem)
            chunks().last().text = trimmed;
        else if (!trimmed.isEmpty() || kind == Chunk::Kind::Numbered)
            chunks().append({kind, trimmed});
    }

    static bool isInflections(const QString &text, bool isBehindLabel) {
        constexpr qsizetype shortest = 6;
        const QChar close = closingBracket(charAt(text, 0));
        return text.size() >= shortest && (close == u')' || close == u'）') &&
               text.indexOf(close) == text.size() - 1 &&
               (isBehindLabel || text.contains(u',') || text.startsWith(QStringLiteral("(pl"))) &&
               !containsHan(text);
    }

    const QList<Line> &m_lines;
    QString m_headword;
    QList<Part> m_parts;
    SenseNumberFinder m_numbers;
    PhraseCollector m_phrases;
    ExampleCollector m_examples;
    QString m_phonetic;
    Section m_section = Section::Senses;
    /// The title stands on a line of its own.
    bool m_sectionIsOpen = false;
    bool m_nextIsChinese = false;
    bool m_hasChinese = false;
    bool m_hasTrailers = false;
    bool m_lettersCount = false;
    bool m_bareCount = false;
    bool m_examplesBySense = false;
};

/// The sense of a numbered chunk.
Sense senseOf(const Chunk &chunk, const QString &headword) {
    if (chunk.text.isEmpty())
        return senseFrom(chunk.definition, headword);
    Sense sense = senseFrom(chunk.text, headword, chunk.isEnglish);
    if (sense.meaning.isEmpty())
        sense.meaning = chunk.definition;
    else if (!chunk.definition.isEmpty())
        sense.contexts.append(chunk.definition);
    return sense;
}

/// The terms of a field on one line, and the group of the part of speech above them.
struct Terms {
    QList<Sense> senses;
    qsizetype group = -1;
};

/// The senses of a part; those of fields are separate unless they `join` the others.
struct PartSenses {
    QList<Sense> senses;
    QList<Terms> terms;
};

PartSenses sensesOf(const QList<Chunk> &chunks, const QString &headword, bool hasChinese, bool join) {
    const bool numbered = std::any_of(chunks.begin(), chunks.end(),
                                      [](const Chunk &chunk) { return chunk.kind == Chunk::Kind::Numbered; });
    PartSenses result;
    QList<Sense> *last = &result.senses;
    for (const Chunk &chunk : chunks) {
        if (chunk.kind == Chunk::Kind::Example) {
            if (last->isEmpty())
                continue;
            QString &meaning = last->last().meaning;
            if (meaning.size() > 1 && (meaning.endsWith(u':') || meaning.endsWith(u'：')))
                meaning.chop(1);
            last->last().examples.append(chunk.text);
            continue;
        }
        if (numbered && !hasChinese && chunk.kind == Chunk::Kind::Text && !last->isEmpty()) {
            // English dictionaries break long definitions into several lines.
            last->last().meaning += u' ' + chunk.text;
            continue;
        }
        const bool isTerm = chunk.kind == Chunk::Kind::Term;
        last = &result.senses;
        if (isTerm && !join) {
            result.terms.append(Terms());
            last = &result.terms.last().senses;
        }
        constexpr qsizetype shortestProse = 300;
        constexpr int fewestSentences = 3;
        if (isProse(chunk.text, shortestProse, fewestSentences))
            continue;
        if (isTerm || (!numbered && (chunk.definition.isEmpty() || containsHan(chunk.text)))) {
            QList<Sense> senses = splitGlosses(chunk.text, headword, isTerm);
            if (!chunk.definition.isEmpty() && !senses.isEmpty())
                senses.last().contexts.append(chunk.definition);
            *last += senses;
        } else if (const Sense sense = senseOf(chunk, headword); !sense.meaning.isEmpty()) {
            last->append(sense);
        }
    }
    return result;
}

/// Whether the text before the first label is prose, so that nothing in it may be taken for a sense.
bool isProse(const Part &part) {
    constexpr qsizetype shortest = 80;
    constexpr int fewestSentences = 2;
    constexpr qsizetype mostLines = 40;
    qsizetype prose = 0;
    qsizetype all = 0;
    qsizetype plain = 0;
    for (const Chunk &chunk : part.chunks) {
        all += chunk.text.size();
        plain += chunk.kind == Chunk::Kind::Text ? 1 : 0;
        if (isProse(chunk.text, shortest, fewestSentences))
            prose += chunk.text.size();
    }
    return prose * 2 > all || plain > mostLines;
}

bool sharesMeaning(const SenseGroup &group, const Terms &terms) {
    constexpr qsizetype mostSenses = 100;
    const auto isKnown = [&group](const Sense &term) {
        return std::any_of(group.senses.begin(), group.senses.end(), [&term](const Sense &sense) {
            return sense.meaning == term.meaning || sense.meaning.split(u'；').contains(term.meaning);
        });
    };
    return group.senses.size() <= mostSenses && terms.senses.size() <= mostSenses &&
           std::any_of(terms.senses.begin(), terms.senses.end(), isKnown);
}

/// Gives the terms of fields to parts of speech, see readSenses().
void placeTerms(ArticleSenses &senses, const QList<Terms> &lines) {
    constexpr qsizetype mostComparisons = 200;
    qsizetype comparisons = 0;
    // Terms are compared with the article's own senses, not with each other.
    const QList<SenseGroup> groups = senses.groups;
    const auto shares = [&](qsizetype group, const Terms &terms) {
        return comparisons++ < mostComparisons && sharesMeaning(groups[group], terms);
    };
    for (const Terms &terms : lines) {
        qsizetype place = terms.group;
        if (place < 0 || !shares(place, terms)) {
            const bool isNoun = place >= 0 && groups[place].part.pos == QStringLiteral("noun");
            qsizetype other = 0;
            while (other < groups.size() && comparisons < mostComparisons && !shares(other, terms))
                ++other;
            const bool isFound = other < groups.size() && comparisons < mostComparisons;
            place = isFound ? other : isNoun ? place : -1;
        }
        (place < 0 ? senses.terms : senses.groups[place].senses) += terms.senses;
    }
}

} // namespace

ArticleSenses readSenses(const QList<Line> &lines, const QString &headword) {
    const bool hasChinese =
        std::any_of(lines.begin(), lines.end(), [](const Line &line) { return containsHan(line.text); });
    LineReader reader(lines, headword);
    reader.read();
    const QList<Part> &parts = reader.parts();
    ArticleSenses result;
    result.phrases = reader.phrases().phrases();
    result.examples = reader.examples().examples();
    result.phonetic = reader.phonetic();
    result.hasTrailers = reader.hasTrailers();
    result.isProse = isProse(parts.first());
    QStringList names;
    for (const Part &part : parts) {
        for (const LabelledPart &label : part.labels) {
            if (!names.contains(label.part.pos))
                names += label.part.pos;
        }
    }
    QList<Terms> terms;
    for (const Part &part : parts) {
        if (part.labels.isEmpty()) {
            if (!result.isProse)
                result.loose += sensesOf(part.chunks, headword, hasChinese, true).senses;
            continue;
        }
        PartSenses senses = sensesOf(part.chunks, headword, hasChinese, names.size() == 1);
        for (const LabelledPart &label : part.labels) {
            if (senses.senses.isEmpty())
                continue;
            if (result.groups.isEmpty() || result.groups.last().part != label.part)
                result.groups.append({label.part, {}});
            for (Sense sense : senses.senses) {
                if (!label.context.isEmpty())
                    sense.contexts.prepend(label.context);
                result.groups.last().senses.append(sense);
            }
        }
        for (Terms &line : senses.terms) {
            line.group = senses.senses.isEmpty() ? -1 : result.groups.size() - 1;
            terms.append(line);
        }
    }
    placeTerms(result, terms);
    return result;
}

} // namespace lexiquill::article
