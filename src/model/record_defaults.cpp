#include "model/record_defaults.h"

#include "model/mastery.h"

namespace lexiquill {

namespace {

Instant derivedReviewDate(const WordRecord &record, Instant now) {
    if (!record.lastReviewDate)
        return now;
    return record.lastReviewDate->adding(static_cast<double>(record.intervalDays) * secondsPerDay);
}

MemoryStatus derivedStatus(const WordRecord &record) {
    if (record.isMastered)
        return MemoryStatus::Mastered;
    if (record.repetitionCount >= 2)
        return MemoryStatus::Reviewing;
    return record.repetitionCount == 1 ? MemoryStatus::Learning : MemoryStatus::New;
}

} // namespace

// The order matters: a default may depend on fields set before it.
void fillIn(WordRecord &record, const GivenFields &given, Instant now) {
    record.rawDefinition = given.rawDefinition ? *given.rawDefinition : record.conciseSummary;
    record.firstSearchedDate = given.firstSearchedDate.value_or(now);
    record.lastSearchedDate = given.lastSearchedDate.value_or(now);
    record.repetitionCount = given.repetitionCount.value_or(0);
    record.intervalDays = given.intervalDays.value_or(record.repetitionCount > 0 ? 1 : 0);
    record.nextReviewDate = given.nextReviewDate ? *given.nextReviewDate : derivedReviewDate(record, now);
    record.isMastered =
        given.isMastered.value_or(reachesMastery(record.repetitionCount, record.intervalDays));
    record.memoryStatus = given.memoryStatus ? *given.memoryStatus : derivedStatus(record);
}

} // namespace lexiquill
