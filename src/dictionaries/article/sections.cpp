#include "dictionaries/article/sections.h"

#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace lexiquill::article {

namespace {

/// Titles end with one of these names; a word such as 常用 may come before it.
struct Title {
    QStringView name;
    Section section;
};

const Title chineseTitles[] = {
    {u"英英释义", Section::Definitions}, {u"英文释义", Section::Definitions},
    {u"英语解释", Section::Definitions}, {u"英文解释", Section::Definitions},
    {u"英英解释", Section::Definitions}, {u"例句与用法", Section::Examples},
    {u"网络释义", Section::Web},         {u"网络解释", Section::Web},
    {u"同根词", Section::Other},         {u"词性", Section::Senses},
    {u"释义", Section::Senses},          {u"解释", Section::Senses},
    {u"词义", Section::Senses},          {u"含义", Section::Senses},
    {u"词组", Section::Phrases},         {u"短语", Section::Phrases},
    {u"习语", Section::Phrases},         {u"成语", Section::Phrases},
    {u"俗语", Section::Phrases},         {u"谚语", Section::Phrases},
    {u"习惯用语", Section::Phrases},     {u"惯用语", Section::Phrases},
    {u"惯用法", Section::Phrases},       {u"搭配", Section::Phrases},
    {u"短语动词", Section::Phrases},     {u"动词词组", Section::Phrases},
    {u"例句", Section::Examples},        {u"例证", Section::Examples},
    {u"用例", Section::Examples},        {u"派生词", Section::Other},
    {u"派生", Section::Other},           {u"衍生词", Section::Other},
    {u"近义词", Section::Other},         {u"同义词", Section::Other},
    {u"反义词", Section::Other},         {u"近义", Section::Other},
    {u"同义", Section::Other},           {u"反义", Section::Other},
    {u"词形变化", Section::Other},       {u"词性变化", Section::Other},
    {u"词类变化", Section::Other},       {u"词形", Section::Other},
    {u"变形", Section::Other},           {u"变化形", Section::Other},
    {u"时态", Section::Other},           {u"词根", Section::Other},
    {u"词缀", Section::Other},           {u"词源", Section::Other},
    {u"语源", Section::Other},           {u"辨析", Section::Other},
    {u"用法", Section::Other},           {u"用法说明", Section::Other},
    {u"语法", Section::Other},           {u"参考", Section::Other},
    {u"参见", Section::Other},           {u"参照", Section::Other},
    {u"参考词汇", Section::Other},       {u"相关词", Section::Other},
    {u"相关词汇", Section::Other},       {u"相关单词", Section::Other},
    {u"联想词", Section::Other},         {u"形近词", Section::Other},
    {u"上义词", Section::Other},         {u"下义词", Section::Other},
    {u"助记", Section::Other},           {u"记忆", Section::Other},
    {u"记忆法", Section::Other},         {u"备注", Section::Other},
    {u"词频", Section::Other},           {u"频率", Section::Other},
    {u"级别", Section::Other},           {u"等级", Section::Other},
    {u"考试", Section::Other},           {u"星级", Section::Other},
    {u"来源", Section::Other},           {u"过去式", Section::Other},
    {u"过去分词", Section::Other},       {u"现在分词", Section::Other},
    {u"第三人称单数", Section::Other},   {u"单三", Section::Other},
    {u"比较级", Section::Other},         {u"最高级", Section::Other},
    {u"原型", Section::Other},           {u"原形", Section::Other},
    {u"名词复数", Section::Other},       {u"复数形式", Section::Other},
    {u"量词", Section::Other},
};

const Title englishTitles[] = {
    {u"phrases", Section::Phrases},
    {u"idioms", Section::Phrases},
    {u"phrasal verbs", Section::Phrases},
    {u"collocations", Section::Phrases},
    {u"idm", Section::Phrases},
    {u"phr v", Section::Phrases},
    {u"examples", Section::Examples},
    {u"example sentences", Section::Examples},
    {u"syn", Section::Other},
    {u"ant", Section::Other},
    {u"opp", Section::Other},
    {u"synonym", Section::Other},
    {u"antonym", Section::Other},
    {u"synonyms", Section::Other},
    {u"antonyms", Section::Other},
    {u"derivatives", Section::Other},
    {u"derived words", Section::Other},
    {u"etymology", Section::Other},
    {u"origin", Section::Other},
    {u"word origin", Section::Other},
    {u"see also", Section::Other},
    {u"word forms", Section::Other},
    {u"word family", Section::Other},
    {u"usage note", Section::Other},
    {u"related terms", Section::Other},
    {u"derived terms", Section::Other},
    {u"related words", Section::Other},
    {u"references", Section::Other},
    {u"external links", Section::Other},
    {u"pronunciation", Section::Other},
    {u"anagrams", Section::Other},
    {u"translations", Section::Other},
    {u"further reading", Section::Other},
    {u"alternative forms", Section::Other},
};

std::optional<Section> sectionNamed(QStringView name) {
    constexpr qsizetype longestPrefix = 6;
    for (const Title &title : englishTitles) {
        if (name.compare(title.name, Qt::CaseInsensitive) == 0)
            return title.section;
    }
    if (!std::all_of(name.begin(), name.end(), [](QChar c) { return isHan(c) || c == u'、' || c == u'/'; }))
        return std::nullopt;
    const Title *best = nullptr;
    for (const Title &title : chineseTitles) {
        const bool matches = name.endsWith(title.name) && name.size() <= title.name.size() + longestPrefix;
        if (matches && (!best || title.name.size() > best->name.size()))
            best = &title;
    }
    return best ? std::optional(best->section) : std::nullopt;
}

bool isOrnament(QChar c) {
    return c.isSpace() || QStringView(u"■□▪▫◆◇●○★☆·•※▲▼►▶▸▷♦*#=—-").contains(c);
}

bool isStar(QChar c) {
    return c.isSpace() || QStringView(u"★☆✩✭⭐").contains(c);
}

/// Names of examinations and lists of words.
bool isExamination(QStringView word) {
    static const QSet<QString> names{
        QStringLiteral("中考"),  QStringLiteral("高考"),  QStringLiteral("考研"),  QStringLiteral("四级"),
        QStringLiteral("六级"),  QStringLiteral("专四"),  QStringLiteral("专八"),  QStringLiteral("托福"),
        QStringLiteral("雅思"),  QStringLiteral("cet4"),  QStringLiteral("cet6"),  QStringLiteral("cet-4"),
        QStringLiteral("cet-6"), QStringLiteral("tem4"),  QStringLiteral("tem8"),  QStringLiteral("tem-4"),
        QStringLiteral("tem-8"), QStringLiteral("toefl"), QStringLiteral("ielts"), QStringLiteral("gre"),
        QStringLiteral("gmat"),  QStringLiteral("sat"),   QStringLiteral("zk"),    QStringLiteral("gk"),
        QStringLiteral("ky"),    QStringLiteral("coca"),  QStringLiteral("bnc"),   QStringLiteral("oxford"),
        QStringLiteral("中高"),
    };
    return names.contains(word.toString().toLower());
}

/// A level such as "-K5".
bool isLevel(QStringView word) {
    constexpr qsizetype longest = 8;
    return word.size() >= 3 && word.size() <= longest && word[0] == u'-' && word[1].isUpper() &&
           isAsciiLetter(word[1]) && word.back().isDigit() &&
           std::all_of(word.begin() + 1, word.end(),
                       [](QChar c) { return c.isDigit() || (isAsciiLetter(c) && c.isUpper()); });
}

/// The inside of a bracket that only has numbers, as in "275/289" or "中高 275/289", or examinations.
bool isFrequency(QStringView inside) {
    bool hasDigit = false;
    bool hasName = false;
    for (QStringView word : inside.tokenize(u' ')) {
        while (!word.isEmpty() && QStringView(u",，、:：#/").contains(word.back()))
            word.chop(1);
        if (word.isEmpty())
            continue;
        if (std::all_of(word.begin(), word.end(), [](QChar c) { return c.isDigit() || c == u'/'; }))
            hasDigit = true;
        else if (isExamination(word) || isLevel(word))
            hasName = true;
        else
            return false;
    }
    return hasName || (hasDigit && inside.contains(u'/'));
}

constexpr qsizetype longestTag = 40;

/// Length of the tag that `text` begins with; 0 if there is none.
qsizetype tagLength(QStringView text) {
    qsizetype end = 0;
    while (end < text.size() && end < longestTag && !text[end].isSpace())
        ++end;
    if (isLevel(text.first(end)))
        return end;
    if (text.isEmpty() || !QStringView(u"([（【").contains(text[0]))
        return 0;
    const qsizetype close = text.first(std::min(longestTag, text.size())).indexOf(closingBracket(text[0]));
    return close > 1 && isFrequency(text.sliced(1, close - 1)) ? close + 1 : 0;
}

/// Titles of tags that are not tags if Chinese follows, as in "[复数] 数据".
bool isInflection(QStringView name) {
    return name == u"复数" || name == u"单数" || name == u"pl." || name == u"缩写" || name == u"全称";
}

/// The head of a table, such as "词性 释义".
bool isTableHead(QStringView text) {
    int names = 0;
    if (!isHan(text[0]) || !text.contains(u' '))
        return false;
    for (const QStringView name : text.tokenize(u' ')) {
        if (!containsHan(name) || !sectionNamed(name))
            return false;
        ++names;
    }
    return names > 1;
}

/// A line such as "复数: mice" or "SYN clever", which names other words.
bool namesOtherWords(QStringView text) {
    constexpr qsizetype longest = 200;
    if (text.size() > longest)
        return false;
    if (containsHan(text.sliced(text.size() / 2)))
        return false;
    for (const QStringView mark : {u"SYN ", u"OPP ", u"ANT ", u"SYN:", u"OPP:"}) {
        if (text.startsWith(mark))
            return true;
    }
    const auto colon =
        std::find_if(text.begin(), text.end(), [](QChar c) { return c == u':' || c == u'：'; });
    const qsizetype length = colon - text.begin();
    return colon != text.end() && isInflection(text.first(length).trimmed()) &&
           !containsHan(text.sliced(length));
}

/// The name of a form behind another word, as in "[good] 比较级" or "[go] 的过去式".
bool namesForm(QStringView inside, QStringView rest) {
    static constexpr QStringView names[] = {u"比较级", u"最高级",   u"过去式",   u"过去分词",
                                            u"复数",   u"现在分词", u"第三人称", u"名词复数"};
    if (rest.startsWith(u"的"))
        rest = rest.sliced(1);
    constexpr qsizetype longest = 24;
    return !containsHan(inside) && rest.size() <= longest &&
           std::any_of(std::begin(names), std::end(names),
                       [rest](QStringView name) { return rest.startsWith(name); });
}

} // namespace

