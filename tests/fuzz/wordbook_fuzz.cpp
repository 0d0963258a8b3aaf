#include "check.h"
#include "model/record_codec.h"
#include "review/spaced_repetition_engine.h"
#include "review/weekly_review_scheduler.h"

#include <cstddef>
#include <cstdint>

using namespace lexiquill;

namespace {

const Instant now{763637213.25};

void checkForm(const QByteArray &json, JsonForm form) {
    const auto records = decodeWordRecords(json, form, now);
    if (!records)
        return;
    // Records that have been read once do not change when they are written and read again.
    const QByteArray written = encodeWordRecords(*records, form);
    check(isWellFormed(written));
    const auto again = decodeWordRecords(written, form, now);
    check(again && again->size() == records->size());
    check(encodeWordRecords(*again, form) == written);

    // No content of a file may harm the operations on the records.
    const Calendar calendar{.timeZone = QTimeZone("Europe/Berlin")};
    for (WordRecord record : *records) {
        record.nextReviewRelativeDescription(now, calendar);
        SpacedRepetitionEngine::recordSearch(record, now);
        for (const ReviewFeedback answer : {ReviewFeedback::Remembered, ReviewFeedback::Forgot})
            SpacedRepetitionEngine::processReview(record, answer, now, calendar);
        check(record.easeFactor >= SpacedRepetitionEngine::minEaseFactor &&
              record.easeFactor <= SpacedRepetitionEngine::maxEaseFactor);
    }
    const auto plan = WeeklyReviewScheduler::generateWeeklyPlan(*records, now, calendar);
    WeeklyReviewScheduler::exportMarkdown(plan, calendar);
}

/// Decoding in pieces gives the same result. In a well-formed file, the text found for each record is that
/// record.
void checkPieces(const QByteArray &json) {
    const auto whole = decodeWordRecords(json, JsonForm::File, now, nullptr, json.size());
    QList<RecordText> texts;
    const auto pieces = decodeWordRecords(json, JsonForm::File, now, &texts, 1);
    check(whole.has_value() == pieces.has_value());
    if (!whole)
        return;
    check(pieces->size() == whole->size() && (texts.isEmpty() || texts.size() == whole->size()));
    const bool isSound = isWellFormed(json);
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const WordRecord &record = pieces->at(i);
        check(record.word == whole->at(i).word && record.posGroups == whole->at(i).posGroups &&
              record.userNotes == whole->at(i).userNotes);
        if (!isSound || texts.at(i).size == 0)
            continue;
        const QByteArray text = json.sliced(texts.at(i).offset, texts.at(i).size);
        auto alone = decodeWordRecord(text, JsonForm::File, now);
        check(alone.has_value());
        alone->id = record.id; // generated if the text has none
        check(haveSameContent(*alone, record));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // With a copy of the exact size, the sanitizer detects every read beyond it.
    const QByteArray json(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    checkForm(json, JsonForm::File);
    checkPieces(json);
    checkForm(json, JsonForm::Wire);
    decodeWordRecord(json, JsonForm::File, now);
    if (const auto entry = decodeDictionaryEntry(json)) {
        const QByteArray written = encodeDictionaryEntry(*entry, JsonForm::Wire);
        const auto again = decodeDictionaryEntry(written);
        check(again && encodeDictionaryEntry(*again, JsonForm::Wire) == written);
    }
    return 0;
}
