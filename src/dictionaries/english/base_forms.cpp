#include "dictionaries/english/base_forms.h"

#include "dictionaries/english/irregular_forms.h"
#include "dictionaries/english/word_lists.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace lexiquill::english {

namespace {

constexpr qsizetype mostCandidates = 8;
constexpr QStringView apostrophes = u"'’ʼ";

/// Lowers only ASCII letters: others may change the length, and the endings are ASCII.
QString lowered(const QString &word) {
    QString lower = word;
    for (QChar &c : lower) {
        if (c >= u'A' && c <= u'Z')
            c = QChar(c.unicode() + (u'a' - u'A'));
    }
    return lower;
}

/// Letters of other scripts and with accents count as vowels.
bool isVowelAt(QStringView word, qsizetype i) {
    const QChar c = word[i];
    if (c == u'u')
        return i == 0 || word[i - 1] != u'q';
    if (c == u'y')
        return i > 0 && !isVowelAt(word, i - 1);
    return QStringView(u"aeio").contains(c) || (c.unicode() > 0x7f && c.isLetter());
}

bool isConsonantAt(QStringView word, qsizetype i) {
    return i >= 0 && i < word.size() && word[i].isLetter() && !isVowelAt(word, i);
}

qsizetype vowelGroups(QStringView word) {
    qsizetype groups = 0;
    for (qsizetype i = 0; i < word.size(); ++i) {
        if (isVowelAt(word, i) && (i == 0 || !isVowelAt(word, i - 1)))
            ++groups;
    }
    return groups;
}

bool endsWithAny(QStringView word, std::initializer_list<QStringView> endings) {
    return std::any_of(endings.begin(), endings.end(),
                       [word](QStringView ending) { return word.endsWith(ending); });
}

/// True for stems such as "runn" and "call".
bool endsDoubled(QStringView stem) {
    const qsizetype size = stem.size();
    return size >= 3 && stem[size - 1] == stem[size - 2] && isConsonantAt(stem, size - 1);
}

/// True for words such as "hop" and "quit", which double their last consonant before an ending; w, x and y
/// are never doubled, s seldom.
bool mustDouble(QStringView word) {
    const qsizetype size = word.size();
    return vowelGroups(word) == 1 && isConsonantAt(word, size - 1) && isVowelAt(word, size - 2) &&
           !(size > 2 && isVowelAt(word, size - 3)) && !QStringView(u"swxy").contains(word.back());
}

/// True if a silent e has probably been dropped from the end of a stem: "lov", "danc", "us", "handl".
bool likelyDroppedE(const QString &stem) {
    if (hasUnexpectedSilentE(stem + u'e'))
        return true;
    if (endsDoubled(stem))
        return false;
    switch (stem.back().unicode()) {
    case u'c':
    case u's':
    case u'u':
    case u'v':
    case u'z':
        return true;
    case u'g':
        return !stem.endsWith(u"ng");
    case u'l':
        return isConsonantAt(stem, stem.size() - 2);
    default:
        return false;
    }
}

/// Collects candidates without duplicates.
class Candidates {
public:
    explicit Candidates(const QString &word) : m_word(word) {}

    void add(const QString &base, WordClasses classes) {
        if (base == m_word)
            return;
        const auto known = std::find_if(m_bases.begin(), m_bases.end(),
                                        [&base](const BaseForm &form) { return form.word == base; });
        if (known != m_bases.end())
            known->classes |= classes;
        else if (m_bases.size() < mostCandidates)
            m_bases.append({base, classes});
    }

    /// Adds a base that results from a rule.
    void addRegular(const QString &base, WordClasses classes) {
        constexpr qsizetype shortest = 3;
        if (base.size() >= shortest && vowelGroups(base) > 0 && !isFunctionWord(base))
            add(base, classes);
    }

