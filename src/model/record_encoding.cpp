#include "model/record_codec.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace lexiquill {

namespace {

void write(JsonWriter &writer, const SenseItem &sense, JsonForm form);
void write(JsonWriter &writer, const PartOfSpeechGroup &group, JsonForm form);
void write(JsonWriter &writer, const ExampleSentence &example, JsonForm form);
void write(JsonWriter &writer, const ReviewLog &log, JsonForm form);
void write(JsonWriter &writer, const WordRecord &record, JsonForm form);

void write(JsonWriter &writer, const QString &text, JsonForm) {
    writer.value(text);
}
void write(JsonWriter &writer, qint64 number, JsonForm) {
    writer.value(number);
}
void write(JsonWriter &writer, double number, JsonForm) {
    writer.value(number);
}
void write(JsonWriter &writer, bool boolean, JsonForm) {
    writer.value(boolean);
}
void write(JsonWriter &writer, MemoryStatus status, JsonForm) {
    writer.value(rawValue(status));
}
void write(JsonWriter &writer, ReviewFeedback feedback, JsonForm) {
    writer.value(rawValue(feedback));
}

void write(JsonWriter &writer, const QUuid &id, JsonForm) {
    // "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX"
    const QByteArray text = id.toByteArray(QUuid::WithoutBraces).toUpper();
    writer.plainValue({text.constData(), static_cast<std::size_t>(text.size())});
}

void write(JsonWriter &writer, Instant instant, JsonForm form) {
    if (form == JsonForm::File)
        writer.value(instant.toIso8601());
    else
        writer.value(instant.seconds);
}

template <typename Element> void write(JsonWriter &writer, const QList<Element> &list, JsonForm form) {
    writer.beginArray();
    for (const Element &element : list)
        write(writer, element, form);
    writer.endArray();
}

/// One member of a record's JSON object: its key, and how to write it.
template <typename Record> struct Member {
    std::string_view key;
    void (*writeMember)(JsonWriter &, std::string_view, const Record &, JsonForm);
};

template <typename Value>
void writeMember(JsonWriter &writer, std::string_view key, const Value &value, JsonForm form) {
    writer.key(key);
    write(writer, value, form);
}

/// A member with an absent value is left out.
template <typename Value>
void writeMember(JsonWriter &writer, std::string_view key, const std::optional<Value> &value, JsonForm form) {
    if (value)
        writeMember(writer, key, *value, form);
}

template <auto field, typename Record> constexpr Member<Record> member(std::string_view key) {
    return {key, [](JsonWriter &writer, std::string_view name, const Record &record, JsonForm form) {
                writeMember(writer, name, record.*field, form);
            }};
}

template <typename Record, std::size_t count>
void writeObject(JsonWriter &writer, const Record &record, JsonForm form,
                 const std::array<Member<Record>, count> &declared) {
    static const auto sorted = [&declared] {
        auto members = declared;
        std::sort(members.begin(), members.end(), [](const auto &a, const auto &b) { return a.key < b.key; });
        return members;
    }();
    writer.beginObject();
    for (const Member<Record> &each : form == JsonForm::File ? sorted : declared)
        each.writeMember(writer, each.key, record, form);
    writer.endObject();
}

void write(JsonWriter &writer, const ExampleSentence &example, JsonForm form) {
    using T = ExampleSentence;
    static constexpr std::array members{member<&T::en, T>("en"), member<&T::cn, T>("cn")};
    writeObject(writer, example, form, members);
}

void write(JsonWriter &writer, const SenseItem &sense, JsonForm form) {
    using T = SenseItem;
    static constexpr std::array members{member<&T::number, T>("number"), member<&T::context, T>("context"),
                                        member<&T::chineseMeaning, T>("chineseMeaning"),
                                        member<&T::examples, T>("examples")};
    writeObject(writer, sense, form, members);
}

void write(JsonWriter &writer, const PartOfSpeechGroup &group, JsonForm form) {
    using T = PartOfSpeechGroup;
    // For readers that know only "meanings".
    static constexpr auto writeMeanings = [](JsonWriter &out, std::string_view key, const T &value,
                                             JsonForm outForm) {
        writeMember(out, key, value.cleanChineseList(), outForm);
    };
    static constexpr std::array members{member<&T::pos, T>("pos"), member<&T::posChinese, T>("posChinese"),
                                        member<&T::senses, T>("senses"),
                                        Member<T>{"meanings", writeMeanings}};
    writeObject(writer, group, form, members);
}

void write(JsonWriter &writer, const DictionaryEntry &entry, JsonForm form) {
    using T = DictionaryEntry;
    static constexpr std::array members{
        member<&T::headword, T>("headword"), member<&T::phonetic, T>("phonetic"),
        member<&T::posGroups, T>("posGroups"), member<&T::rawText, T>("rawText"),
        member<&T::examples, T>("examples")};
    writeObject(writer, entry, form, members);
}

void write(JsonWriter &writer, const ReviewLog &log, JsonForm form) {
    using T = ReviewLog;
    static constexpr std::array members{member<&T::id, T>("id"), member<&T::reviewDate, T>("reviewDate"),
                                        member<&T::feedback, T>("feedback"),
                                        member<&T::resultingIntervalDays, T>("resultingIntervalDays"),
                                        member<&T::resultingEaseFactor, T>("resultingEaseFactor")};
    writeObject(writer, log, form, members);
}

void write(JsonWriter &writer, const WordRecord &record, JsonForm form) {
    using T = WordRecord;
    // "repetition" and "interval" repeat the members before them, for clients that know only the short keys.
    static constexpr std::array members{
        member<&T::id, T>("id"),
        member<&T::word, T>("word"),
        member<&T::phonetic, T>("phonetic"),
        member<&T::conciseSummary, T>("conciseSummary"),
        member<&T::posGroups, T>("posGroups"),
        member<&T::rawDefinition, T>("rawDefinition"),
        member<&T::examples, T>("examples"),
        member<&T::firstSearchedDate, T>("firstSearchedDate"),
        member<&T::lastSearchedDate, T>("lastSearchedDate"),
        member<&T::searchCount, T>("searchCount"),
        member<&T::lastReviewDate, T>("lastReviewDate"),
        member<&T::nextReviewDate, T>("nextReviewDate"),
        member<&T::repetitionCount, T>("repetitionCount"),
        member<&T::repetitionCount, T>("repetition"),
        member<&T::intervalDays, T>("intervalDays"),
        member<&T::intervalDays, T>("interval"),
        member<&T::easeFactor, T>("easeFactor"),
        member<&T::isMastered, T>("isMastered"),
        member<&T::memoryStatus, T>("memoryStatus"),
        member<&T::reviewHistory, T>("reviewHistory"),
        member<&T::userNotes, T>("userNotes"),
    };
    writeObject(writer, record, form, members);
}

template <typename Value> QByteArray encode(const Value &value, JsonForm form) {
    QByteArray bytes;
    JsonWriter writer(form == JsonForm::File ? JsonWriter::Style::Pretty : JsonWriter::Style::Compact,
                      [&bytes](QByteArrayView chunk) { bytes += chunk; });
    write(writer, value, form);
    writer.finish();
    return bytes;
}

} // namespace

void writeWordRecord(JsonWriter &writer, const WordRecord &record, JsonForm form) {
    write(writer, record, form);
}

void writeWordRecords(JsonWriter &writer, const QList<WordRecord> &records, JsonForm form) {
    write(writer, records, form);
}

QByteArray encodeWordRecords(const QList<WordRecord> &records, JsonForm form) {
    return encode(records, form);
}

QByteArray encodeDictionaryEntry(const DictionaryEntry &entry, JsonForm form) {
    return encode(entry, form);
}

} // namespace lexiquill