std::optional<SectionStart> sectionAtStart(QStringView line) {
    constexpr qsizetype longest = 24;
    // "变形 复数: pears": the inflections follow the title without a colon.
    const QStringView glance = line.first(std::min(longest, line.size()));
    const qsizetype blank = glance.indexOf(u' ');
    const bool isTitled = blank > 1 && sectionNamed(glance.first(blank)) == Section::Other &&
                          std::any_of(line.begin(), line.end(), isAsciiLetter) && isHan(line[0]);
    if (isTitled)
        return SectionStart{Section::Other, skipBlanks(line, blank), true};
    qsizetype start = 0;
    while (start < line.size() && isOrnament(line[start]))
        ++start;
    for (const QStringView mark : {u"IDM ", u"IDIOMS ", u"PHR V ", u"PHRASAL VERBS "}) {
        if (line.sliced(start).startsWith(mark))
            return SectionStart{Section::Phrases, start + mark.size(), true};
    }
    const QChar open = charAt(line, start);
    const bool bracketed = !open.isNull() && QStringView(u"[【〖〔［《<").contains(open);
    const qsizetype nameStart = bracketed ? start + 1 : start;
    const QStringView front = line.sliced(nameStart, std::min(longest, line.size() - nameStart));
    qsizetype length = -1;
    if (bracketed) {
        length = front.indexOf(closingBracket(open));
    } else {
        const auto end = std::find_if(front.begin(), front.end(),
                                      [](QChar c) { return c == u':' || c == u'：' || c == u'='; });
        if (end != front.end() || line.size() - nameStart < longest)
            length = end - front.begin();
    }
    // "[反] cold"
    const bool isOpposite = bracketed && length == 1 && QStringView(u"反同近").contains(front[0]) &&
                            !containsHan(front.sliced(length));
    if (length < 2 && !isOpposite)
        return std::nullopt;
    const auto section = isOpposite ? Section::Other : sectionNamed(front.first(length).trimmed());
    if (!section)
        return std::nullopt;
    qsizetype end = nameStart + length;
    SectionStart found{*section, 0, bracketed || !charAt(line, end).isNull()};
    if (bracketed)
        ++end;
    while (end < line.size() && (line[end].isSpace() || QStringView(u":：=").contains(line[end])))
        ++end;
    found.length = end;
    return found;
}

