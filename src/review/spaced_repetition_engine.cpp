#include "review/spaced_repetition_engine.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lexiquill {

namespace {

constexpr double easeIncrement = 0.05;
constexpr double easeDecrement = 0.2;
constexpr qint64 firstIntervalDays = 1;
constexpr qint64 secondIntervalDays = 6;
constexpr qint64 reviewedAgainIntervalDays = 7;

/// Records come from files, so counters may have their maximum value.
qint64 increment(qint64 number) {
    return number == std::numeric_limits<qint64>::max() ? number : number + 1;
}

qint64 ceilingToInteger(double number) {
    constexpr double limit = 9.2e18;
    return static_cast<qint64>(std::ceil(std::clamp(number, -limit, limit)));
}

qint64 nextInterval(const WordRecord &word, qint64 newRepetition) {
    if (newRepetition == 1)
        return firstIntervalDays;
    if (newRepetition == 2)
        return secondIntervalDays;
    const double base = static_cast<double>(std::max<qint64>(word.intervalDays, 1));
    return std::max(increment(newRepetition), ceilingToInteger(word.easeFactor * base));
}

Instant afterDays(Instant date, qint64 days, const Calendar &calendar) {
    const auto moved = calendar.addingDays(date, days);
    return moved ? *moved : date.adding(static_cast<double>(days) * secondsPerDay);
}

} // namespace

void SpacedRepetitionEngine::processReview(WordRecord &word, ReviewFeedback feedback, Instant reviewDate,
                                           const Calendar &calendar) {
    if (feedback == ReviewFeedback::Remembered) {
        const qint64 newRepetition = increment(word.repetitionCount);
        word.intervalDays = nextInterval(word, newRepetition);
        word.repetitionCount = newRepetition;
        word.easeFactor = std::min(word.easeFactor + easeIncrement, maxEaseFactor);
        word.isMastered = reachesMastery(newRepetition, word.intervalDays);
        word.memoryStatus = word.isMastered ? MemoryStatus::Mastered : MemoryStatus::Reviewing;
    } else {
        word.repetitionCount = 0;
        word.intervalDays = firstIntervalDays;
        word.easeFactor = std::max(word.easeFactor - easeDecrement, minEaseFactor);
        word.isMastered = false;
        word.memoryStatus = MemoryStatus::Learning;
    }
    word.lastReviewDate = reviewDate;
    word.nextReviewDate = afterDays(reviewDate, word.intervalDays, calendar);
    word.reviewHistory += ReviewLog{.reviewDate = reviewDate,
                                    .feedback = feedback,
                                    .resultingIntervalDays = word.intervalDays,
                                    .resultingEaseFactor = word.easeFactor};
}

void SpacedRepetitionEngine::recordSearch(WordRecord &word, Instant searchDate) {
    word.searchCount = increment(word.searchCount);
    word.lastSearchedDate = searchDate;
    if (!word.isMastered)
        return;
    word.isMastered = false;
    word.memoryStatus = MemoryStatus::Reviewing;
    word.intervalDays = std::min(word.intervalDays, reviewedAgainIntervalDays);
    word.nextReviewDate = std::min(searchDate, word.nextReviewDate);
}

} // namespace lexiquill
