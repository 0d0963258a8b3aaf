#include "starter/chinese_index.h"

#include <QMap>
#include <QRegularExpression>

#include <algorithm>

namespace lexiquill::tools {

namespace {

/// An English word for a Chinese one.
struct Answer {
    QString word;
    QString label;
    QString glosses;
    double rank = 0; ///< the smaller, the more useful
};

/// The Chinese words that a gloss names; none for an explanation.
QStringList wordsOf(QString gloss, const QString &label) {
    static const QRegularExpression remark(QStringLiteral("（[^（）]*）"));
    static const QRegularExpression word(QRegularExpression::anchoredPattern(QStringLiteral("\\p{Han}{1,8}")),
                                         QRegularExpression::UseUnicodePropertiesOption);
    gloss = gloss.remove(remark).trimmed();
    if (!word.match(gloss).hasMatch())
        return {};
    QStringList words{gloss};
    // A learner types 快乐, not 快乐的.
    const bool isModifier = (label == QStringLiteral("adj.") && gloss.endsWith(u'的')) ||
                            (label == QStringLiteral("adv.") && gloss.endsWith(u'地'));
    constexpr qsizetype shortest = 2;
    if (isModifier && gloss.size() > shortest)
        words += gloss.chopped(1);
    return words;
}

QString explanationOf(const StarterSense &sense) {
    return sense.remark.isEmpty() ? sense.glosses
                                  : QStringLiteral("（%1）%2").arg(sense.remark, sense.glosses);
}

/// The answers as an article: grouped by part of speech, the group of the best answer first.
QByteArray article(QList<Answer> answers) {
    constexpr qsizetype most = 24;
    std::stable_sort(answers.begin(), answers.end(),
                     [](const Answer &left, const Answer &right) { return left.rank < right.rank; });
    answers = answers.first(std::min(most, answers.size()));
    QStringList labels;
    for (const Answer &answer : std::as_const(answers)) {
        if (!labels.contains(answer.label))
            labels += answer.label;
    }
    QString text;
    for (const QString &label : std::as_const(labels)) {
        text += label + u'\n';
        int number = 0;
        for (const Answer &answer : std::as_const(answers)) {
            if (answer.label == label)
                text += QStringLiteral("%1. (%2) %3\n").arg(++number).arg(answer.glosses, answer.word);
        }
    }
    return text.toUtf8();
}

} // namespace

std::vector<StarDictEntry> chineseIndex(const std::vector<StarterEntry> &entries) {
    // Common words first, but a word's first meaning before another one's last.
    constexpr double senseWeight = 0.9;
    constexpr double glossWeight = 0.4;
    constexpr double groupWeight = 0.3;
    constexpr double shortenedWeight = 0.2;
    QMap<QString, QList<Answer>> answers;
    for (const StarterEntry &entry : entries) {
        double groupRank = entry.level;
        for (const StarterGroup &group : entry.groups) {
            double senseRank = groupRank;
            for (const StarterSense &sense : group.senses) {
                double rank = senseRank;
                for (const QString &gloss : sense.glosses.split(u'；')) {
                    double wordRank = rank;
                    for (const QString &word : wordsOf(gloss, group.label)) {
                        QList<Answer> &known = answers[word];
                        const bool isKnown =
                            std::any_of(known.begin(), known.end(), [&](const Answer &answer) {
                                return answer.word == entry.headword && answer.label == group.label;
                            });
                        if (!isKnown)
                            known += {entry.headword, group.label, explanationOf(sense), wordRank};
                        wordRank += shortenedWeight;
                    }
                    rank += glossWeight;
                }
                senseRank += senseWeight;
            }
            groupRank += groupWeight;
        }
    }
    std::vector<StarDictEntry> index;
    index.reserve(static_cast<size_t>(answers.size()));
    for (auto each = answers.cbegin(); each != answers.cend(); ++each)
        index.push_back(plainEntry(each.key().toUtf8(), article(each.value())));
    return index;
}

QMap<QString, int> commonChineseWords(const std::vector<StarterEntry> &entries) {
    constexpr int lastLevel = 2;
    QMap<QString, int> levels;
    for (const StarterEntry &entry : entries) {
        if (entry.level > lastLevel)
            continue;
        const StarterGroup &group = entry.groups.front();
        const QString gloss = group.senses.front().glosses.section(u'；', 0, 0);
        for (const QString &word : wordsOf(gloss, group.label))
            levels[word] = std::min(levels.value(word, entry.level), entry.level);
    }
    return levels;
}

} // namespace lexiquill::tools
