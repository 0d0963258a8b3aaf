#include "app/search/word_blanks.h"

#include "dictionaries/english/base_forms.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace lexiquill {

namespace {

constexpr qsizetype mostSenses = 60;
constexpr qsizetype mostExamples = 12;
constexpr qsizetype longestText = 4000;
constexpr qsizetype longestDefinition = 20'000;
constexpr qsizetype longestPhonetic = 200;
/// Longer headwords are blanked only as they are written.
constexpr qsizetype mostWords = 12;
/// The number of words that may stand between two words of a phrase.
constexpr qsizetype widestGap = 4;
constexpr qsizetype shortestStem = 4;

/// Without case and accents.
QString folded(const QString &text) {
    static const QRegularExpression marks(QStringLiteral("\\p{M}+"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    return text.normalized(QString::NormalizationForm_D).remove(marks).toCaseFolded();
}

/// The words in Latin letters.
QRegularExpressionMatchIterator latinWords(const QString &text) {
    static const QRegularExpression words(QStringLiteral("(?:\\p{Latin}\\p{M}*+|\\d)++"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    return words.globalMatch(text);
}

/// The phrase without the parts that stand for other words: "make up mind" for "make up one's mind".
QString withoutPlaceholders(const QString &phrase) {
    static const QRegularExpression placeholders(
        QStringLiteral("(?<!\\w)(?:one['’]s|oneself|(?:sb|sth|somebody|someone|something)(?:['’]s)?)(?!\\w)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    const QString words = QString(phrase).remove(placeholders).trimmed();
    return words.isEmpty() ? phrase : words;
}

/// Puts blanks in the place of one word or phrase.
class Blanks {
public:
    explicit Blanks(const QString &word) : m_word(word.trimmed()) {
        static const QRegularExpression otherLetters(QStringLiteral("(?!\\p{Latin})\\p{L}"),
                                                     QRegularExpression::UseUnicodePropertiesOption);
        if (m_word.contains(otherLetters))
            return;
        auto words = latinWords(withoutPlaceholders(m_word));
        while (words.hasNext() && m_parts.size() <= mostWords)
            m_parts += folded(words.next().captured());
        m_forms.resize(m_parts.size());
    }

    QString in(const QString &text) {
        if (m_word.isEmpty() || text.isEmpty())
            return text;
        if (m_parts.isEmpty() || m_parts.size() > mostWords)
            return QString(text).replace(m_word, wordBlank.toString(), Qt::CaseInsensitive);
        QList<Piece> pieces;
        auto words = latinWords(text);
        while (words.hasNext()) {
            const QRegularExpressionMatch match = words.next();
            pieces += {match.capturedStart(), match.capturedEnd(), folded(match.captured())};
        }
        for (qsizetype i = 0; i < pieces.size(); ++i)
            markPhrase(pieces, i);
        QString result;
        qsizetype done = 0;
        for (const Piece &piece : std::as_const(pieces)) {
            if (!piece.isBlank)
                continue;
            result += QStringView(text).sliced(done, piece.start - done);
            result += wordBlank;
            done = piece.end;
        }
        result += QStringView(text).sliced(done);
        return result;
    }

private:
    struct Piece {
        qsizetype start;
        qsizetype end;
        QString word;
        bool isBlank = false;
    };

    /// Marks the phrase that begins at a piece, if there is one.
    void markPhrase(QList<Piece> &pieces, qsizetype first) {
        QList<qsizetype> found;
        qsizetype next = first;
        for (qsizetype part = 0; part < m_parts.size(); ++part) {
            const qsizetype last = part == 0 ? first : std::min(next + widestGap, pieces.size() - 1);
            while (next <= last && !isForm(pieces.at(next).word, part))
                ++next;
            if (next > last)
                return;
            found += next++;
        }
        for (const qsizetype index : std::as_const(found))
            pieces[index].isBlank = true;
    }

    /// Whether the folded word is a form of a part of the headword.
    bool isForm(const QString &word, qsizetype part) {
        const QString &base = m_parts.at(part);
        if (word == base)
            return true;
        const auto known = m_forms.at(part).constFind(word);
        if (known != m_forms.at(part).cend())
            return *known;
        const bool isLong = base.size() >= shortestStem;
        const bool isKnown =
            (isLong && word.startsWith(base)) ||
            (isLong && base.endsWith(u'y') && word.startsWith(base.chopped(1) + u'i')) ||
            std::ranges::any_of(english::baseForms(word),
                                [&base](const english::BaseForm &form) { return form.word == base; });
        m_forms[part].insert(word, isKnown);
        return isKnown;
    }

    QString m_word;
    QStringList m_parts;                 ///< folded; empty for words in other scripts
    QList<QHash<QString, bool>> m_forms; ///< what is known of the words of the texts, for each part
};

/// Matches the phonetic where it stands alone; invalid for one that is too short to tell anything.
QRegularExpression phoneticPattern(QString phonetic) {
    static const QRegularExpression enclosing(QStringLiteral("^[\\s/\\[(]+|[\\s/\\])]+$"));
    phonetic.remove(enclosing);
    if (phonetic.size() < 2 || phonetic.size() > longestPhonetic)
        return QRegularExpression(QStringLiteral("("));
    return QRegularExpression(QStringLiteral("(?<!\\p{L})") + QRegularExpression::escape(phonetic) +
                                  QStringLiteral("(?!\\p{L})"),
                              QRegularExpression::UseUnicodePropertiesOption);
}

} // namespace

QString withoutWord(const QString &text, const QString &word) {
    return Blanks(word).in(text);
}

WordRecord withoutWord(const WordRecord &record) {
    const QRegularExpression phonetic = phoneticPattern(record.phonetic.value_or(QString()));
    Blanks blanks(record.word);
    const auto blanked = [&](const QString &text, qsizetype longest = longestText) {
        QString shown = blanks.in(text.left(longest));
        return phonetic.isValid() ? shown.replace(phonetic, wordBlank.toString()) : shown;
    };
    WordRecord question = record;
    question.word.clear();
    question.phonetic.reset();
    question.conciseSummary = blanked(record.conciseSummary);
    question.rawDefinition = blanked(record.rawDefinition, longestDefinition);
    qsizetype sensesLeft = mostSenses;
    for (PartOfSpeechGroup &group : question.posGroups) {
        group.senses.resize(std::min(sensesLeft, group.senses.size()));
        sensesLeft -= group.senses.size();
        for (SenseItem &sense : group.senses) {
            sense.chineseMeaning = blanked(sense.chineseMeaning);
            if (sense.context)
                sense.context = blanked(*sense.context);
            sense.examples.resize(std::min(mostExamples, sense.examples.size()));
            for (QString &example : sense.examples)
                example = blanked(example);
        }
    }
    question.examples.resize(std::min(mostExamples, question.examples.size()));
    for (ExampleSentence &example : question.examples) {
        example.en = blanked(example.en);
        example.cn = blanked(example.cn);
    }
    return question;
}

} // namespace lexiquill
