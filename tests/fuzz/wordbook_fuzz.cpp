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
    // What has been read once is written and read again without change.
    const QByteArray written = encodeWordRecords(*records, form);
    check(isWellFormed(written));
    const auto again = decodeWordRecords(written, form, now);
    check(again && again->size() == records->size());
    check(encodeWordRecords(*again, form) == written);

    // Nothing that a file may hold harms what is done with the records.
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

/// Reading in pieces gives the same, and in a sound file each record's text is that record.
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
        alone->id = record.id; // made up where the text has none
        check(haveSameContent(*alone, record));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // A copy of the exact size lets the sanitizer see every byte read beyond it.
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
