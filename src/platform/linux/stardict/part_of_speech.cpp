#include "platform/linux/stardict/part_of_speech.h"

#include "platform/linux/stardict/text_scan.h"

#include <algorithm>

namespace lexiquill::stardict {

namespace {

/// How far a form can be trusted when no point stands behind it.
enum class Kind {
    /// One letter: only in front of what begins a definition.
    Letter,
    /// Not a word of the language, so it cannot be running text.
    Unmistakable,
    /// Also (nearly) a word.
    Wordlike,
    /// Needs its point.
    PointOnly,
    /// Written in full.
    Name,
};

struct Form {
    /// Words in lower case; each may have a point and a blank behind it.
    QStringView words;
    QStringView label;
    QStringView context;
    Kind kind;
};

// Longer forms stand before those they begin with.
const Form forms[] = {
    {u"intransitive verb", u"intransitive verb", u"", Kind::Name},
    {u"transitive verb", u"transitive verb", u"", Kind::Name},
    {u"auxiliary verb", u"verb", u"", Kind::Name},
    {u"phrasal verb", u"phrasal verb", u"", Kind::Name},
    {u"plural noun", u"noun", u"复数", Kind::Name},
    {u"proper noun", u"noun", u"", Kind::Name},
    {u"modal verb", u"verb", u"", Kind::Name},
    {u"abbreviation", u"noun", u"缩写", Kind::Name},
    {u"interjection", u"interjection", u"", Kind::Name},
    {u"conjunction", u"conjunction", u"", Kind::Name},
    {u"exclamation", u"interjection", u"", Kind::Name},
    {u"preposition", u"preposition", u"", Kind::Name},
    {u"determiner", u"adjective", u"限定词", Kind::Name},
    {u"adjective", u"adjective", u"", Kind::Name},
    {u"pronoun", u"pronoun", u"", Kind::Name},
    {u"numeral", u"数", u"", Kind::Name},
    {u"adverb", u"adverb", u"", Kind::Name},
    {u"phrase", u"idiom", u"", Kind::Name},
    {u"idiom", u"idiom", u"", Kind::Name},
    {u"noun", u"noun", u"", Kind::Name},
    {u"verb", u"verb", u"", Kind::Name},
    {u"comb form", u"noun", u"构词成分", Kind::PointOnly},
    {u"modal aux", u"verb", u"", Kind::PointOnly},
    {u"modal v", u"verb", u"", Kind::PointOnly},
    {u"aux v", u"verb", u"", Kind::PointOnly},
    {u"link v", u"verb", u"", Kind::PointOnly},
    {u"v aux", u"verb", u"", Kind::PointOnly},
    {u"v link", u"verb", u"", Kind::PointOnly},
    {u"phr v", u"phrasal verb", u"", Kind::PointOnly},
    {u"n pl", u"noun", u"复数", Kind::PointOnly},
    {u"pl n", u"noun", u"复数", Kind::PointOnly},
    {u"v t", u"transitive verb", u"", Kind::PointOnly},
    {u"v i", u"intransitive verb", u"", Kind::PointOnly},
    {u"interj", u"interjection", u"", Kind::Unmistakable},
    {u"conj", u"conjunction", u"", Kind::Unmistakable},
    {u"pron", u"pronoun", u"", Kind::Unmistakable},
    {u"prep", u"preposition", u"", Kind::Wordlike},
    {u"excl", u"interjection", u"", Kind::Wordlike},
    {u"abbr", u"noun", u"缩写", Kind::Wordlike},
    {u"pref", u"noun", u"前缀", Kind::Wordlike},
    {u"symb", u"noun", u"符号", Kind::Wordlike},
    {u"comb", u"noun", u"构词成分", Kind::PointOnly},
    {u"modal", u"verb", u"", Kind::PointOnly},
    {u"adj", u"adjective", u"", Kind::Unmistakable},
    {u"adv", u"adverb", u"", Kind::Wordlike},
    {u"art", u"adjective", u"冠词", Kind::PointOnly},
    {u"aux", u"verb", u"", Kind::Wordlike},
    {u"det", u"adjective", u"限定词", Kind::Wordlike},
    {u"int", u"interjection", u"", Kind::PointOnly},
    {u"num", u"数", u"", Kind::Wordlike},
    {u"phr", u"idiom", u"", Kind::Wordlike},
    {u"suf", u"noun", u"后缀", Kind::Wordlike},
    {u"vt", u"transitive verb", u"", Kind::Unmistakable},
    {u"vi", u"intransitive verb", u"", Kind::Unmistakable},
    {u"ad", u"adverb", u"", Kind::PointOnly},
    {u"pl", u"noun", u"复数", Kind::PointOnly},
    {u"n", u"noun", u"", Kind::Letter},
    {u"v", u"verb", u"", Kind::Letter},
    {u"a", u"adjective", u"", Kind::PointOnly},
};

struct ChineseName {
    QStringView name;
    QStringView label;
    QStringView context;
};

const ChineseName chineseNames[] = {
    {u"不及物动词", u"intransitive verb", u""},
    {u"及物动词", u"transitive verb", u""},
    {u"情态动词", u"verb", u""},
    {u"短语动词", u"phrasal verb", u""},
    {u"动词短语", u"phrasal verb", u""},
    {u"助动词", u"verb", u""},
    {u"形容词", u"adjective", u""},
    {u"感叹词", u"interjection", u""},
    {u"限定词", u"adjective", u"限定词"},
    {u"名词", u"noun", u""},
    {u"动词", u"verb", u""},
    {u"副词", u"adverb", u""},
    {u"代词", u"pronoun", u""},
    {u"介词", u"preposition", u""},
    {u"连词", u"conjunction", u""},
    {u"叹词", u"interjection", u""},
    {u"数词", u"数", u""},
    {u"量词", u"量", u""},
    {u"冠词", u"adjective", u"冠词"},
    {u"短语", u"idiom", u""},
    {u"词组", u"idiom", u""},
    {u"习语", u"idiom", u""},
    {u"成语", u"idiom", u""},
};

// One character is enough between heavy brackets only; 数 and 量 are subjects there.
const ChineseName bracketedNames[] = {
    {u"名", u"noun", u""},        {u"动", u"verb", u""},         {u"形", u"adjective", u""},
    {u"副", u"adverb", u""},      {u"代", u"pronoun", u""},      {u"介", u"preposition", u""},
    {u"连", u"conjunction", u""}, {u"叹", u"interjection", u""},
};

/// A single label together with how it was written.
struct Found {
    PartOfSpeech part;
    /// Where it ends, its point included.
    qsizetype end = 0;
    bool pointed = false;
    Kind kind = Kind::Name;
    bool isLetterA = false;
};

/// Where the words of a form end in the text; -1 when they are not there.
qsizetype matchWords(QStringView text, qsizetype at, const Form &form, bool &pointInside) {
    const auto sensitivity = form.words.size() == 1 ? Qt::CaseSensitive : Qt::CaseInsensitive;
    for (const QStringView word : form.words.tokenize(u' ')) {
        if (word.data() != form.words.data()) {
            if (charAt(text, at) == u'.') {
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
    return next.isNull() || isHan(next) || numbered || QStringView(u":：(（[<【〈").contains(next);
}

/// Whether a form without a point may be a label, judged by what follows.
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
        Found found{
            {form.label.toString(), form.context.toString()}, end, pointed, form.kind, form.words == u"a"};
        if (charAt(text, end) == u'.') {
            found.pointed = true;
            ++found.end;
        }
        if (found.pointed || trusted(form.kind, text, end))
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
            return Found{{name.label.toString(), name.context.toString()}, end, true, Kind::Name, false};
    }
    return std::nullopt;
}

/// A label between brackets, such as "(n.)" or "【名词】".
std::optional<LabelMatch> bracketedLabel(QStringView text, qsizetype at) {
    if (!QStringView(u"([<【〔（").contains(charAt(text, at)))
        return std::nullopt;
    constexpr qsizetype longest = 30;
    const qsizetype close =
        text.sliced(at, std::min(longest, text.size() - at)).indexOf(closingBracket(text[at]));
    if (close < 0)
        return std::nullopt;
    const QStringView inside = text.sliced(at + 1, close - 1).trimmed();
    auto match =
        inside.isEmpty() || closingBracket(inside[0]).isNull() ? labelAtStart(inside, false) : std::nullopt;
    // Names between parentheses are rather remarks, as in "4. (助动词) 正在".
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
    for (const ChineseName &name : bracketedNames) {
        if (text[at] == u'【' && inside == name.name)
            return LabelMatch{{{name.label.toString(), name.context.toString()}}, at + close + 1};
    }
    return std::nullopt;
}

/// Past what joins two labels: "&", "/", ",", "and".
qsizetype skipJoint(QStringView text, qsizetype at) {
    at = skipBlanks(text, at);
    if (QStringView(u"&/,，、;").contains(charAt(text, at)) && at < text.size())
        return skipBlanks(text, at + 1);
    if (text.sliced(at).startsWith(u"and "))
        return skipBlanks(text, at + 4);
    return at;
}

void addPart(QList<PartOfSpeech> &parts, const PartOfSpeech &part) {
    const auto has = [&parts](QStringView label) {
        return std::any_of(parts.begin(), parts.end(),
                           [label](const auto &known) { return known.label == label; });
    };
    // "n. [pl.]" and the like: the second label only qualifies the first.
    if (has(part.label)) {
        for (PartOfSpeech &known : parts) {
            if (known.label == part.label && known.context.isEmpty())
                known.context = part.context;
        }
        return;
    }
    parts.append(part);
}

QList<PartOfSpeech> withVerbsJoined(QList<PartOfSpeech> parts) {
    const auto indexOf = [&parts](QStringView label) {
        return std::find_if(parts.begin(), parts.end(),
                            [label](const auto &part) { return part.label == label; });
    };
    const auto transitive = indexOf(u"transitive verb");
    if (transitive != parts.end() && indexOf(u"intransitive verb") != parts.end()) {
        transitive->label = QStringLiteral("verb");
        parts.erase(indexOf(u"intransitive verb"));
    }
    return parts;
}

/// The label at `at` with those joined to it.
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
    // Letters right behind a point belong to something else, such as "a.m." or "v.s.o.p.".
    if (isAsciiLetter(charAt(text, end)) && charAt(text, end - 1) == u'.')
        return std::nullopt;
    match.parts = withVerbsJoined(match.parts);
    end = skipBlanks(text, end);
    while (end < text.size() && QStringView(u"::：,，、").contains(text[end]))
        end = skipBlanks(text, end + 1);
    match.length = end - at;
    return match;
}

/// Past ornaments and Roman numerals that may stand in front of a label.
qsizetype skipOrnaments(QStringView line) {
    qsizetype at = 0;
    while (at < line.size() &&
           (line[at].isSpace() || QStringView(u"-–—*•·▪■◆●○►♦★☆ⅠⅡⅢⅣⅤⅥ").contains(line[at])))
        ++at;
    qsizetype end = at;
    while (end < line.size() && QStringView(u"IVX").contains(line[end]))
        ++end;
    if (charAt(line, end) == u'.' && end - at <= 4)
        return skipBlanks(line, end + 1);
    return at;
}

} // namespace

std::optional<LabelMatch> labelAtStart(QStringView line, bool lettersCount) {
    const qsizetype at = skipOrnaments(line);
    if (auto match = bracketedLabel(line, at)) {
        match->length = skipBlanks(line, match->length);
        return match;
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
    // Spares nearly all words of a long text the comparison with every form.
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
    const bool separated = QStringView(u";；。)）】]").contains(previous);
    const bool parted = separated || isHan(previous) || QStringView(u",，.:：…").contains(previous);
    if (found->kind == Kind::Unmistakable)
        return parted || isHan(next) ? match : std::nullopt;
    if (found->kind == Kind::Letter && separated && !next.isNull())
        return match;
    return parted && !next.isNull() && beginsDefinition(next) ? match : std::nullopt;
}

} // namespace lexiquill::stardict