QStringView withoutTags(QStringView text) {
    text = text.trimmed();
    // Most texts have no tag.
    if (text.isEmpty() || (!QStringView(u"([（【-★☆✩✭⭐").contains(text.front()) &&
                           !QStringView(u")]）】★☆✩✭⭐").contains(text.back()) && !text.back().isDigit()))
        return text;
    bool changed = true;
    while (changed && !text.isEmpty()) {
        const qsizetype before = text.size();
        while (!text.isEmpty() && isStar(text.front()))
            text = text.sliced(1);
        while (!text.isEmpty() && isStar(text.back()))
            text.chop(1);
        text = text.sliced(tagLength(text)).trimmed();
        const qsizetype reach = std::max<qsizetype>(0, text.size() - longestTag);
        for (const char16_t mark : {u'(', u'[', u'（', u'【', u'-'}) {
            const qsizetype at = reach + text.sliced(reach).lastIndexOf(QChar(mark));
            if (at < reach || tagLength(text.sliced(at)) != text.size() - at)
                continue;
            if (at == 0 || mark != u'-' || text[at - 1].isSpace()) {
                text = text.first(at).trimmed();
                break;
            }
        }
        changed = text.size() != before;
    }
    return text;
}

bool isTagLine(QStringView line) {
    const QStringView text = withoutTags(line);
    if (text.isEmpty() || text.startsWith(u"CL:") || isFrequency(text) || namesOtherWords(text) ||
        isTableHead(text))
        return true;
    if (text[0] != u'[' && text[0] != u'【')
        return false;
    const qsizetype close = text.first(std::min(longestTag, text.size())).indexOf(closingBracket(text[0]));
    if (close < 0)
        return false;
    const QStringView name = text.sliced(1, close - 1).trimmed();
    const QStringView rest = text.sliced(close + 1).trimmed();
    return namesForm(name, rest) || (isInflection(name) && !rest.isEmpty() && !containsHan(rest)) ||
           name == u"syn" || name.startsWith(u"syn:") || name.startsWith(u"ant:") ||
           name.startsWith(u"also:");
}

qsizetype exampleMarkLength(QStringView line) {
    static constexpr QStringView marks[] = {
        u"▸",      u"▶",      u"►",      u"▷",     u"·",    u"◆",   u"•", u"¶", u"【例】", u"[例]", u"〔例〕",
        u"（例）", u"〖例〗", u"例如：", u"例如:", u"例：", u"例:", u"◇", u"♦", u"e.g.",   u"E.g.", u"eg."};
    qsizetype at = 0;
    bool found = true;
    while (found) {
        found = std::any_of(std::begin(marks), std::end(marks), [&](QStringView mark) {
            if (!line.sliced(at).startsWith(mark))
                return false;
            at = skipBlanks(line, at + mark.size());
            return true;
        });
        if (!found && charAt(line, at) == u'*' && charAt(line, at + 1).isSpace()) {
            at = skipBlanks(line, at + 1);
            found = true;
        }
    }
    return at;
}

} // namespace lexiquill::article
