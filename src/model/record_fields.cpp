#include "model/record_fields.h"

#include "model/record_defaults.h"
#include "support/utf8.h"

namespace lexiquill {

bool readRecord(FieldReader &reader, FieldReader::Object object, ExampleSentence &out) {
    bool hasEn = false;
    bool hasCn = false;
    reader.forEachMember(object, [&](std::string_view key, FieldReader::Value value) {
        if (key == "en")
            hasEn |= reader.read(value, out.en);
        else if (key == "cn")
            hasCn |= reader.read(value, out.cn);
    });
    return hasEn && hasCn && !reader.isBroken();
}

bool readRecord(FieldReader &reader, FieldReader::Object object, SenseItem &out) {
    bool hasMeaning = false;
    bool hasExamples = false;
    bool isReadable = true;
    const auto readOptional = [&](FieldReader::Value value, auto &field) {
        bool isNull = false;
        isReadable &= (reader.take(value.is_null(), isNull) && isNull) || reader.read(value, field);
    };
    reader.forEachMember(object, [&](std::string_view key, FieldReader::Value value) {
        if (key == "number")
            readOptional(value, out.number);
        else if (key == "context")
            readOptional(value, out.context);
        else if (key == "chineseMeaning")
            hasMeaning |= reader.read(value, out.chineseMeaning);
        else if (key == "examples")
            hasExamples |= reader.read(value, out.examples);
    });
    return isReadable && hasMeaning && hasExamples && !reader.isBroken();
}

bool readRecord(FieldReader &reader, FieldReader::Object object, PartOfSpeechGroup &out) {
    std::optional<QString> pos;
    std::optional<QString> posChinese;
    std::optional<QList<SenseItem>> senses;
    std::optional<QList<std::string_view>> meanings; // rarely needed
    reader.forEachMember(object, [&](std::string_view key, FieldReader::Value value) {
        if (key == "pos")
            reader.read(value, pos);
        else if (key == "posChinese")
            reader.read(value, posChinese);
        else if (key == "senses")
            reader.read(value, senses);
        else if (key == "meanings")
            reader.read(value, meanings);
    });
    out.pos = pos.value_or(QStringLiteral("n."));
    out.posChinese = posChinese ? *posChinese : PartOfSpeechGroup::localizePOS(out.pos);
    if (senses) {
        out.senses = std::move(*senses);
    } else if (meanings) {
        for (const std::string_view meaning : std::as_const(*meanings))
            out.senses += SenseItem{.chineseMeaning = textFromUtf8(meaning)};
    }
    return !reader.isBroken();
}

bool readRecord(FieldReader &reader, FieldReader::Object object, DictionaryEntry &out) {
    int required = 0;
    reader.forEachMember(object, [&](std::string_view key, FieldReader::Value value) {
        if (key == "headword")
            required |= reader.read(value, out.headword) ? 1 : 0;
        else if (key == "phonetic")
            reader.read(value, out.phonetic);
        else if (key == "posGroups")
            required |= reader.read(value, out.posGroups) ? 2 : 0;
        else if (key == "rawText")
            required |= reader.read(value, out.rawText) ? 4 : 0;
        else if (key == "examples")
            required |= reader.read(value, out.examples) ? 8 : 0;
    });
    return required == 15 && !reader.isBroken();
}

bool readRecord(FieldReader &reader, FieldReader::Object object, ReviewLog &out) {
    int required = 0;
    reader.forEachMember(object, [&](std::string_view key, FieldReader::Value value) {
        if (key == "id")
            required |= reader.read(value, out.id) ? 1 : 0;
        else if (key == "reviewDate")
            required |= reader.read(value, out.reviewDate) ? 2 : 0;
        else if (key == "feedback")
            required |= reader.read(value, out.feedback) ? 4 : 0;
        else if (key == "resultingIntervalDays")
            required |= reader.read(value, out.resultingIntervalDays) ? 8 : 0;
        else if (key == "resultingEaseFactor")
            required |= reader.read(value, out.resultingEaseFactor) ? 16 : 0;
    });
    return required == 31 && !reader.isBroken();
}

bool readRecord(FieldReader &reader, FieldReader::Object object, WordRecord &out) {
    bool hasId = false;
    GivenFields given;
    std::optional<qint64> repetition;
    std::optional<qint64> interval;
    reader.forEachMember(object, [&](std::string_view key, FieldReader::Value value) {
        if (key == "id")
            hasId |= reader.read(value, out.id);
        else if (key == "word")
            reader.read(value, out.word);
        else if (key == "phonetic")
            reader.read(value, out.phonetic);
        else if (key == "conciseSummary")
            reader.read(value, out.conciseSummary);
        else if (key == "posGroups")
            reader.read(value, out.posGroups);
        else if (key == "rawDefinition")
            reader.read(value, given.rawDefinition);
        else if (key == "examples")
            reader.read(value, out.examples);
        else if (key == "firstSearchedDate")
            reader.read(value, given.firstSearchedDate);
        else if (key == "lastSearchedDate")
            reader.read(value, given.lastSearchedDate);
        else if (key == "searchCount")
            reader.read(value, out.searchCount);
        else if (key == "lastReviewDate")
            reader.read(value, out.lastReviewDate);
        else if (key == "nextReviewDate")
            reader.read(value, given.nextReviewDate);
        else if (key == "repetitionCount")
            reader.read(value, given.repetitionCount);
        else if (key == "repetition")
            reader.read(value, repetition);
        else if (key == "intervalDays")
            reader.read(value, given.intervalDays);
        else if (key == "interval")
            reader.read(value, interval);
        else if (key == "easeFactor")
            reader.read(value, out.easeFactor);
        else if (key == "isMastered")
            reader.read(value, given.isMastered);
        else if (key == "memoryStatus")
            reader.read(value, given.memoryStatus);
        else if (key == "reviewHistory")
            reader.read(value, out.reviewHistory);
        else if (key == "userNotes")
            reader.read(value, out.userNotes);
    });
    if (reader.isBroken())
        return false;
    if (!hasId)
        out.id = QUuid::createUuid();
    if (!given.repetitionCount)
        given.repetitionCount = repetition;
    if (!given.intervalDays)
        given.intervalDays = interval;
    fillIn(out, given, reader.now());
    return true;
}

} // namespace lexiquill
