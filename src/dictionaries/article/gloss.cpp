#include "dictionaries/article/gloss.h"

#include "dictionaries/article/part_of_speech.h"
#include "dictionaries/article/sections.h"
#include "dictionaries/article/sense_numbers.h"
#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>

namespace lexiquill::article {

namespace {

/// The text without the separators at both ends, which come from splitting and from careless sources.
QString trimmedGloss(QStringView text) {
    const auto isLoose = [](QChar c) {
        return c.isSpace() || QStringView(u";；,，").contains(c);
    };
    while (!text.isEmpty() && isLoose(text.front()))
        text = text.sliced(1);
    // A dot or a bar behind a blank separates, too.
    const auto isApart = [&text] {
        return text.size() > 2 && QStringView(u".|").contains(text.back()) && text[text.size() - 2].isSpace();
    };
    while (!text.isEmpty() && (isLoose(text.back()) || isApart()))
        text.chop(1);
    return text.toString();
}

bool isShortChinese(const QString &gloss) {
    constexpr qsizetype longest = 8;
    return gloss.size() <= longest && containsHan(gloss) &&
           std::none_of(gloss.begin(), gloss.end(), [](QChar c) {
               return isAsciiLetter(c) || c.isDigit() || QStringView(u"。！？!?").contains(c);
           });
}

/// A short Chinese label such as 医 or 美俚.
bool isSubject(QStringView text) {
    constexpr qsizetype longest = 6;
    return !text.isEmpty() && text.size() <= longest && isHan(text[0]) &&
           std::all_of(text.begin(), text.end(),
                       [](QChar c) { return isHan(c) || QStringView(u"、,，/").contains(c); });
}

/// Common labels. Other text in parentheses may be an optional part of the meaning, as in "(使)惊讶".
bool isUsualLabel(QStringView text) {
    static const QSet<QString> labels{
        QStringLiteral("美"),     QStringLiteral("英"),     QStringLiteral("口"),   QStringLiteral("俚"),
        QStringLiteral("俗"),     QStringLiteral("古"),     QStringLiteral("废"),   QStringLiteral("旧"),
        QStringLiteral("方"),     QStringLiteral("书"),     QStringLiteral("贬"),   QStringLiteral("褒"),
        QStringLiteral("谑"),     QStringLiteral("诗"),     QStringLiteral("复"),   QStringLiteral("复数"),
        QStringLiteral("医"),     QStringLiteral("化"),     QStringLiteral("单数"), QStringLiteral("常复数"),
        QStringLiteral("名"),     QStringLiteral("动"),     QStringLiteral("形"),   QStringLiteral("副"),
        QStringLiteral("非正式"), QStringLiteral("正式"),   QStringLiteral("口语"), QStringLiteral("书面"),
        QStringLiteral("书面语"), QStringLiteral("俚语"),   QStringLiteral("美式"), QStringLiteral("英式"),
        QStringLiteral("文"),     QStringLiteral("喻"),     QStringLiteral("可数"), QStringLiteral("不可数"),
        QStringLiteral("及物"),   QStringLiteral("不及物"), QStringLiteral("古语"), QStringLiteral("旧式"),
        QStringLiteral("尤美"),   QStringLiteral("尤英"),   QStringLiteral("比喻"), QStringLiteral("贬义"),
    };
    return labels.contains(text.toString());
}

/// The code of a verb pattern, such as "Tn.pr" or "Cn.a".
bool isVerbPattern(QStringView word) {
    static const QSet<QString> codes{
        QStringLiteral("Ip"),  QStringLiteral("Ipr"), QStringLiteral("It"), QStringLiteral("In"),
        QStringLiteral("La"),  QStringLiteral("Ln"),  QStringLiteral("Tn"), QStringLiteral("Tf"),
        QStringLiteral("Tw"),  QStringLiteral("Tt"),  QStringLiteral("Tg"), QStringLiteral("Tsg"),
        QStringLiteral("Tnt"), QStringLiteral("Tni"), QStringLiteral("Dn"), QStringLiteral("Dpr"),
        QStringLiteral("Cn"),
    };
    constexpr qsizetype longest = 8;
    qsizetype end = 0;
    while (end < word.size() && isAsciiLetter(word[end]))
        ++end;
    return word.size() <= longest && codes.contains(word.first(end).toString());
}

/// Marks of grammar such as "C, U", "pl." or "usu pass".
bool isGrammar(QStringView text) {
    static const QSet<QString> words{
        QStringLiteral("c"),        QStringLiteral("u"),       QStringLiteral("t"),
        QStringLiteral("i"),        QStringLiteral("pl"),      QStringLiteral("sing"),
        QStringLiteral("usu"),      QStringLiteral("often"),   QStringLiteral("only"),
        QStringLiteral("not"),      QStringLiteral("before"),  QStringLiteral("after"),
        QStringLiteral("noun"),     QStringLiteral("verb"),    QStringLiteral("v"),
        QStringLiteral("pass"),     QStringLiteral("passive"), QStringLiteral("plural"),
        QStringLiteral("singular"), QStringLiteral("usually"), QStringLiteral("also"),
        QStringLiteral("with"),     QStringLiteral("or"),      QStringLiteral("s"),
        QStringLiteral("p"),        QStringLiteral("attrib"),  QStringLiteral("pred"),
    };
    bool isAny = false;
    // What follows the word, as in "+to-v" and "(+of)".
    if (text.startsWith(u'+') || text.startsWith(u"(+"))
        return true;
    for (QStringView word : text.tokenize(u' ')) {
        while (!word.isEmpty() && QStringView(u",;.").contains(word.back()))
            word.chop(1);
        if (word == u"+" || word.isEmpty())
            continue;
        for (const QStringView part : word.tokenize(u',')) {
            if (!words.contains(part.toString().toLower()) && !isVerbPattern(part))
                return false;
            isAny = true;
        }
    }
    return isAny;
}

/// An English mark such as "archaic" or "pl. apples".
bool isEnglishMark(QStringView label) {
    constexpr qsizetype longest = 30;
    return !label.isEmpty() && label.size() <= longest && isAsciiLetter(label[0]) &&
           std::all_of(label.begin(), label.end(),
                       [](QChar c) { return isAsciiLetter(c) || QStringView(u" .,;-+/'’~").contains(c); });
}

/// A mark in both languages, such as "math 数".
bool isMixedMark(QStringView label) {
    constexpr qsizetype longest = 20;
    return label.size() <= longest && containsHan(label) && isAsciiLetter(charAt(label, 0)) &&
           std::all_of(label.begin(), label.end(), [](QChar c) {
               return isHan(c) || isAsciiLetter(c) || QStringView(u" ./").contains(c);
           });
}

/// Moves a label from the start of `text` to `contexts`; false if there is none or no text would be left.
bool takeContext(QStringView &text, QStringList &contexts) {
    const QChar open = charAt(text, 0);
    if (open.isNull() || !QStringView(u"([【〈<〔（《{").contains(open))
        return false;
    constexpr qsizetype longest = 60;
    const qsizetype close = text.first(std::min(longest, text.size())).indexOf(closingBracket(open));
    if (close < 0)
        return false;
    const QStringView label = text.sliced(1, close - 1).trimmed();
    const QStringView rest = text.sliced(close + 1);
    const bool isGrammarMark = open == u'[' && isGrammar(label);
    bool accepted = isSubject(label) || isGrammarMark;
    if (open == u'[' || open == u'〈')
        accepted = accepted || isEnglishMark(label) || isMixedMark(label);
    if (open == u'(') {
        accepted = isUsualLabel(label) || label.startsWith(u"pl.") ||
                   (!label.isEmpty() && !label.contains(u'(') && charAt(rest, 0).isSpace());
    } else if (open == u'《') {
        accepted = isUsualLabel(label);
    } else if (open == u'（') {
        accepted = isUsualLabel(label) || isEnglishMark(label);
    }
    if (!accepted || trimmedGloss(rest).isEmpty())
        return false;
    const QString context = isGrammarMark ? text.first(close + 1).toString() : label.toString();
    if (!contexts.contains(context))
        contexts.append(context);
    text = rest.trimmed();
    return true;
}

/// Words of a pattern such as "~ (to do sth)" or "~ sb/sth for sth".
bool isPatternWord(QStringView word) {
    static const QSet<QString> words{
        QStringLiteral("sb"),   QStringLiteral("sth"),     QStringLiteral("sb's"), QStringLiteral("one's"),
        QStringLiteral("do"),   QStringLiteral("doing"),   QStringLiteral("to"),   QStringLiteral("for"),
        QStringLiteral("of"),   QStringLiteral("on"),      QStringLiteral("upon"), QStringLiteral("in"),
        QStringLiteral("with"), QStringLiteral("at"),      QStringLiteral("from"), QStringLiteral("by"),
        QStringLiteral("into"), QStringLiteral("about"),   QStringLiteral("over"), QStringLiteral("against"),
        QStringLiteral("as"),   QStringLiteral("oneself"), QStringLiteral("that"), QStringLiteral("after"),
        QStringLiteral("up"),   QStringLiteral("out"),     QStringLiteral("off"),  QStringLiteral("between"),
        QStringLiteral("~"),    QStringLiteral("～"),      QStringLiteral("..."),  QStringLiteral("sb."),
        QStringLiteral("sth."),
    };
    for (const QStringView part : word.tokenize(u'/')) {
        if (!words.contains(part.toString()))
            return false;
    }
    return true;
}

/// Length of the pattern at the start of a text; 0 if there is none.
qsizetype patternLength(QStringView text) {
    if (!text.startsWith(u'~') && !text.startsWith(u'～'))
        return 0;
    qsizetype end = 0;
    for (qsizetype at = 0; at < text.size(); at = skipBlanks(text, at)) {
        constexpr qsizetype longest = 40;
        const QStringView rest = text.sliced(at, std::min(longest, text.size() - at));
        qsizetype length = 0;
        if (rest[0] == u'(') {
            length = rest.indexOf(u')') + 1;
            const QStringView first = rest.sliced(1).first(std::max<qsizetype>(length - 2, 0));
            const qsizetype blank = first.indexOf(u' ');
            if (!isPatternWord(blank < 0 ? first : first.first(blank)))
                break;
        } else {
            while (length < rest.size() && !rest[length].isSpace() && !isHan(rest[length]) &&
                   !QStringView(u"([,;:，；：").contains(rest[length]))
                ++length;
            if (!isPatternWord(rest.first(length)))
                break;
        }
        if (length == 0)
            break;
        at += length;
        end = at;
    }
    return end;
}

void takeContexts(QStringView &text, QStringList &contexts) {
    constexpr int mostContexts = 4;
    for (int i = 0; i < mostContexts; ++i) {
        const qsizetype pattern = patternLength(text);
        if (pattern > 0 && !trimmedGloss(text.sliced(pattern)).isEmpty()) {
            contexts.append(text.first(pattern).toString());
            text = text.sliced(pattern).trimmed();
        } else if (!takeContext(text, contexts)) {
            return;
        }
    }
}

/// Length of the English definition or the pattern in front of a Chinese meaning; 0 if there is none.
qsizetype definitionLength(QStringView text) {
    const qsizetype han = chineseStart(text);
    if (han == 0 || han >= text.size() || QStringView(u"的之式型").contains(text[han]))
        return 0;
    const QStringView english = text.first(han).trimmed();
    // A remark in brackets is a context of its own gloss only.
    if (english.isEmpty() || (english.front() == u'(' && english.indexOf(u')') == english.size() - 1))
        return 0;
    const int words = latinWordCount(english);
    const bool apart = text[han - 1].isSpace() || text[han - 1].isPunct();
    const bool isPattern = english.contains(u'~') || english.contains(u'～');
    // A single word may also be a part of the meaning, as in "pH 值".
    constexpr qsizetype shortestWord = 3;
    const bool isWord = words == 1 && apart && english.size() >= shortestWord &&
                        std::all_of(english.begin(), english.end(), [](QChar c) { return c.isLower(); });
    if (words < 1 || (words < 3 && !isPattern && !isWord && !(words == 2 && apart)))
        return 0;
    const auto count = [english](QStringView marks) {
        return std::count_if(english.begin(), english.end(), [marks](QChar c) { return marks.contains(c); });
    };
    return count(u"([") == count(u")]") ? han : 0;
}

/// Moves the definition in front of a Chinese meaning to `contexts`.
void takeDefinition(QStringView &text, QStringList &contexts) {
    const qsizetype length = definitionLength(text);
    if (length == 0)
        return;
    QStringView definition = text.first(length).trimmed();
    while (!definition.isEmpty() && QStringView(u":：;,-–—=").contains(definition.back()))
        definition = definition.chopped(1).trimmed();
    const QString context = withoutTornMarks(definition).toString();
    if (!context.isEmpty() && !contexts.contains(context))
        contexts.append(context);
    text = text.sliced(length);
}

/// Moves a mark of grammar or a pattern from the end of `text` to `contexts`, as in "苹果 [C]" or "抛弃 ~
/// sb".
void takeLastGrammar(QStringView &text, QStringList &contexts) {
    constexpr qsizetype longest = 20;
    const qsizetype tail = std::max<qsizetype>(0, text.size() - longest);
    const qsizetype tilde = text.sliced(tail).lastIndexOf(u'~') + tail;
    if (tilde > tail && text[tilde - 1].isSpace() &&
        patternLength(text.sliced(tilde)) == text.size() - tilde) {
        contexts.append(text.sliced(tilde).toString());
        text = text.first(tilde).trimmed();
    }
    constexpr int mostMarks = 6;
    const qsizetype place = contexts.size();
    for (int i = 0; i < mostMarks && text.endsWith(u']'); ++i) {
        const qsizetype reach = std::max<qsizetype>(0, text.size() - longest);
        const qsizetype open = text.sliced(reach).lastIndexOf(u'[') + reach;
        if (open <= reach)
            return;
        const QStringView inside = text.sliced(open + 1).chopped(1);
        // "[INFORMAL]"
        const bool isRegister =
            std::all_of(inside.begin(), inside.end(), [](QChar c) { return isAsciiLetter(c) || c == u' '; });
        if (inside.isEmpty() || (!isGrammar(inside) && !isRegister))
            return;
        contexts.insert(place, isGrammar(inside) ? text.sliced(open).toString() : inside.toString());
        text = text.first(open).trimmed();
    }
}

/// The text behind the last Chinese character, without brackets that belong to that.
QStringView latinTail(QStringView text) {
    qsizetype end = text.size();
    while (end > 0 && !isHan(text[end - 1]))
        --end;
    if (end == 0 || end == text.size())
        return {};
    while (end < text.size() && (QStringView(u")）]】〉>”」’").contains(text[end]) ||
                                 QStringView(u"…。；;，,：:").contains(text[end])))
        ++end;
    return text.sliced(end);
}

/// The text without a reference to another word at its end, as in "轻的 OPP heavy" or "开始 → start".
QStringView withoutReference(QStringView text) {
    const QStringView tail = latinTail(text);
    const QStringView words = tail.trimmed();
    if (words.size() == tail.size() || words.isEmpty())
        return text;
    static constexpr QStringView marks[] = {u"see ", u"cf ", u"cf. ", u"→",    u"➔",    u"➜",
                                            u"⇨",    u"=>",  u"OPP ", u"SYN ", u"ANT ", u"compare "};
    const bool isReference = std::any_of(std::begin(marks), std::end(marks),
                                         [words](QStringView mark) { return words.startsWith(mark); });
    return isReference ? text.first(tail.data() - text.data()).trimmed() : text;
}

/// Moves an English definition behind a Chinese meaning to `contexts`.
void takeLastDefinition(QStringView &text, QStringList &contexts, QStringView headword) {
    const QStringView tail = latinTail(text);
    constexpr int fewestWords = 3;
    const auto isOrdinary = [](QChar c) {
        return c.isLetter() || c.isSpace() || QStringView(u",.;'’()-/").contains(c);
    };
    if (tail.isEmpty() || !std::all_of(tail.begin(), tail.end(), isOrdinary) ||
        !(tail[0].isSpace() || endsSentence(text[tail.data() - text.data() - 1])) ||
        !isAsciiLetter(charAt(tail, skipBlanks(tail, 0))) || latinWordCount(tail) < fewestWords ||
        mentions(tail, headword))
        return;
    contexts.append(trimmedGloss(withoutTornMarks(tail)));
    text = text.first(tail.data() - text.data()).trimmed();
}

/// Moves the Chinese examples behind the English meaning of a Chinese word to `examples`, as in "to beat:
/// ~门 knock at the door / ~鼓 beat a drum".
void takeChineseExamples(QStringView &text, QStringList &examples) {
    const QList<int> depths = bracketDepths(text);
    const auto isStart = [text](qsizetype i) {
        return isHan(text[i]) || text[i] == u'~' || text[i] == u'～';
    };
    qsizetype lastLatin = text.size() - 1;
    while (lastLatin >= 0 && !isAsciiLetter(text[lastLatin]))
        --lastLatin;
    qsizetype start = -1;
    bool inChinese = false;
    for (qsizetype i = 1; i < text.size() && start < 0; ++i) {
        const bool begins = isStart(i) && !std::exchange(inChinese, isStart(i));
        inChinese = isStart(i);
        if (!begins || depths[i] > 0)
            continue;
        qsizetype before = i - 1;
        while (before > 0 && text[before].isSpace())
            --before;
        const bool isApart = QStringView(u":：;；/|。.").contains(text[before]);
        if (isApart || (before < i - 1 && lastLatin > i))
            start = i;
    }
    if (start < 0 || latinWordCount(text.first(start)) == 0)
        return;
    for (const QString &piece : splitOutsideBrackets(text.sliced(start).toString(), u"/|；;")) {
        // A second translation belongs to the example before it.
        const bool isExample = containsHan(piece) || piece.contains(u'~');
        if (isExample)
            examples.append(trimmedGloss(piece));
        else if (!examples.isEmpty() && !trimmedGloss(piece).isEmpty())
            examples.last() += QStringLiteral("; ") + trimmedGloss(piece);
    }
    text = text.first(start).trimmed();
    while (!text.isEmpty() && QStringView(u":：/|;；").contains(text.back()))
        text = text.chopped(1).trimmed();
}

/// Whether a text explains a Chinese word in English.
bool isEnglishGloss(QStringView text, const QString &headword) {
    if (!containsHan(headword))
        return false;
    QStringList contexts;
    takeContexts(text, contexts);
    return isAsciiLetter(charAt(text, 0)) || (charAt(text, 0) == u'(' && isAsciiLetter(charAt(text, 1)));
}

/// A mark that separates examples within a line, at `at`; 0 if there is none.
qsizetype separatorLength(QStringView text, qsizetype at) {
    const QStringView rest = text.sliced(at);
    if (QStringView(u"▸◇◆♦●▶►").contains(rest[0]))
        return 1;
    if (rest[0] == u'*')
        return at > 0 && !text[at - 1].isLetterOrNumber() && charAt(rest, 1).isSpace() ? 1 : 0;
    return QStringView(u"【[〔（例").contains(rest[0]) ? exampleMarkLength(rest) : 0;
}

/// Whether an example begins behind the meaning, at `at`: behind a colon, or a sentence.
bool beginsExample(QStringView text, qsizetype at, QStringView headword) {
    if (!isAsciiLetter(text[at]) && !QStringView(u"\"'‘“~～").contains(text[at]))
        return false;
    qsizetype before = at - 1;
    while (before > 0 && text[before].isSpace())
        --before;
    const QChar previous = text[before];
    const bool afterColon = previous == u':' || previous == u'：';
    const bool afterMeaning =
        before < at - 1 && (isHan(previous) || QStringView(u"；;。)）】]").contains(previous));
    if (!afterColon && !afterMeaning)
        return false;
    constexpr qsizetype longest = 300;
    const QStringView rest = text.sliced(at, std::min(longest, text.size() - at));
    const qsizetype han = chineseStart(rest);
    const int words = latinWordCount(rest.first(han));
    if (afterColon)
        return words >= 3 || (words > 0 && han > 2 && han < rest.size());
    const QStringView english = rest.first(han).trimmed();
    if (labelAtStart(rest, false))
        return false;
    if (words >= 2 && han < rest.size() && mentions(english, headword))
        return true;
    return words >= 3 && text[at].isUpper() &&
           (endsSentence(english.back()) || QStringView(u"\"”'’").contains(english.back()));
}

/// Moves the examples behind a Chinese meaning to `examples`.
void takeExamples(QStringView &text, QStringList &examples, QStringView headword) {
    const qsizetype han = chineseStart(text);
    qsizetype start = -1;
    qsizetype end = -1;
    const QStringView whole = text;
    const auto take = [&](qsizetype to) {
        const QStringView example = whole.sliced(start, to - start).trimmed();
        if (!example.isEmpty())
            examples.append(example.toString());
    };
    // The first example begins within the first words behind the meaning, or not at all.
    constexpr int mostWords = 200;
    int words = 0;
    for (qsizetype i = std::max<qsizetype>(han, 1); i < whole.size(); ++i) {
        const qsizetype mark = separatorLength(whole, i);
        const bool wordStart = start < 0 && mark == 0 && !isAsciiLetter(whole[i - 1]) &&
                               !whole[i].isSpace() && words < mostWords && beginsExample(whole, i, headword);
        words += start < 0 && isAsciiLetter(whole[i]) && !isAsciiLetter(whole[i - 1]) ? 1 : 0;
        if (mark == 0 && !wordStart)
            continue;
        if (start < 0)
            end = i;
        else
            take(i);
        start = i + mark;
        i = std::max(i, start - 1);
    }
    if (start < 0)
        return;
    take(whole.size());
    text = whole.first(end).trimmed();
    while (!text.isEmpty() && QStringView(u":：").contains(text.back()))
        text = text.chopped(1).trimmed();
}

/// The definition of an English dictionary without references such as "[syn: {apple}]"; its examples between
/// quotation marks are moved to `examples`.
QString withoutQuotations(QStringView text, QStringList &examples) {
    QString plain;
    qsizetype start = 0;
    for (qsizetype i = text.indexOf(u'['); i >= 0; i = text.indexOf(u'[', i + 1)) {
        const QStringView inside = text.sliced(i + 1);
        if (!inside.startsWith(u"syn:") && !inside.startsWith(u"ant:") && !inside.startsWith(u"also:"))
            continue;
        const qsizetype close = text.indexOf(u']', i);
        plain += text.sliced(start, i - start);
        start = close < 0 ? text.size() : close + 1;
        i = start - 1;
    }
    plain += text.sliced(start);
    plain.remove(u'{').remove(u'}');
    qsizetype quote = plain.indexOf(u'"');
    qsizetype before = quote - 1;
    while (before > 0 && plain[before].isSpace())
        --before;
    if (quote < 1 || !QStringView(u";:").contains(plain[before]))
        return plain.trimmed();
    QString definition = plain.first(before).trimmed();
    while (quote >= 0) {
        qsizetype close = plain.indexOf(u'"', quote + 1);
        if (close < 0)
            close = plain.size();
        const qsizetype next = plain.indexOf(u'"', close + 1);
        QString example = plain.sliced(quote + 1, close - quote - 1);
        // The source of a quotation stands behind it.
        const qsizetype rest = std::min(close + 1, plain.size());
        const QString source =
            trimmedGloss(QStringView(plain).sliced(rest, (next < 0 ? plain.size() : next) - rest));
        if (!source.isEmpty())
            example += u' ' + source;
        if (!example.trimmed().isEmpty())
            examples.append(example.trimmed());
        quote = next;
    }
    return definition;
}

/// The text with a separator before each label of a field within it, as in "测验【医】化验".
QString withFieldsApart(const QString &text) {
    QString result;
    qsizetype start = 0;
    for (qsizetype at = text.indexOf(u'【', 1); at > 0; at = text.indexOf(u'【', at + 1)) {
        constexpr qsizetype longest = 8;
        const qsizetype close =
            QStringView(text).sliced(at, std::min(longest, text.size() - at)).indexOf(u'】');
        const bool isField = close > 1 && isSubject(QStringView(text).sliced(at + 1, close - 1)) &&
                             isHan(charAt(text, skipBlanks(text, at + close + 1))) && isHan(text[at - 1]);
        if (!isField)
            continue;
        result += QStringView(text).sliced(start, at - start);
        result += u'；';
        start = at;
    }
    return result += QStringView(text).sliced(start);
}

} // namespace

QStringList splitOutsideBrackets(const QString &text, QStringView separators) {
    QStringList pieces;
    const QList<int> depths = bracketDepths(text);
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (depths[i] > 0 || !separators.contains(text[i]))
            continue;
        pieces.append(text.sliced(start, i - start));
        start = i + 1;
    }
    pieces.append(text.sliced(start));
    return pieces;
}

