#include "model/dictionary_entry.h"

#include "model/gloss_cleaning.h"
#include "support/text.h"

#include <QSet>

#include <algorithm>

namespace lexiquill {

namespace {

struct PosNames {
    QStringList keys;         ///< texts with both a Chinese name and an abbreviation
    QString abbreviationOnly; ///< a Chinese character with an abbreviation but no Chinese name; may be empty
    QString chinese;
    QString abbreviation;
};

const QList<PosNames> &posTable() {
    static const QList<PosNames> table = [] {
        const auto row = [](const char *keys, const char *abbreviationOnly, const char *chinese,
                            const char *abbreviation) {
            return PosNames{.keys = QString::fromUtf8(keys).split(u','),
                            .abbreviationOnly = QString::fromUtf8(abbreviationOnly),
                            .chinese = QString::fromUtf8(chinese),
                            .abbreviation = QString::fromUtf8(abbreviation)};
        };
        return QList<PosNames>{
            row("noun,n,名", "", "名词", "n."),
            row("verb,v,intransitive verb,transitive verb,vi,vt,动", "", "动词", "v."),
            row("adjective,adj,a,形", "", "形容词", "adj."),
            row("adverb,adv,副", "", "副词", "adv."),
            row("pronoun,pron,代", "", "代词", "pron."),
            row("preposition,prep", "介", "介词", "prep."),
            row("conjunction,conj", "连", "连词", "conj."),
            row("interjection,interj,int", "叹", "感叹词", "int."),
            row("numeral,num", "数", "数词", "num."),
            row("phrase,phr", "", "短语", "phrase"),
            row("idiom", "", "习语", "idiom"),
        };
    }();
    return table;
}

QString normalizedPos(const QString &pos) {
    const QString lower = pos.toLower();
    return trimmedOfPunctuation(lower, false).toString();
}

bool isLineBreak(QChar character) {
    const char16_t unit = character.unicode();
    return (unit >= u'\n' && unit <= u'\r') || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

/// The first line that is not blank, without blanks and tabs at both ends.
QString firstNonBlankLine(QStringView text) {
    while (!text.isEmpty()) {
        const auto lineEnd = std::find_if(text.begin(), text.end(), isLineBreak);
        const QStringView line = trimmedOfBlanks(text.first(lineEnd - text.begin()));
        if (!line.isEmpty())
            return line.toString();
        text = text.sliced(std::min<qsizetype>(lineEnd - text.begin() + 1, text.size()));
    }
    return {};
}

} // namespace

PartOfSpeechGroup PartOfSpeechGroup::named(const QString &pos, const QList<SenseItem> &senses) {
    return {.pos = pos, .posChinese = localizePOS(pos), .senses = senses};
}

QString PartOfSpeechGroup::localizePOS(const QString &pos) {
    const QString key = normalizedPos(pos);
    for (const PosNames &names : posTable()) {
        if (names.keys.contains(key))
            return names.chinese;
    }
    return pos;
}

QString PartOfSpeechGroup::posAbbreviation() const {
    const QString key = normalizedPos(pos);
    for (const PosNames &names : posTable()) {
        if (names.keys.contains(key) || (!key.isEmpty() && names.abbreviationOnly == key))
            return names.abbreviation;
    }
    return pos.endsWith(u'.') ? pos : pos + u'.';
}

QStringList PartOfSpeechGroup::cleanChineseList() const {
    // A normal group has a few tokens, so searching the list is fast. The hash set is for hostile input.
    constexpr qsizetype fewTokens = 32;
    QStringList tokens;
    QSet<QString> seen;
    const auto isNew = [&](const QString &token) {
        if (tokens.size() < fewTokens)
            return !tokens.contains(token);
        if (seen.isEmpty())
            seen = QSet<QString>(tokens.begin(), tokens.end());
        const bool added = !seen.contains(token);
        if (added)
            seen.insert(token);
        return added;
    };
    for (const SenseItem &sense : senses) {
        for (const QString &token : cleanChineseTokens(sense.chineseMeaning)) {
            if (isNew(token))
                tokens += token;
        }
    }
    if (!tokens.isEmpty())
        return tokens;
    for (const SenseItem &sense : senses) {
        if (const QString gloss = sense.chineseMeaning.trimmed(); !gloss.isEmpty())
            tokens += gloss;
    }
    return tokens;
}

QString DictionaryEntry::conciseSummary() const {
    QStringList parts;
    for (const PartOfSpeechGroup &group : posGroups) {
        const QString joined = group.cleanChineseList().mid(0, 2).join(u'；');
        if (!joined.isEmpty())
            parts += group.posAbbreviation() + u' ' + joined;
    }
    if (!parts.isEmpty())
        return parts.join(QStringLiteral(" | "));

    return firstNonBlankLine(rawText);
}

size_t qHash(const ExampleSentence &example, size_t seed) noexcept {
    return qHashMulti(seed, example.en, example.cn);
}

size_t qHash(const SenseItem &sense, size_t seed) noexcept {
    return qHashMulti(seed, sense.number.value_or(0), sense.context.value_or(QString()), sense.chineseMeaning,
                      sense.examples);
}

size_t qHash(const PartOfSpeechGroup &group, size_t seed) noexcept {
    return qHashMulti(seed, group.pos, group.posChinese, group.senses);
}

size_t qHash(const DictionaryEntry &entry, size_t seed) noexcept {
    return qHashMulti(seed, entry.headword, entry.phonetic.value_or(QString()), entry.posGroups,
                      entry.rawText, entry.examples);
}

} // namespace lexiquill
