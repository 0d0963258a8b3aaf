#include "model/record_codec.h"
#include "review/spaced_repetition_engine.h"
#include "review/weekly_review_scheduler.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace lexiquill;

namespace {

const Instant now{763637213.25};

void check(bool holds) {
    if (!holds)
        std::abort();
}

void checkForm(const QByteArray &json, JsonForm form) {
    const auto records = decodeWordRecords(json, form, now);
    if (!records)
        return;
    // What has been read once is written and read again without change.
    const QByteArray written = encodeWordRecords(*records, form);
    const auto again = decodeWordRecords(written, form, now);
    check(again && again->size() == records->size());
    check(encodeWordRecords(*again, form) == written);

    // Nothing that a file may hold harms what is done with the records.
    const Calendar calendar{.timeZone = QTimeZone("Europe/Berlin")};
    for (WordRecord record : *records) {
        record.nextReviewRelativeDescription(now, calendar);
        SpacedRepetitionEngine::shared().recordSearch(record, now);
        for (const ReviewFeedback answer : {ReviewFeedback::Remembered, ReviewFeedback::Forgot})
            SpacedRepetitionEngine::shared().processReview(record, answer, now, calendar);
        check(record.easeFactor >= SpacedRepetitionEngine::minEaseFactor &&
              record.easeFactor <= SpacedRepetitionEngine::maxEaseFactor);
    }
    const auto plan = WeeklyReviewScheduler::shared().generateWeeklyPlan(*records, now, calendar);
    WeeklyReviewScheduler::shared().exportMarkdown(plan, calendar);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // A copy of the exact size lets the sanitizer see every byte read beyond it.
    const QByteArray json(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    checkForm(json, JsonForm::File);
    checkForm(json, JsonForm::Wire);
    decodeWordRecord(json, JsonForm::File, now);
    if (const auto entry = decodeDictionaryEntry(json)) {
        const QByteArray written = encodeDictionaryEntry(*entry, JsonForm::Wire);
        const auto again = decodeDictionaryEntry(written);
        check(again && encodeDictionaryEntry(*again, JsonForm::Wire) == written);
    }
    return 0;
}
