#include "lookup/online/youdao_parser.h"

#include "support/json_value.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace lexiquill {

namespace {

constexpr qsizetype mostWebTranslations = 4;
constexpr qsizetype mostExamples = 6;
constexpr qsizetype mostSenses = 10'000;

bool separatesSenses(QChar character) {
    return character == u'；' || character == u';' || character == u'，' || character == u',';
}

SenseItem numberedSense(qint64 number, const QString &meaning) {
    return {.number = number, .chineseMeaning = meaning};
}

/// The first of a word's transcriptions that is a string.
std::optional<QString> phoneticOf(const JsonValue &word) {
    for (const char *const name : {"usphone", "ukphone", "phone"}) {
        if (auto text = word.member(name).text())
            return text;
    }
    return std::nullopt;
}

/// The first word of a section; missing unless it is an object.
JsonValue firstWord(const JsonValue &section) {
    const JsonValue word = section.member("word").first();
    return word.isObject() ? word : JsonValue();
}

/// The line of text in an element of "trs".
std::optional<QString> lineOf(const JsonValue &translation) {
    const JsonValue lines = translation.member("tr").first().member("l").member("i");
    const QList<JsonValue> elements = lines.elements();
    const bool areTexts = std::all_of(elements.begin(), elements.end(),
                                      [](const JsonValue &element) { return element.text().has_value(); });
    if (elements.isEmpty() || !areTexts)
        return std::nullopt;
    return elements.first().text()->trimmed();
}

/// The text without its tags: "<", at least one character other than ">", and ">". Not a regular expression,
/// because that would scan the rest of the text again at each "<" that is not closed.
QString withoutTags(const QString &text) {
    QString result;
    qsizetype position = 0;
    while (position < text.size()) {
        const qsizetype start = text.indexOf(u'<', position);
        const qsizetype end = start < 0 ? -1 : text.indexOf(u'>', start);
        if (end < 0)
            break;
        const bool isTag = end > start + 1;
        result += QStringView(text).sliced(position, start - position + (isTag ? 0 : 2));
        position = end + 1;
    }
    result += QStringView(text).sliced(position);
    return result;
}

class Parser {
public:
    Parser(const JsonValue &root, const QString &query) : m_root(root), m_headword(query) {}

    std::optional<DictionaryEntry> parse() {
        readSimple();
        readEnglishToChinese();
        if (m_groups.isEmpty())
            readChineseToEnglish();
        if (m_groups.isEmpty())
            readMachineTranslation();
        if (m_groups.isEmpty())
            readWebTranslations();
        if (m_groups.isEmpty() || m_senseCount > mostSenses)
            return std::nullopt;
        const QString rawText = m_rawLines.join(u'\n');
        return DictionaryEntry{.headword = m_headword,
                               .phonetic = m_phonetic,
                               .posGroups = mergedGroups(),
                               .rawText = rawText.isEmpty() ? m_headword : rawText,
                               .examples = examples()};
    }

private:
    bool lacksPhonetic() const { return m_phonetic.value_or(QString()).isEmpty(); }

    void readSimple() {
        const JsonValue section = m_root.member("simple");
        const JsonValue word = firstWord(section);
        if (word.isMissing())
            return;
        m_phonetic = phoneticOf(word);
        m_headword = section.member("query").nonEmptyText().value_or(m_headword);
    }

    void readEnglishToChinese() {
        const JsonValue word = firstWord(m_root.member("ec"));
        if (word.isMissing())
            return;
        if (lacksPhonetic())
            m_phonetic = phoneticOf(word);
        m_headword = word.member("return-phrase").nonEmptyText().value_or(m_headword);
        for (const JsonValue &translation : word.member("trs").elements()) {
            const auto line = lineOf(translation);
            if (!line)
                continue;
            m_rawLines += *line;
            addLine(*line);
            if (m_senseCount > mostSenses)
                return;
        }
    }

    /// Adds the senses of one line, such as "vt. 问候；欢迎".
    void addLine(const QString &line) {
        // An explicit character class instead of ".", so that no line terminator matches.
        static const QRegularExpression expression(
            QStringLiteral("^([a-zA-Z]+\\.)\\s*([^\\n\\x0b\\f\\r\\x{85}\\x{2028}\\x{2029}]*)$"),
            QRegularExpression::UseUnicodePropertiesOption);
        const QRegularExpressionMatch match = expression.match(line);
        if (!match.hasMatch())
            return addGroup(QStringLiteral("释义"), {numberedSense(1, line)});
        QList<SenseItem> senses;
        const QStringView rest = match.capturedView(2);
        for (auto start = rest.begin(); senses.size() <= mostSenses;) {
            const auto end = std::find_if(start, rest.end(), separatesSenses);
            const QString piece = QStringView(start, end).trimmed().toString();
            if (!piece.isEmpty())
                senses += numberedSense(senses.size() + 1, piece);
            if (end == rest.end())
                break;
            start = end + 1;
        }
        addGroup(match.captured(1).toLower(), senses);
    }

