#include "app/search/definition_rows.h"

#include <QHash>
#include <QRegularExpression>
#include <QVariantMap>

namespace lexiquill {

namespace {

/// The longest text shown; no real sense is longer.
constexpr qsizetype maxTextLength = 4000;
constexpr qsizetype maxEmphasisedWordLength = 64;
constexpr qsizetype maxExamplesPerSense = 12;
constexpr qsizetype maxExamples = 50;

/// Matches the word with the usual endings; invalid for blank words and for very long ones.
QRegularExpression wordPattern(const QString &word) {
    const QString trimmed = word.trimmed();
    if (trimmed.isEmpty() || trimmed.size() > maxEmphasisedWordLength)
        return QRegularExpression(QStringLiteral("("));
    const bool endsInE = trimmed.endsWith(u'e', Qt::CaseInsensitive);
    const bool endsInY = trimmed.endsWith(u'y', Qt::CaseInsensitive);
    QString forms =
        QRegularExpression::escape(trimmed) + QStringLiteral("(?:s|es|ed|d|ing|er|r|ers|ly|['’]s)?");
    if (endsInE)
        forms += u'|' + QRegularExpression::escape(trimmed.chopped(1)) + QStringLiteral("ing");
    if (endsInY)
        forms +=
            u'|' + QRegularExpression::escape(trimmed.chopped(1)) + QStringLiteral("(?:ies|ied|ier|ily)");
    return QRegularExpression(
        QStringLiteral("(?<![\\p{Latin}\\d])(?:") + forms + QStringLiteral(")(?![\\p{Latin}\\d])"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
}

QString emphasised(const QString &text, const QRegularExpression &pattern) {
    const QString shown = text.left(maxTextLength);
    QString styled;
    qsizetype done = 0;
    if (pattern.isValid()) {
        auto matches = pattern.globalMatch(shown);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            styled += shown.sliced(done, match.capturedStart() - done).toHtmlEscaped();
            styled += QStringLiteral("<b>") + match.captured().toHtmlEscaped() + QStringLiteral("</b>");
            done = match.capturedEnd();
        }
    }
    styled += shown.sliced(done).toHtmlEscaped();
    return styled.replace(u'\n', QStringLiteral("<br>"));
}

/// The Chinese name; empty if it would only repeat the tag.
QString shownName(const PartOfSpeechGroup &group) {
    const QString name =
        group.posChinese.isEmpty() ? PartOfSpeechGroup::localizePOS(group.pos) : group.posChinese;
    return name == group.pos ? QString() : name;
}

/// The text of the tag: "n.", or "释义" without a full stop.
QString shownAbbreviation(const PartOfSpeechGroup &group) {
    const bool isLatin = !group.pos.isEmpty() && group.pos.front().unicode() < 128;
    return isLatin ? group.posAbbreviation() : group.pos;
}

} // namespace

QString shownPhonetic(const WordRecord &record) {
    QString text = record.phonetic.value_or(QString()).trimmed();
    if (text.isEmpty() || QStringLiteral("/[(").contains(text.front()))
        return text;
    return u'/' + text + u'/';
}

QString emphasised(const QString &text, const QString &word) {
    return emphasised(text, wordPattern(word));
}

QString partOfSpeechColor(const PartOfSpeechGroup &group) {
    static const QHash<QString, QString> colors{{QStringLiteral("n."), QStringLiteral("blue")},
                                                {QStringLiteral("pron."), QStringLiteral("blue")},
                                                {QStringLiteral("v."), QStringLiteral("green")},
                                                {QStringLiteral("adj."), QStringLiteral("orange")},
                                                {QStringLiteral("num."), QStringLiteral("orange")},
                                                {QStringLiteral("adv."), QStringLiteral("purple")},
                                                {QStringLiteral("int."), QStringLiteral("red")},
                                                {QStringLiteral("phrase"), QStringLiteral("purple")},
                                                {QStringLiteral("idiom"), QStringLiteral("purple")}};
    return colors.value(group.posAbbreviation(), QStringLiteral("gray"));
}

qsizetype senseCount(const QList<PartOfSpeechGroup> &groups) {
    qsizetype count = 0;
    for (const PartOfSpeechGroup &group : groups)
        count += group.senses.size();
    return count;
}

QVariantList definitionRows(const QList<PartOfSpeechGroup> &groups, const QString &word, qsizetype limit) {
    const QRegularExpression pattern = wordPattern(word);
    QVariantList rows;
    for (const PartOfSpeechGroup &group : groups) {
        if (limit <= 0)
            break;
        QVariantList senses;
        for (const SenseItem &sense : group.senses.first(std::min(limit, group.senses.size()))) {
            QStringList examples;
            for (const QString &example :
                 sense.examples.first(std::min(maxExamplesPerSense, sense.examples.size())))
                examples += emphasised(example, pattern);
            senses += QVariantMap{
                {QStringLiteral("number"), sense.number ? QString::number(*sense.number) : QString()},
                {QStringLiteral("context"), sense.context.value_or(QString()).left(maxTextLength)},
                {QStringLiteral("meaning"), sense.chineseMeaning.left(maxTextLength)},
                {QStringLiteral("examples"), examples}};
        }
        limit -= senses.size();
        if (!senses.isEmpty())
            rows += QVariantMap{{QStringLiteral("abbreviation"), shownAbbreviation(group)},
                                {QStringLiteral("name"), shownName(group)},
                                {QStringLiteral("colorName"), partOfSpeechColor(group)},
                                {QStringLiteral("senses"), senses}};
    }
    return rows;
}

QVariantList exampleRows(const QList<ExampleSentence> &examples, const QString &word) {
    const QRegularExpression pattern = wordPattern(word);
    QVariantList rows;
    for (const ExampleSentence &example : examples.first(std::min(maxExamples, examples.size())))
        rows += QVariantMap{{QStringLiteral("en"), emphasised(example.en, pattern)},
                            {QStringLiteral("cn"), example.cn.left(maxTextLength)}};
    return rows;
}

QString plainDefinition(const QString &word, const QString &phonetic, const QList<PartOfSpeechGroup> &groups,
                        const QList<ExampleSentence> &examples, const QString &rawText) {
    QStringList lines{phonetic.isEmpty() ? word : word + u' ' + phonetic};
    for (const PartOfSpeechGroup &group : groups) {
        lines += QStringLiteral("%1 %2").arg(shownAbbreviation(group), shownName(group)).trimmed();
        for (const SenseItem &sense : group.senses) {
            QString line = sense.number ? QStringLiteral("%1. ").arg(*sense.number) : QString();
            if (sense.context)
                line += u'(' + *sense.context + QStringLiteral(") ");
            lines += line + sense.chineseMeaning;
            for (const QString &example : sense.examples)
                lines += QStringLiteral("   ▸ ") + example;
        }
    }
    if (groups.isEmpty())
        lines += rawText;
    for (const ExampleSentence &example : examples)
        lines += example.en + u'\n' + example.cn;
    return lines.join(u'\n');
}

} // namespace lexiquill