    QList<BaseForm> take() { return std::move(m_bases); }

private:
    QString m_word;
    QList<BaseForm> m_bases;
};

/// The possible verbs of a stem from which -ed or -ing has been removed.
QStringList verbsOfStem(const QString &stem) {
    constexpr qsizetype shortest = 2;
    if (stem.size() < shortest || vowelGroups(stem) == 0)
        return {};
    const QString withE = stem + u'e';
    if (endsDoubled(stem)) {
        // "running" is run, but "calling" is call and "pressing" is press.
        return QStringView(u"lsfz").contains(stem.back()) ? QStringList{stem, stem.chopped(1)}
                                                          : QStringList{stem.chopped(1), stem};
    }
    if (mustDouble(stem))
        return {withE};
    if (stem.endsWith(u"ck") && vowelGroups(stem) > 1)
        return {stem, stem.chopped(1)};
    return likelyDroppedE(stem) ? QStringList{withE, stem} : QStringList{stem, withE};
}

void addPast(Candidates &candidates, const QString &word) {
    if (!word.endsWith(u"ed") || word.size() < 4)
        return;
    QStringList verbs;
    if (word.endsWith(u"ied"))
        verbs = QStringList{word.chopped(3) + u'y', word.chopped(1)};
    else if (!word.endsWith(u"eed"))
        verbs = verbsOfStem(word.chopped(2));
    else if (isVerbInEe(word.chopped(1)))
        verbs = QStringList{word.chopped(1)};
    for (const QString &verb : std::as_const(verbs)) {
        if (!hasOnlyIrregularPast(verb))
            candidates.addRegular(verb, WordClass::Verb);
    }
}

void addParticiple(Candidates &candidates, const QString &word) {
    if (!word.endsWith(u"ing") || word.size() < 5 || onlyLooksInflected(word))
        return;
    const QString stem = word.chopped(3);
    const QString withIe = word.chopped(4) + QStringLiteral("ie");
    const bool mayHaveIe = stem.endsWith(u'y') && isConsonantAt(stem, stem.size() - 2);
    constexpr qsizetype longestWithIe = 3; // "lying" is lie, "studying" is study
    if (mayHaveIe && stem.size() <= longestWithIe)
        candidates.addRegular(withIe, WordClass::Verb);
    for (const QString &verb : verbsOfStem(stem))
        candidates.addRegular(verb, WordClass::Verb);
    if (mayHaveIe)
        candidates.addRegular(withIe, WordClass::Verb);
}

/// The words to which -s or -es may have been added, most likely first.
QStringList basesOfS(const QString &word) {
    const QString withoutS = word.chopped(1);
    const QString withoutEs = word.chopped(2);
    if (word.endsWith(u"ies") && word.size() > 4)
        return {word.chopped(3) + u'y', withoutS};
    if (endsWithAny(word, {u"zzes", u"sses"}))
        return {withoutEs, word.chopped(3)};
    if (endsWithAny(word, {u"xes", u"ches", u"shes"}))
        return {withoutEs, withoutS};
    // "tomatoes", but "shoes"
    if (word.endsWith(u"oes") && vowelGroups(withoutEs) > 1)
        return {withoutEs, withoutS};
    if (endsWithAny(word, {u"ses", u"zes", u"oes"}))
        return {withoutS, withoutEs};
    return {withoutS};
}

void addPlural(Candidates &candidates, const QString &word, WordClasses classes) {
    constexpr qsizetype shortest = 3;
    if (word.size() < shortest || !word.endsWith(u's') || word.endsWith(u"ss"))
        return;
    const QString withoutS = word.chopped(1);
    if (isUnusualBaseOfS(withoutS))
        candidates.add(withoutS, classes);
    if (word.endsWith(u"us") && !endsWithAny(word, {u"eaus", u"ieus"}))
        return;
    for (const QString &base : basesOfS(word))
        candidates.addRegular(base, classes);
    // "paintings" is painting, or paint if the dictionary is small.
    addParticiple(candidates, withoutS);
}

/// False when the word is not a possessive.
bool addPossessive(Candidates &candidates, const QString &word) {
    constexpr qsizetype shortest = 3;
    if (word.size() < shortest)
        return false;
    const bool afterS = word[word.size() - 2] == u's' && apostrophes.contains(word.back());
    const bool beforeS = word.endsWith(u's') && apostrophes.contains(word[word.size() - 2]);
    if (!afterS && !beforeS)
        return false;
    const QString owner = word.chopped(afterS ? 1 : 2);
    candidates.addRegular(owner, WordClass::Noun);
    for (const BaseForm &base : irregularBases(owner)) {
        if (base.classes & WordClass::Noun)
            candidates.add(base.word, WordClass::Noun);
    }
    if (!onlyLooksInflected(owner))
        addPlural(candidates, owner, WordClass::Noun);
    return true;
}

void addComparison(Candidates &candidates, const QString &word) {
    constexpr WordClasses classes = WordClasses(WordClass::Adjective) | WordClass::Adverb;
    const qsizetype ending = word.endsWith(u"er") ? 2 : word.endsWith(u"est") ? 3 : 0;
    if (ending == 0 || word.size() < ending + 3)
        return;
    const QString stem = word.chopped(ending);
    if (stem.endsWith(u'i')) {
        const QString front = stem.chopped(1);
        if (vowelGroups(front) > 0 || isComparedByEnding(front + u'y')) {
            candidates.addRegular(front + u'y', classes);
            candidates.addRegular(front + QStringLiteral("ey"), classes); // "pricier"
        }
        return;
    }
    QStringList bases{stem + u'e'};
    if (!mustDouble(stem))
        bases.prepend(stem);
    if (endsDoubled(stem))
        bases.append(stem.chopped(1));
    for (const QString &base : std::as_const(bases)) {
        if (isComparedByEnding(base))
            candidates.addRegular(base, classes);
    }
}

QList<BaseForm> basesOfWord(const QString &word) {
    constexpr qsizetype shortest = 2;
    if (word.size() < shortest)
        return {};
    Candidates candidates(word);
    for (const BaseForm &base : irregularBases(word))
        candidates.add(base.word, base.classes);
    if (!addPossessive(candidates, word) && !onlyLooksInflected(word)) {
        addPlural(candidates, word, WordClasses(WordClass::Noun) | WordClass::Verb);
        addPast(candidates, word);
        addParticiple(candidates, word);
        addComparison(candidates, word);
    }
    return candidates.take();
}

/// "TV" for "TVs" and "TV's", which the rules miss because it has no vowel; empty for other words.
QString abbreviationWithS(const QString &word) {
    constexpr qsizetype shortest = 2;
    if (!word.endsWith(u's'))
        return {};
    const qsizetype size = word.size() - 1;
    const bool hasApostrophe = size > 0 && apostrophes.contains(word[size - 1]);
    const QString abbreviation = word.first(hasApostrophe ? size - 1 : size);
    const bool isAbbreviation =
        abbreviation.size() >= shortest && abbreviation.front().isUpper() && abbreviation.back().isUpper();
    return isAbbreviation ? abbreviation : QString();
}

bool separatesWords(QChar c) {
    return c == u' ' || c == u'-';
}

/// The first word may be inflected, as in "gave up", or the last, as in "ice creams".
QList<BaseForm> basesOfPhrase(const QString &phrase) {
    const auto first = std::find_if(phrase.begin(), phrase.end(), separatesWords) - phrase.begin();
    if (first == phrase.size())
        return basesOfWord(phrase);
    const auto last = phrase.rend() - std::find_if(phrase.rbegin(), phrase.rend(), separatesWords);
    Candidates candidates(phrase);
    for (const BaseForm &base : basesOfWord(phrase.first(first)))
        candidates.add(base.word + phrase.sliced(first), base.classes);
    const QString lastWord = phrase.sliced(last);
    for (const BaseForm &base : basesOfWord(lastWord))
        candidates.add(phrase.first(last) + base.word, base.classes);
    // A compound can have a plural even if its last word cannot: "grown-ups".
    if (lastWord.endsWith(u's') && isFunctionWord(lastWord.chopped(1)))
        candidates.add(phrase.chopped(1), WordClass::Noun);
    return candidates.take();
}

} // namespace

