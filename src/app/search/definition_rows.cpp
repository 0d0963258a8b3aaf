#include "app/search/definition_rows.h"

#include <QHash>
#include <QRegularExpression>
#include <QVariantMap>

#include <algorithm>

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

/// The text with the matches of the pattern in bold.
QList<TextSpan> emphasised(const QString &text, const QRegularExpression &pattern) {
    const QString shown = text.left(maxTextLength);
    QList<TextSpan> spans;
    qsizetype done = 0;
    const auto add = [&](qsizetype end, TextSpan::Style style) {
        if (end > done)
            spans += {shown.sliced(done, end - done), style};
        done = end;
    };
    if (pattern.isValid()) {
        for (auto matches = pattern.globalMatch(shown); matches.hasNext();) {
            const QRegularExpressionMatch match = matches.next();
            add(match.capturedStart(), TextSpan::Style::Plain);
            add(match.capturedEnd(), TextSpan::Style::Strong);
        }
    }
    add(shown.size(), TextSpan::Style::Plain);
    return spans;
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

/// A short context such as "[U]" stands before the meaning, a longer one above it.
constexpr qsizetype longestInlineContext = 16;
/// Senses that are no longer than this and have nothing else stand in one line when there are several.
constexpr qsizetype longestFlowingSense = 16;
constexpr qsizetype fewestFlowingSenses = 4;

bool canFlow(const SenseItem &sense) {
    return sense.examples.isEmpty() && sense.context.value_or(QString()).isEmpty() &&
           sense.chineseMeaning.size() <= longestFlowingSense && !sense.chineseMeaning.contains(u'\n');
}

QString numberOf(const SenseItem &sense) {
    return sense.number ? QString::number(*sense.number) : QString();
}

/// Several short senses one after the other.
TextParagraph flowing(const QList<SenseItem> &senses) {
    TextParagraph paragraph{.kind = TextParagraph::Kind::Senses, .spans = {}};
    for (const SenseItem &sense : senses) {
        if (!paragraph.spans.isEmpty())
            paragraph.spans += {sense.number ? QStringLiteral("\u2003") : QStringLiteral("；")};
        // The number stays in the line of its sense.
        if (sense.number)
            paragraph.spans += {numberOf(sense) + QChar::Nbsp, TextSpan::Style::Number};
        paragraph.spans += {sense.chineseMeaning};
    }
    return paragraph;
}

TextParagraphs senseParagraphs(const SenseItem &sense, const QRegularExpression &pattern) {
    const QString context = sense.context.value_or(QString()).left(maxTextLength);
    const QString meaning = sense.chineseMeaning.left(maxTextLength);
    const bool isAbove = !context.isEmpty() && context.size() > longestInlineContext && !meaning.isEmpty();
    TextParagraphs paragraphs;
    TextParagraph main{.kind = TextParagraph::Kind::Sense, .spans = {}};
    if (sense.number)
        main.spans += {numberOf(sense) + u'.', TextSpan::Style::Number};
    if (isAbove) {
        main.spans += {context, TextSpan::Style::Quiet};
        paragraphs += main;
        main = {.kind = TextParagraph::Kind::Sense, .spans = {}};
    } else if (!context.isEmpty()) {
        main.spans += {meaning.isEmpty() ? context : context + u' ', TextSpan::Style::Quiet};
    }
    main.spans += {meaning};
    paragraphs += main;
    for (const QString &example : sense.examples.first(std::min(maxExamplesPerSense, sense.examples.size())))
        paragraphs += {.kind = TextParagraph::Kind::Example, .spans = emphasised(example, pattern)};
    return paragraphs;
}

/// What a screen reader says of a sense.
QVariantMap spokenSense(const SenseItem &sense) {
    QStringList parts{sense.number ? numberOf(sense) + u'.' : QString(), sense.context.value_or(QString()),
                      sense.chineseMeaning};
    parts.removeAll(QString());
    const QStringList examples = sense.examples.first(std::min(maxExamplesPerSense, sense.examples.size()));
    return {{QStringLiteral("name"), parts.join(u' ').left(maxTextLength)},
            {QStringLiteral("examples"), examples.join(u' ').left(maxTextLength)}};
}

} // namespace

QString shownPhonetic(const WordRecord &record) {
    QString text = record.phonetic.value_or(QString()).trimmed();
    if (text.isEmpty() || QStringLiteral("/[(").contains(text.front()))
        return text;
    return u'/' + text + u'/';
}

QList<TextSpan> emphasised(const QString &text, const QString &word) {
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
        const QList<SenseItem> senses =
            group.senses.first(std::min(std::max<qsizetype>(limit, 0), group.senses.size()));
        limit -= senses.size();
        if (senses.isEmpty())
            continue;
        TextParagraphs paragraphs;
        QVariantList spoken;
        QStringList meanings;
        for (qsizetype i = 0; i < senses.size();) {
            const auto end = std::find_if_not(senses.cbegin() + i, senses.cend(), canFlow);
            const qsizetype count = end - (senses.cbegin() + i);
            if (count >= fewestFlowingSenses) {
                paragraphs += flowing(senses.sliced(i, count));
                i += count;
            } else {
                paragraphs += senseParagraphs(senses.at(i++), pattern);
            }
        }
        for (const SenseItem &sense : senses) {
            spoken += spokenSense(sense);
            meanings += sense.chineseMeaning.left(maxTextLength);
        }
        rows += QVariantMap{{QStringLiteral("abbreviation"), shownAbbreviation(group)},
                            {QStringLiteral("name"), shownName(group)},
                            {QStringLiteral("colorName"), partOfSpeechColor(group)},
                            {QStringLiteral("paragraphs"), QVariant::fromValue(paragraphs)},
                            {QStringLiteral("spoken"), spoken},
                            {QStringLiteral("meanings"), meanings}};
    }
    return rows;
}

TextParagraphs exampleParagraphs(const QList<ExampleSentence> &examples, const QString &word) {
    const QRegularExpression pattern = wordPattern(word);
    TextParagraphs paragraphs;
    for (const ExampleSentence &example : examples.first(std::min(maxExamples, examples.size()))) {
        paragraphs += {.kind = TextParagraph::Kind::Sentence, .spans = emphasised(example.en, pattern)};
        if (!example.cn.isEmpty())
            paragraphs +=
                {.kind = TextParagraph::Kind::Translation, .spans = {{example.cn.left(maxTextLength)}}};
    }
    return paragraphs;
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
