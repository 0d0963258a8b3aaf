#include "dictionaries/article/part_of_speech.h"

#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <algorithm>

namespace lexiquill::article {

namespace {

/// How reliable a form is if no dot follows it.
enum class Kind {
    /// One letter: a label only at the start of a definition.
    Letter,
    /// Not an English word, so it cannot be ordinary text.
    Unmistakable,
    /// Also a word, or similar to one.
    Wordlike,
    /// A label only with a dot.
    PointOnly,
    /// Written in full.
    Name,
};

struct Form {
    /// Words in lower case; each may be followed by a dot and a blank.
    QStringView words;
    QStringView pos;
    Kind kind;
    /// See PartOfSpeech and LabelledPart.
    QStringView chineseName = u"";
    QStringView context = u"";
};

// A longer form must come before the forms that it begins with.
const Form forms[] = {
    {u"intransitive verb", u"intransitive verb", Kind::Name},
    {u"transitive verb", u"transitive verb", Kind::Name},
    {u"auxiliary verb", u"aux.", Kind::Name, u"助动词"},
    {u"phrasal verb", u"phrasal verb", Kind::Name, u"短语动词"},
    {u"plural noun", u"noun", Kind::Name, u"", u"复数"},
    {u"proper noun", u"noun", Kind::Name},
    {u"modal verb", u"modal v.", Kind::Name, u"情态动词"},
    {u"abbreviation", u"abbr.", Kind::Name, u"缩写"},
    {u"interjection", u"interjection", Kind::Name},
    {u"conjunction", u"conjunction", Kind::Name},
    {u"exclamation", u"interjection", Kind::Name},
    {u"preposition", u"preposition", Kind::Name},
    {u"determiner", u"det.", Kind::Name, u"限定词"},
    {u"adjective", u"adjective", Kind::Name},
    {u"pronoun", u"pronoun", Kind::Name},
    {u"numeral", u"numeral", Kind::Name},
    {u"adverb", u"adverb", Kind::Name},
    {u"phrase", u"phrase", Kind::Name},
    {u"idiom", u"idiom", Kind::Name},
    {u"noun", u"noun", Kind::Name},
    {u"verb", u"verb", Kind::Name},
    {u"indefinite article", u"art.", Kind::Name, u"冠词"},
    {u"definite article", u"art.", Kind::Name, u"冠词"},
    {u"prefix", u"pref.", Kind::Name, u"前缀"},
    {u"suffix", u"suf.", Kind::Name, u"后缀"},
    {u"v-link", u"link v.", Kind::Unmistakable, u"系动词"},
    {u"v-erg", u"verb", Kind::Unmistakable},
    {u"v-recip", u"verb", Kind::Unmistakable},
    {u"v-refl", u"verb", Kind::Unmistakable},
    {u"v-passive", u"verb", Kind::Unmistakable},
    {u"v-t", u"transitive verb", Kind::Unmistakable},
    {u"v-i", u"intransitive verb", Kind::Unmistakable},
    {u"n-uncount", u"noun", Kind::Unmistakable, u"", u"不可数"},
    {u"n-count", u"noun", Kind::Unmistakable, u"", u"可数"},
    {u"n-plural", u"noun", Kind::Unmistakable, u"", u"复数"},
    {u"n-sing", u"noun", Kind::Unmistakable, u"", u"单数"},
    {u"n-mass", u"noun", Kind::Unmistakable},
    {u"n-var", u"noun", Kind::Unmistakable},
    {u"n-coll", u"noun", Kind::Unmistakable},
    {u"n-proper", u"noun", Kind::Unmistakable},
    {u"n-title", u"noun", Kind::Unmistakable},
    {u"n-voc", u"noun", Kind::Unmistakable},
    {u"adj-graded", u"adjective", Kind::Unmistakable},
    {u"adv-graded", u"adverb", Kind::Unmistakable},
    {u"comb form", u"comb.", Kind::PointOnly, u"构词成分"},
    {u"modal aux", u"modal v.", Kind::PointOnly, u"情态动词"},
    {u"modal v", u"modal v.", Kind::PointOnly, u"情态动词"},
    {u"aux v", u"aux.", Kind::PointOnly, u"助动词"},
    {u"link v", u"link v.", Kind::PointOnly, u"系动词"},
    {u"v aux", u"aux.", Kind::PointOnly, u"助动词"},
    {u"v link", u"link v.", Kind::PointOnly, u"系动词"},
    {u"phr v", u"phrasal verb", Kind::PointOnly, u"短语动词"},
    {u"n pl", u"noun", Kind::PointOnly, u"", u"复数"},
    {u"pl n", u"noun", Kind::PointOnly, u"", u"复数"},
    {u"v t", u"transitive verb", Kind::PointOnly},
    {u"v i", u"intransitive verb", Kind::PointOnly},
    {u"interj", u"interjection", Kind::Unmistakable},
    {u"conj", u"conjunction", Kind::Unmistakable},
    {u"pron", u"pronoun", Kind::Unmistakable},
    {u"prep", u"preposition", Kind::Wordlike},
    {u"excl", u"interjection", Kind::Wordlike},
    {u"abbrev", u"abbr.", Kind::Wordlike, u"缩写"},
    {u"abbr", u"abbr.", Kind::Wordlike, u"缩写"},
    {u"quant", u"quant.", Kind::Wordlike, u"数量词"},
    {u"exclam", u"interjection", Kind::Wordlike},
    {u"pref", u"pref.", Kind::Wordlike, u"前缀"},
    {u"symb", u"symb.", Kind::Wordlike, u"符号"},
    {u"comb", u"comb.", Kind::PointOnly, u"构词成分"},
    {u"modal", u"modal v.", Kind::PointOnly, u"情态动词"},
    {u"adj", u"adjective", Kind::Unmistakable},
    {u"adv", u"adverb", Kind::Wordlike},
    {u"art", u"art.", Kind::PointOnly, u"冠词"},
    {u"aux", u"aux.", Kind::Wordlike, u"助动词"},
    {u"det", u"det.", Kind::Wordlike, u"限定词"},
    {u"int", u"interjection", Kind::PointOnly},
    {u"num", u"numeral", Kind::Wordlike},
    {u"phr", u"phrase", Kind::Wordlike},
    {u"suff", u"suf.", Kind::Wordlike, u"后缀"},
    {u"suf", u"suf.", Kind::Wordlike, u"后缀"},
    {u"web", u"释义", Kind::PointOnly, u"", u"网络"},
    {u"vbl", u"verb", Kind::PointOnly},
    {u"na", u"释义", Kind::PointOnly},
    {u"un", u"noun", Kind::PointOnly},
    {u"vt", u"transitive verb", Kind::Unmistakable},
    {u"vi", u"intransitive verb", Kind::Unmistakable},
    {u"ad", u"adverb", Kind::PointOnly},
    {u"pl", u"noun", Kind::PointOnly, u"", u"复数"},
    {u"n", u"noun", Kind::Letter},
    {u"v", u"verb", Kind::Letter},
    {u"a", u"adjective", Kind::PointOnly},
};

struct ChineseName {
    QStringView name;
    QStringView pos;
    QStringView chineseName = u"";
};

const ChineseName chineseNames[] = {
    {u"及物/不及物动词", u"verb"},
    {u"不及物动词", u"intransitive verb"},
    {u"不可数名词", u"noun"},
    {u"可数名词", u"noun"},
    {u"可变名词", u"noun"},
    {u"物质名词", u"noun"},
    {u"集合名词", u"noun"},
    {u"专有名词", u"noun"},
    {u"单数名词", u"noun"},
    {u"复数名词", u"noun"},
    {u"称谓名词", u"noun"},
    {u"反身动词", u"verb"},
    {u"相互动词", u"verb"},
    {u"作格动词", u"verb"},
    {u"连系动词", u"link v.", u"系动词"},
    {u"系动词", u"link v.", u"系动词"},
    {u"数量词", u"quant.", u"数量词"},
    {u"及物动词", u"transitive verb"},
    {u"情态动词", u"modal v.", u"情态动词"},
    {u"短语动词", u"phrasal verb", u"短语动词"},
    {u"动词短语", u"phrasal verb", u"短语动词"},
    {u"助动词", u"aux.", u"助动词"},
    {u"形容词", u"adjective"},
    {u"感叹词", u"interjection"},
    {u"限定词", u"det.", u"限定词"},
    {u"名词", u"noun"},
    {u"动词", u"verb"},
    {u"副词", u"adverb"},
    {u"代词", u"pronoun"},
    {u"介词", u"preposition"},
    {u"连词", u"conjunction"},
    {u"叹词", u"interjection"},
    {u"数词", u"numeral"},
    {u"量词", u"量", u"量词"},
    {u"冠词", u"art.", u"冠词"},
    {u"短语", u"phrase"},
    {u"词组", u"phrase"},
    {u"习语", u"idiom"},
    {u"成语", u"idiom"},
};

// A single character is a label only between 【 and 】. 数 and 量 mean subjects there.
const ChineseName bracketedNames[] = {
    {u"名", u"noun"},    {u"动", u"verb"},        {u"形", u"adjective"},   {u"副", u"adverb"},
    {u"代", u"pronoun"}, {u"介", u"preposition"}, {u"连", u"conjunction"}, {u"叹", u"interjection"},
};

LabelledPart partOf(const Form &form) {
    return {{form.pos.toString(), form.chineseName.toString()}, form.context.toString()};
}

LabelledPart partOf(const ChineseName &name) {
    return {{name.pos.toString(), name.chineseName.toString()}, {}};
}

/// A single label together with how it was written.
struct Found {
    LabelledPart part;
    /// Where it ends, including its dot.
    qsizetype end = 0;
    bool pointed = false;
    Kind kind = Kind::Name;
    bool isLetterA = false;
};

bool isPoint(QChar c) {
    return c == u'.' || c == u'．';
}

/// The end of the words of a form at `at`; -1 if they are not there.
qsizetype matchWords(QStringView text, qsizetype at, const Form &form, bool &pointInside) {
    const auto sensitivity = form.words.size() == 1 ? Qt::CaseSensitive : Qt::CaseInsensitive;
    for (const QStringView word : form.words.tokenize(u' ')) {
        if (word.data() != form.words.data()) {
            if (isPoint(charAt(text, at))) {
                ++at;
                pointInside = true;
            }
            if (charAt(text, at) == u' ')
                ++at;
        }
        if (!text.sliced(at).startsWith(word, sensitivity))
            return -1;
        at += word.size();
    }
    const QChar next = charAt(text, at);
    return isAsciiLetter(next) || next.isDigit() || next == u'\'' || next == u'-' ? -1 : at;
}

bool beginsDefinition(QChar next) {
    const bool numbered = next.isDigit() || (next >= u'①' && next <= u'⒛');
    return next.isNull() || isHan(next) || numbered || QStringView(u":：(（[<【〈~～/").contains(next);
}

/// Whether a form without a dot may be a label, depending on the text after it.
bool trusted(Kind kind, QStringView text, qsizetype end) {
    const QChar next = charAt(text, skipBlanks(text, end));
    switch (kind) {
    case Kind::Unmistakable:
        return true;
    case Kind::Letter:
    case Kind::Wordlike:
        return beginsDefinition(next);
    case Kind::Name:
        return beginsDefinition(next) || next == u',' || next == u'，';
    case Kind::PointOnly:
        break;
    }
    return false;
}

std::optional<Found> abbreviationAt(QStringView text, qsizetype at) {
    if (!isAsciiLetter(charAt(text, at)))
        return std::nullopt;
    const QChar initial = text[at].toLower();
    for (const Form &form : forms) {
        if (form.words.front() != initial)
            continue;
        bool pointed = false;
        const qsizetype end = matchWords(text, at, form, pointed);
        if (end < 0)
            continue;
        Found found{partOf(form), end, pointed, form.kind, form.words == u"a"};
        if (isPoint(charAt(text, end))) {
            found.pointed = true;
            ++found.end;
        }
        // Dictionaries that write labels in capitals have no dots.
        constexpr qsizetype shortest = 3;
        const QStringView written = text.sliced(at, end - at);
        const bool isCapital =
            end - at >= shortest && text != written &&
            std::none_of(written.begin(), written.end(), [](QChar c) { return c.isLower(); });
        if (found.pointed || trusted(form.kind, text, end) || (isCapital && form.kind == Kind::Name))
            return found;
    }
    return std::nullopt;
}

std::optional<Found> chineseNameAt(QStringView text, qsizetype at) {
    if (!isHan(charAt(text, at)))
        return std::nullopt;
    for (const ChineseName &name : chineseNames) {
        if (!text.sliced(at).startsWith(name.name))
            continue;
        const qsizetype end = at + name.name.size();
        const QChar next = charAt(text, end);
        if (next.isNull() || next.isSpace() || next == u':' || next == u'：' ||
            (next >= u'①' && next <= u'⑳'))
            return Found{partOf(name), end, true, Kind::Name, false};
    }
    return std::nullopt;
}

/// A label between brackets, such as "(n.)" or "【名词】".
std::optional<LabelMatch> bracketedLabel(QStringView text, qsizetype at) {
    if (!QStringView(u"([<【〔（〈").contains(charAt(text, at)))
        return std::nullopt;
    constexpr qsizetype longest = 30;
    const qsizetype close =
        text.sliced(at, std::min(longest, text.size() - at)).indexOf(closingBracket(text[at]));
    if (close < 0)
        return std::nullopt;
    const QStringView inside = text.sliced(at + 1, close - 1).trimmed();
    auto match =
        inside.isEmpty() || closingBracket(inside[0]).isNull() ? labelAtStart(inside, false) : std::nullopt;
    // A full name in parentheses is probably a remark, as in "4. (助动词) 正在".
    const bool parenthesis = text[at] == u'(' || text[at] == u'（';
    const bool isShortForm = inside == u"n" || inside == u"v" || inside == u"adj" || inside == u"adv" ||
                             inside == u"vt" || inside == u"vi";
    const bool isLabel =
        match && match->length == inside.size() &&
        (inside.endsWith(u'.') || text[at] == u'【' || isShortForm || (containsHan(inside) && !parenthesis));
    if (isLabel) {
        match->length = at + close + 1;
        return match;
    }
    // "[动]" and "〈动〉" mean zoology.
    const bool isClear = text[at] == u'【' || (!parenthesis && inside != u"动" && inside != u"代");
    for (const ChineseName &name : bracketedNames) {
        if (isClear && inside == name.name)
            return LabelMatch{{partOf(name)}, at + close + 1};
    }
    return std::nullopt;
}

/// Skips what joins two labels: "&", "/", ",", "and".
qsizetype skipJoint(QStringView text, qsizetype at) {
    at = skipBlanks(text, at);
    if (QStringView(u"&/,，、;").contains(charAt(text, at)) && at < text.size())
        return skipBlanks(text, at + 1);
    if (text.sliced(at).startsWith(u"and "))
        return skipBlanks(text, at + 4);
    return at;
}

auto findPos(QList<LabelledPart> &parts, QStringView pos) {
    return std::find_if(parts.begin(), parts.end(),
                        [pos](const LabelledPart &known) { return known.part.pos == pos; });
}

void addPart(QList<LabelledPart> &parts, const LabelledPart &added) {
    const auto known = findPos(parts, added.part.pos);
    if (known == parts.end())
        parts.append(added);
    else if (known->context.isEmpty())
        // As in "n. [pl.]": the second label only qualifies the first.
        known->context = added.context;
}

QList<LabelledPart> withVerbsJoined(QList<LabelledPart> parts) {
    if (findPos(parts, u"intransitive verb") == parts.end())
        return parts;
    if (const auto transitive = findPos(parts, u"transitive verb"); transitive != parts.end()) {
        transitive->part.pos = QStringLiteral("verb");
        parts.erase(findPos(parts, u"intransitive verb"));
    }
    return parts;
}

/// Skips the Chinese names that explain a label, as in "N-UNCOUNT 不可数名词".
qsizetype skipExplanation(QStringView text, qsizetype end, const Found &first) {
    constexpr int mostNames = 3;
    qsizetype at = first.pointed ? end : skipJoint(text, end);
    for (int i = 0; i < mostNames; ++i) {
        const auto name = chineseNameAt(text, skipBlanks(text, at));
        // Without a text behind it, the name may be the meaning: "n. 名词".
        if (!name || (first.pointed && skipBlanks(text, name->end) >= text.size()))
            break;
        end = name->end;
        at = skipJoint(text, end);
    }
    return end;
}

/// The label at `at`, with the labels joined to it.
std::optional<LabelMatch> labelsFrom(QStringView text, qsizetype at, const Found &first) {
    LabelMatch match;
    qsizetype end = first.end;
    addPart(match.parts, first.part);
    constexpr int mostLabels = 6;
    for (int i = 0; i < mostLabels; ++i) {
        const auto next = abbreviationAt(text, skipJoint(text, end));
        if (!next || !(next->pointed || next->kind == Kind::Unmistakable) || next->isLetterA)
            break;
        addPart(match.parts, next->part);
        end = next->end;
    }
    // Letters directly after a dot belong to something else, such as "a.m." or "v.s.o.p.".
    if (isAsciiLetter(charAt(text, end)) && charAt(text, end - 1) == u'.')
        return std::nullopt;
    match.parts = withVerbsJoined(match.parts);
    if (first.kind == Kind::Unmistakable || first.kind == Kind::Name || first.kind == Kind::Wordlike)
        end = skipExplanation(text, end, first);
    end = skipBlanks(text, end);
    while (end < text.size() && QStringView(u"::：,，、").contains(text[end]))
        end = skipBlanks(text, end + 1);
    match.length = end - at;
    return match;
}

/// Skips ornaments and Roman numerals that may come before a label.
qsizetype skipOrnaments(QStringView line) {
    qsizetype at = 0;
    while (at < line.size() &&
           (line[at].isSpace() || QStringView(u"-–—*•·▪■◆●○►♦★☆ⅠⅡⅢⅣⅤⅥ").contains(line[at])))
        ++at;
    qsizetype end = at;
    while (end < line.size() && QStringView(u"IVX").contains(line[end]))
        ++end;
    if (charAt(line, end) == u'.' && end - at <= 4)
        at = skipBlanks(line, end + 1);
    return at;
}

/// Skips "一、" before the name of a part of speech.
qsizetype skipChineseNumber(QStringView line, qsizetype at) {
    if (!QStringView(u"一二三四五六七八九").contains(charAt(line, at)) || at >= line.size() ||
        !QStringView(u"、.．").contains(charAt(line, at + 1)))
        return at;
    const qsizetype text = skipBlanks(line, at + 2);
    return chineseNameAt(line, text) || abbreviationAt(line, text) ? text : at;
}

} // namespace

std::optional<LabelMatch> labelAtStart(QStringView line, bool lettersCount) {
    qsizetype at = skipChineseNumber(line, skipOrnaments(line));
    // "A. n. … B. v. …"
    const QChar letter = charAt(line, at);
    const qsizetype behind = charAt(line, at + 1) == u'.' ? at + 2 : at + 1;
    const bool isLettered = letter >= u'A' && letter <= u'I' && charAt(line, behind).isSpace();
    if (isLettered && abbreviationAt(line, skipBlanks(line, behind)))
        at = skipBlanks(line, behind);
    // "II n"
    qsizetype roman = at;
    while (roman < line.size() && QStringView(u"IVX").contains(line[roman]))
        ++roman;
    if (roman > at + 1 && charAt(line, roman).isSpace() && abbreviationAt(line, skipBlanks(line, roman)))
        at = skipBlanks(line, roman);
    if (auto match = bracketedLabel(line, at)) {
        match->length = skipBlanks(line, match->length);
        return match;
    }
    // "名 apple" in a dictionary of Chinese words.
    for (const ChineseName &name : bracketedNames) {
        const qsizetype text = skipBlanks(line, at + 1);
        if (charAt(line, at) == name.name[0] && text > at + 1 && isAsciiLetter(charAt(line, text)))
            return LabelMatch{{partOf(name)}, text};
    }
    auto found = abbreviationAt(line, at);
    if (!found)
        found = chineseNameAt(line, at);
    if (!found || (found->isLetterA && lettersCount))
        return std::nullopt;
    auto match = labelsFrom(line, at, *found);
    if (match)
        match->length += at;
    return match;
}

std::optional<LabelMatch> labelInside(QStringView line, qsizetype position) {
    const QChar adjacent = charAt(line, position - 1);
    if (isAsciiLetter(adjacent) || adjacent.isDigit() || QStringView(u".'’-&/").contains(adjacent))
        return std::nullopt;
    // A quick check, so that most words of a long text need not be compared with every form.
    constexpr qsizetype longest = 6;
    qsizetype end = position;
    while (end - position < longest && isAsciiLetter(charAt(line, end)))
        ++end;
    if (charAt(line, end) != u'.')
        return std::nullopt;
    const auto found = abbreviationAt(line, position);
    if (!found || !found->pointed || found->kind == Kind::Name)
        return std::nullopt;
    auto match = labelsFrom(line, position, *found);
    if (!match)
        return std::nullopt;
    qsizetype before = position - 1;
    while (before > 0 && line[before].isSpace())
        --before;
    const QChar previous = charAt(line, before);
    const QChar next = charAt(line, position + match->length);
    const bool separated = QStringView(u";；。)）】]|").contains(previous);
    const bool parted = separated || isHan(previous) || QStringView(u",，.:：…").contains(previous);
    if (found->kind == Kind::Unmistakable)
        return parted || isHan(next) ? match : std::nullopt;
    if (found->kind == Kind::Letter && separated && !next.isNull())
        return match;
    return parted && !next.isNull() && beginsDefinition(next) ? match : std::nullopt;
}

} // namespace lexiquill::article