QList<BaseForm> baseForms(const QString &word) {
    constexpr qsizetype longest = 64;
    if (word.isEmpty() || word.size() > longest)
        return {};
    const QString lower = lowered(word);
    const bool isName = word != lower && onlyLooksInflected(word);
    if (isName)
        return {};
    Candidates candidates(word);
    if (const QString abbreviation = abbreviationWithS(word); !abbreviation.isEmpty())
        candidates.add(abbreviation, WordClass::Noun);
    // The capital letter may belong to a name or to the start of a sentence, so try both.
    const bool isCapitalized = word.front() != lower.front() && word.sliced(1) == lower.sliced(1);
    for (const BaseForm &base : basesOfPhrase(lower)) {
        if (isCapitalized && base.word.front() == lower.front())
            candidates.add(word.front() + base.word.sliced(1), base.classes);
        candidates.add(base.word, base.classes);
    }
    return candidates.take();
}

bool fits(const BaseForm &form, const QStringList &partsOfSpeech) {
    const auto classes = namedClasses(partsOfSpeech);
    return !classes || (*classes & form.classes);
}

std::optional<QString> firstKnown(const QString &word, const PartsOfSpeechOf &partsOfSpeechOf) {
    for (const BaseForm &form : baseForms(word)) {
        const auto partsOfSpeech = partsOfSpeechOf(form.word);
        if (partsOfSpeech && fits(form, *partsOfSpeech))
            return form.word;
    }
    return std::nullopt;
}

} // namespace lexiquill::english