    void readChineseToEnglish() {
        const JsonValue word = firstWord(m_root.member("ce"));
        if (word.isMissing())
            return;
        if (lacksPhonetic())
            m_phonetic = word.member("phone").text();
        QList<SenseItem> senses;
        qint64 position = 0;
        for (const JsonValue &translation : word.member("trs").elements()) {
            ++position;
            if (const auto line = lineOf(translation)) {
                m_rawLines += *line;
                senses += numberedSense(position, *line);
            }
        }
        addGroup(QStringLiteral("英译"), senses);
    }

    void readMachineTranslation() {
        const auto translation = m_root.member("fanyi").member("tran").nonEmptyText();
        if (!translation)
            return;
        m_rawLines += translation->trimmed();
        addGroup(QStringLiteral("翻译"), {numberedSense(1, translation->trimmed())});
    }

    void readWebTranslations() {
        QList<SenseItem> senses;
        qint64 position = 0;
        const JsonValue translations = m_root.member("web_trans").member("web-translation");
        for (const JsonValue &translation : translations.elements(mostWebTranslations)) {
            ++position;
            if (const auto value = translation.member("trans").first().member("value").text()) {
                senses += numberedSense(position, value->trimmed());
                m_rawLines += value->trimmed();
            }
        }
        addGroup(QStringLiteral("网络释义"), senses);
    }

    void addGroup(const QString &pos, const QList<SenseItem> &senses) {
        if (senses.isEmpty())
            return;
        m_senseCount += senses.size();
        m_groups += PartOfSpeechGroup::named(pos, senses);
    }

    /// One group for each part of speech, its senses numbered in their order.
    QList<PartOfSpeechGroup> mergedGroups() const {
        QList<PartOfSpeechGroup> merged;
        QList<QSet<QString>> meanings;
        QHash<QString, qsizetype> indexes;
        for (const PartOfSpeechGroup &group : m_groups) {
            const QString key = group.posAbbreviation();
            const auto known = indexes.constFind(key);
            const bool isNew = known == indexes.cend();
            const qsizetype index = isNew ? merged.size() : *known;
            if (isNew) {
                indexes.insert(key, index);
                merged += group;
                meanings += QSet<QString>();
            }
            for (const SenseItem &sense : group.senses) {
                const qsizetype count = meanings[index].size();
                meanings[index] += sense.chineseMeaning;
                if (!isNew && meanings[index].size() > count)
                    merged[index].senses += sense;
            }
        }
        for (PartOfSpeechGroup &group : merged) {
            qint64 number = 0;
            for (SenseItem &sense : group.senses)
                sense.number = ++number;
        }
        return merged;
    }

    QList<ExampleSentence> examples() const {
        QList<ExampleSentence> list;
        const JsonValue pairs = m_root.member("blng_sents_part").member("sentence-pair");
        for (const JsonValue &pair : pairs.elements(mostExamples)) {
            auto english = pair.member("sentence").text();
            if (!english)
                english = pair.member("sentence-eng").text();
            const QString en = withoutTags(english.value_or(QString())).trimmed();
            const QString cn = pair.member("sentence-translation").text().value_or(QString()).trimmed();
            if (!en.isEmpty() && !cn.isEmpty())
                list += ExampleSentence{.en = en, .cn = cn};
        }
        return list;
    }

    JsonValue m_root;
    QString m_headword;
    std::optional<QString> m_phonetic;
    QList<PartOfSpeechGroup> m_groups;
    QStringList m_rawLines;
    qsizetype m_senseCount = 0;
};

} // namespace

std::optional<DictionaryEntry> parseYoudaoJSON(const QByteArray &data, const QString &query) {
    const auto document = JsonDocument::parse(data);
    if (!document || !document->root().isObject())
        return std::nullopt;
    return Parser(document->root(), query).parse();
}

bool isYoudaoAnswer(const QByteArray &data) {
    const auto document = JsonDocument::parse(data);
    if (!document)
        return false;
    constexpr const char *sections[] = {"simple", "ec", "ce", "fanyi", "web_trans", "blng_sents_part"};
    return std::any_of(std::begin(sections), std::end(sections),
                       [&](const char *name) { return document->root().member(name).isObject(); });
}

} // namespace lexiquill
