#include "platform/linux/stardict/inflection.h"

#include "platform/linux/stardict/irregular_forms.h"

namespace lexiquill::stardict {

namespace {

bool isVowel(QChar c) {
    return QStringView(u"aeiou").contains(c.toLower());
}

/// Collects candidates without repeating any.
class Candidates {
public:
    explicit Candidates(const QString &word) : m_word(word) {}

    void add(const QString &base) {
        constexpr qsizetype shortest = 2;
        if (base.size() >= shortest && base != m_word && !m_bases.contains(base))
            m_bases.append(base);
    }

    void add(const QStringList &bases) {
        for (const QString &base : bases)
            add(base);
    }

    QStringList take() { return std::move(m_bases); }

private:
    QString m_word;
    QStringList m_bases;
};

bool endsWith(const QString &word, QStringView ending) {
    return word.endsWith(ending, Qt::CaseInsensitive);
}

/// True for stems such as "runn" that double their last consonant before an ending.
bool endsDoubled(const QString &stem) {
    const qsizetype size = stem.size();
    return size >= 3 && stem[size - 1] == stem[size - 2] && !isVowel(stem[size - 1]);
}

/// The words a stem may come from once -ed, -ing, -er or -est is gone.
void addStems(Candidates &candidates, const QString &stem) {
    constexpr qsizetype shortest = 2;
    if (stem.size() < shortest)
        return;
    const QChar last = stem.back().toLower();
    // "running" is run, yet "calling" is call and "pressing" is press.
    const bool usuallyDouble = last == u'l' || last == u's' || last == u'f' || last == u'z';
    if (endsDoubled(stem) && !usuallyDouble)
        candidates.add(stem.chopped(1));
    if (endsWith(stem, u"ck") && stem.size() > 4)
        candidates.add(QStringList{stem, stem.chopped(1)});
    // After these a silent e is likelier than none: "loving", "dancing", "changing", "using".
    const bool dropsE =
        QStringView(u"vcuz").contains(last) || (last == u's' && !endsDoubled(stem)) ||
        (last == u'g' && !endsDoubled(stem) && !endsWith(stem, u"ng")) ||
        (last == u'l' && stem.size() > 2 && !isVowel(stem[stem.size() - 2]) && !endsDoubled(stem));
    if (dropsE)
        candidates.add(stem + u'e');
    candidates.add(stem);
    candidates.add(stem + u'e');
    if (endsDoubled(stem))
        candidates.add(stem.chopped(1));
}

void addPossessive(Candidates &candidates, const QString &word) {
    for (const QStringView ending : {u"'s", u"’s", u"ʼs"}) {
        if (endsWith(word, ending))
            candidates.add(word.chopped(2));
    }
    for (const QStringView ending : {u"s'", u"s’", u"sʼ"}) {
        if (endsWith(word, ending)) {
            candidates.add(word.chopped(1));
            candidates.add(baseForms(word.chopped(1)));
        }
    }
}

void addPlural(Candidates &candidates, const QString &word) {
    const auto lacksEnding = [&word](QStringView ending) {
        return !endsWith(word, ending);
    };
    if (lacksEnding(u"s") || endsWith(word, u"ss"))
        return;
    if (endsWith(word, u"ves") && word.size() > 4) {
        candidates.add(word.chopped(1));
        candidates.add(word.chopped(3) + u'f');
        candidates.add(word.chopped(3) + QStringLiteral("fe"));
        return;
    }
    if (endsWith(word, u"ies") && word.size() > 4)
        candidates.add(word.chopped(3) + u'y');
    const bool hissing = endsWith(word, u"ses") || endsWith(word, u"xes") || endsWith(word, u"zes") ||
                         endsWith(word, u"ches") || endsWith(word, u"shes") || endsWith(word, u"oes");
    if (hissing && !endsWith(word, u"ses"))
        candidates.add(word.chopped(2));
    candidates.add(word.chopped(1));
    if (hissing)
        candidates.add(word.chopped(2));
    // "quizzes", "buses"
    if ((endsWith(word, u"zzes") || endsWith(word, u"sses")) && word.size() > 5)
        candidates.add(word.chopped(3));
}

void addPast(Candidates &candidates, const QString &word) {
    if (!endsWith(word, u"ed") || word.size() < 4)
        return;
    if (endsWith(word, u"ied")) {
        candidates.add(word.chopped(3) + u'y');
        candidates.add(word.chopped(1));
        return;
    }
    if (endsWith(word, u"eed"))
        candidates.add(word.chopped(1));
    else
        addStems(candidates, word.chopped(2));
}

void addParticiple(Candidates &candidates, const QString &word) {
    if (!endsWith(word, u"ing") || word.size() < 5)
        return;
    if (endsWith(word, u"ying") && word.size() < 7)
        candidates.add(word.chopped(4) + QStringLiteral("ie"));
    addStems(candidates, word.chopped(3));
}

void addComparison(Candidates &candidates, const QString &word) {
    for (const QStringView ending : {u"er", u"est"}) {
        if (!endsWith(word, ending) || word.size() < ending.size() + 3)
            continue;
        const QString stem = word.chopped(ending.size());
        if (endsWith(stem, u"i"))
            candidates.add(stem.chopped(1) + u'y');
        else
            addStems(candidates, stem);
    }
}

} // namespace

QStringList baseForms(const QString &word) {
    constexpr qsizetype longest = 64;
    if (word.size() < 2 || word.size() > longest)
        return {};
    Candidates candidates(word);
    candidates.add(irregularBases(word.toLower()));
    addPossessive(candidates, word);
    addPlural(candidates, word);
    addPast(candidates, word);
    addParticiple(candidates, word);
    addComparison(candidates, word);
    return candidates.take();
}

} // namespace lexiquill::stardict
