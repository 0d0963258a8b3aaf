#include "dictionaries/article/definition_parser.h"

#include "model/gloss_cleaning.h"
#include "support/text.h"

#include <unicode/uregex.h>

namespace lexiquill {

namespace {

struct Span {
    qsizetype start;
    qsizetype end;
};

/// An ICU regular expression. Its "\b" ignores combining and format characters, and a circled number is not
/// part of a word. Qt's engine differs in both.
class Expression {
public:
    explicit Expression(QStringView pattern) {
        UErrorCode status = U_ZERO_ERROR;
        m_expression =
            uregex_open(pattern.utf16(), static_cast<int32_t>(pattern.size()), 0, nullptr, &status);
    }
    ~Expression() { uregex_close(m_expression); }
    Q_DISABLE_COPY_MOVE(Expression)

    QList<Span> matches(QStringView text) const {
        QList<Span> spans;
        UErrorCode status = U_ZERO_ERROR;
        uregex_setText(m_expression, text.utf16(), static_cast<int32_t>(text.size()), &status);
        while (U_SUCCESS(status) && uregex_findNext(m_expression, &status))
            spans += Span{uregex_start(m_expression, 0, &status), uregex_end(m_expression, 0, &status)};
        return spans;
    }

private:
    URegularExpression *m_expression = nullptr;
};

/// An ICU expression stores the text that it searches, so each thread has its own.
const Expression &posExpression() {
    static thread_local const Expression expression(
        u"(?i)\\b(intransitive verb|transitive verb|noun|verb|adjective|adverb|pronoun|preposition|"
        u"conjunction|interjection|phrasal verb|idiom|名|动|形|副|代|数|量|连|介|叹)\\b");
    return expression;
}

const Expression &senseMarkerExpression() {
    static thread_local const Expression expression(u"(?:(?<=\\s)|^)([①-⑳]|\\d+[\\.\\s])\\s*");
    return expression;
}

/// The text between the end of each span and the start of the next one, or the end of the text.
QString textBehind(const QString &text, const QList<Span> &spans, qsizetype index) {
    const qsizetype start = spans[index].end;
    const qsizetype end = index + 1 < spans.size() ? spans[index + 1].start : text.size();
    return text.sliced(start, end - start);
}

} // namespace

DictionaryEntry parseDefinition(const QString &rawText, const QString &query) {
    const QString fullText = rawText.trimmed();
    QStringList parts;
    for (const QStringView part : QStringView(fullText).tokenize(u'|'))
        parts += trimmedOfBlanks(part).toString();

    DictionaryEntry entry{.headword = query, .posGroups = {}, .rawText = fullText};
    QString body = fullText;
    if (parts.size() >= 2) {
        entry.headword = parts[0];
        body = parts[1];
    }
    if (parts.size() >= 3) {
        entry.phonetic = parts[1];
        body = parts.sliced(2).join(QStringLiteral(" | "));
    }
    entry.posGroups = extractPOSGroups(body);
    return entry;
}

QList<PartOfSpeechGroup> extractPOSGroups(const QString &body) {
    const QList<Span> labels = posExpression().matches(body);
    if (labels.isEmpty())
        return {PartOfSpeechGroup::named(QStringLiteral("释义"), extractSenses(body))};
    QList<PartOfSpeechGroup> groups;
    for (qsizetype i = 0; i < labels.size(); ++i) {
        const QString pos = body.sliced(labels[i].start, labels[i].end - labels[i].start);
        groups += PartOfSpeechGroup::named(pos, extractSenses(textBehind(body, labels, i).trimmed()));
    }
    return groups;
}

QList<SenseItem> extractSenses(const QString &text) {
    const QList<Span> markers = senseMarkerExpression().matches(text);
    QList<SenseItem> senses;
    for (qsizetype i = 0; i < markers.size(); ++i) {
        SenseItem sense = parseSingleSense(textBehind(text, markers, i), i + 1);
        if (!sense.chineseMeaning.isEmpty())
            senses += std::move(sense);
    }
    if (!senses.isEmpty())
        return senses;
    const SenseItem sense = parseSingleSense(text, std::nullopt);
    return sense.chineseMeaning.isEmpty() ? QList<SenseItem>() : QList<SenseItem>{sense};
}

SenseItem parseSingleSense(const QString &text, std::optional<qint64> index) {
    SenseItem sense{.number = index, .chineseMeaning = {}};
    QString rest = text.trimmed();
    if (rest.startsWith(u'(')) {
        const qsizetype close = rest.indexOf(u')');
        if (close > 1) {
            sense.context = rest.sliced(1, close - 1);
            rest = rest.sliced(close + 1);
            qsizetype start = 0;
            while (start < rest.size() && rest[start].isSpace())
                ++start;
            rest = rest.sliced(start);
        }
    }
    const QStringList pieces = rest.split(u'▸');
    for (const QString &piece : pieces.sliced(1)) {
        if (const QString example = piece.trimmed(); !example.isEmpty())
            sense.examples += example;
    }
    const QString meaning = pieces.first().trimmed();
    sense.chineseMeaning = withoutAngleQuotes(meaning).trimmed();
    if (sense.chineseMeaning.isEmpty())
        sense.chineseMeaning = meaning;
    return sense;
}

} // namespace lexiquill