Sense senseFrom(const QString &gloss, const QString &headword, bool isEnglish) {
    Sense sense;
    if (!isEnglish && isEnglishGloss(gloss, headword)) {
        QStringView text = gloss;
        QStringList examples;
        takeChineseExamples(text, examples);
        sense = senseFrom(text.toString(), headword, true);
        sense.examples += examples;
        return sense;
    }
    const bool isChineseGloss = !isEnglish && containsHan(gloss);
    const QString whole = isChineseGloss ? trimmedGloss(withoutTags(gloss))
                                         : withoutQuotations(trimmedGloss(gloss), sense.examples);
    QStringView rest = whole;
    if (isChineseGloss) {
        takeExamples(rest, sense.examples, headword);
        rest = withoutReference(rest);
    }
    takeContexts(rest, sense.contexts);
    if (isChineseGloss) {
        takeDefinition(rest, sense.contexts);
        takeContexts(rest, sense.contexts);
        takeLastDefinition(rest, sense.contexts, headword);
    }
    takeLastGrammar(rest, sense.contexts);
    sense.meaning = trimmedGloss(withoutTornMarks(rest));
    return sense;
}

QList<Sense> splitGlosses(const QString &line, const QString &headword, bool isTerm) {
    QList<Sense> senses;
    QStringView text = line;
    QStringList examples;
    QStringList contexts;
    const bool isEnglish = isEnglishGloss(text, headword);
    if (isEnglish)
        takeChineseExamples(text, examples);
    else if (containsHan(line))
        takeExamples(text, examples, headword);
    if (isTerm)
        takeContexts(text, contexts);
    const auto add = [&](const Sense &sense) {
        if (sense.meaning.isEmpty())
            return;
        senses.append(sense);
        senses.last().contexts = contexts + sense.contexts;
    };
    QString glossText = text.toString();
    if (isTerm) {
        // Numbers within a term separate its meanings.
        QString parted;
        qsizetype start = 0;
        for (const SenseNumber &number : SenseNumberFinder().find(glossText, false)) {
            parted += QStringView(glossText).sliced(start, number.start - start);
            parted += u';';
            start = number.end;
        }
        glossText = parted + glossText.sliced(start);
    }
    glossText = withFieldsApart(glossText);
    const QStringList pieces = splitOutsideBrackets(glossText, u";；");
    const auto isPair = [](const QString &piece) {
        const SentencePair pair = sentencePair(piece);
        return !pair.english.isEmpty() && !pair.chinese.isEmpty();
    };
    const bool isDefined = !isEnglish && definitionLength(text) > 0 &&
                           (pieces.size() == 1 || !std::all_of(pieces.begin(), pieces.end(), isPair));
    const Sense whole = pieces.size() > 1 && !isDefined ? Sense() : senseFrom(glossText, headword, isEnglish);
    const QStringList glosses = splitOutsideBrackets(whole.meaning, u",，");
    if (whole.meaning.isEmpty()) {
        for (const QString &piece : pieces)
            add(senseFrom(piece, headword, isEnglish));
    } else if (isDefined || glosses.size() < 2 ||
               !std::all_of(glosses.begin(), glosses.end(), isShortChinese)) {
        add(whole);
    } else {
        for (const QString &gloss : glosses) {
            Sense sense = senseFrom(gloss, headword);
            // Labels at the start of the line apply to each gloss.
            sense.contexts = whole.contexts + sense.contexts;
            add(sense);
        }
    }
    if (!senses.isEmpty())
        senses.last().examples += examples;
    return senses;
}

