#include "lookup/online/worker_response.h"

#include "support/json_value.h"

namespace lexiquill {

namespace {

constexpr qsizetype mostItems = 10'000;

/// Reads members of fixed types. isValid() is false once a member is missing or has the wrong type.
class StrictReader {
public:
    bool isValid() const { return m_isValid; }

    QString text(const JsonValue &value) { return required(value.text()); }

    std::optional<QString> optionalText(const JsonValue &value) {
        return isAbsent(value) ? std::nullopt : std::optional(text(value));
    }

    bool boolean(const JsonValue &value) { return required(value.boolean()); }

    JsonValue object(const JsonValue &value) {
        m_isValid = m_isValid && value.isObject();
        return value;
    }

    QList<JsonValue> array(const JsonValue &value) {
        const QList<JsonValue> elements = value.elements(mostItems + 1);
        m_count += elements.size();
        m_isValid = m_isValid && value.isArray() && m_count <= mostItems;
        return m_isValid ? elements : QList<JsonValue>();
    }

    QList<JsonValue> optionalArray(const JsonValue &value) {
        return isAbsent(value) ? QList<JsonValue>() : array(value);
    }

    static bool isAbsent(const JsonValue &value) { return value.isMissing() || value.isNull(); }

private:
    template <typename T> T required(const std::optional<T> &value) {
        m_isValid = m_isValid && value;
        return value.value_or(T());
    }

    qsizetype m_count = 0;
    bool m_isValid = true;
};

PartOfSpeechGroup readGroup(StrictReader &reader, const JsonValue &value) {
    const QString pos = reader.text(value.member("pos"));
    QList<SenseItem> senses;
    for (const JsonValue &meaning : reader.array(value.member("meanings")))
        senses += SenseItem{.number = senses.size() + 1, .chineseMeaning = reader.text(meaning)};
    return PartOfSpeechGroup::named(pos, senses);
}

} // namespace

std::optional<DictionaryEntry> parseWorkerResponse(const QByteArray &data, const QString &query) {
    const auto document = JsonDocument::parse(data);
    if (!document)
        return std::nullopt;
    StrictReader reader;
    const JsonValue root = reader.object(document->root());
    const JsonValue value = root.member("entry");
    if (!reader.boolean(root.member("success")) || StrictReader::isAbsent(value))
        return std::nullopt;

    reader.object(value);
    DictionaryEntry entry{.headword = reader.text(value.member("word")),
                          .phonetic = reader.optionalText(value.member("phonetic")),
                          .posGroups = {},
                          .rawText = {}};
    reader.optionalText(value.member("audio"));
    for (const JsonValue &group : reader.optionalArray(value.member("posGroups")))
        entry.posGroups += readGroup(reader, reader.object(group));
    const auto summary = reader.optionalText(value.member("conciseSummary"));
    const auto definition = reader.optionalText(value.member("rawDefinition"));
    entry.rawText = definition.value_or(QString()).isEmpty() ? summary.value_or(query) : *definition;
    for (const JsonValue &example : reader.optionalArray(value.member("examples"))) {
        reader.object(example);
        entry.examples +=
            ExampleSentence{.en = reader.text(example.member("en")), .cn = reader.text(example.member("cn"))};
    }
    return reader.isValid() ? std::optional(entry) : std::nullopt;
}

} // namespace lexiquill
