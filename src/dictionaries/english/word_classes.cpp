#include "dictionaries/english/word_classes.h"

#include "support/text.h"

#include <QHash>

#include <algorithm>

namespace lexiquill::english {

namespace {

constexpr WordClasses noClass;
// For the names of phrases, which may be of any kind.
constexpr WordClasses anyClass =
    WordClasses(WordClass::Noun) | WordClass::Verb | WordClass::Adjective | WordClass::Adverb;

struct Names {
    WordClasses classes;
    QStringView words;
};

// Numbers and abbreviations have plurals, like nouns.
constexpr Names names[] = {
    {WordClass::Noun,
     u"n noun nouns num numeral number pl plural abbr abbreviation symbol 名 名词 数 数词 量 "
     u"量词 缩写"},
    {WordClass::Verb, u"v vt vi vb verb verbs aux auxiliary modal 动 动词"},
    {WordClass::Adjective, u"a adj adjective adjectives det determiner 形 形容词"},
    {WordClass::Adverb, u"ad adv adverb adverbs 副 副词"},
    {anyClass, u"idiom idioms phr phrase phrases 短语 词组 习语 成语 惯用语"},
    {noClass,
     u"pron pronoun prep preposition conj conjunction art article int interj interjection excl "
     u"exclamation particle pref prefix suf suff suffix 代 代词 介 介词 连 连词 冠 冠词 叹 叹词 助词 "
     u"限定词 前缀 后缀"},
};

/// Chinese names are also found within longer ones, such as 动词 in 不及物动词.
std::optional<WordClasses> classesNamedBy(const QString &word) {
    static const QHash<QString, WordClasses> table = [] {
        QHash<QString, WordClasses> classes;
        for (const Names &entry : names) {
            for (const QStringView name : entry.words.tokenize(u' '))
                classes.insert(name.toString(), entry.classes);
        }
        return classes;
    }();
    if (const auto known = table.find(word); known != table.end())
        return *known;
    constexpr qsizetype longestName = 12;
    if (!isHan(word.front().unicode()) || word.size() > longestName)
        return std::nullopt;
    std::optional<WordClasses> found;
    for (auto name = table.begin(); name != table.end(); ++name) {
        if (name.key().size() > 1 && isHan(name.key().front().unicode()) && word.contains(name.key()))
            found = found.value_or(noClass) | name.value();
    }
    return found;
}

} // namespace

std::optional<WordClasses> namedClasses(const QStringList &partsOfSpeech) {
    std::optional<WordClasses> found;
    for (const QString &text : partsOfSpeech) {
        auto begin = text.begin();
        while (begin != text.end()) {
            const bool han = isHan(begin->unicode());
            const auto end = std::find_if(
                begin, text.end(), [han](QChar c) { return !c.isLetter() || isHan(c.unicode()) != han; });
            if (begin == end) {
                ++begin;
                continue;
            }
            if (const auto classes = classesNamedBy(QString(begin, end - begin).toLower()))
                found = found.value_or(noClass) | *classes;
            begin = end;
        }
    }
    return found;
}

} // namespace lexiquill::english