bool isOnlyPattern(QStringView text) {
    text = text.trimmed();
    return !text.isEmpty() && patternLength(text) == text.size();
}

bool isOnlyGrammar(QStringView text) {
    text = text.trimmed();
    if (text.size() < 3 || text.front() != u'[' || text.indexOf(u']') != text.size() - 1)
        return false;
    const QStringView inside = text.sliced(1).chopped(1);
    return isGrammar(inside) || isSubject(inside);
}

bool isFieldTerm(QStringView line) {
    const QChar open = charAt(line, 0);
    if (open != u'[' && open != u'【')
        return false;
    constexpr qsizetype longest = 10;
    const qsizetype close = line.first(std::min(longest, line.size())).indexOf(closingBracket(open));
    return close > 1 && isSubject(line.sliced(1, close - 1).trimmed()) &&
           !trimmedGloss(line.sliced(close + 1)).isEmpty();
}

QStringList slashedGlosses(QStringView line) {
    line = line.trimmed();
    if (line.size() < 3 || line.front() != u'/' || line.back() != u'/')
        return {};
    QStringList glosses;
    for (const QStringView piece : line.sliced(1).chopped(1).tokenize(u'/')) {
        if (piece.trimmed().isEmpty() || piece.trimmed().startsWith(u"CL:"))
            continue;
        // "個|个[ge4]" is a word in two scripts, with its pinyin.
        QString gloss;
        for (qsizetype i = 0; i < piece.size(); ++i) {
            const bool afterHan = i > 0 && isHan(piece[i - 1]);
            if (piece[i] == u'[' && afterHan) {
                const qsizetype close = piece.indexOf(u']', i);
                i = close < 0 ? piece.size() : close;
            } else if (piece[i] == u'|' && afterHan && isHan(charAt(piece, i + 1))) {
                while (!gloss.isEmpty() && isHan(gloss.back()))
                    gloss.chop(1);
            } else {
                gloss += piece[i];
            }
        }
        if (!gloss.trimmed().isEmpty())
            glosses.append(gloss.trimmed());
    }
    return glosses;
}

} // namespace lexiquill::article
