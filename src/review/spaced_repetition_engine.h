#pragma once

#include "model/mastery.h"
#include "model/word_record.h"
#include "support/calendar.h"

namespace lexiquill {

/// The review rules: SM-2 (P. A. Wozniak, 1990) with two answers, a clamped ease factor and a rule that
/// retires mastered words. Stateless.
class SpacedRepetitionEngine {
public:
    static constexpr double defaultEaseFactor = 2.5;
    static constexpr double minEaseFactor = 1.3;
    static constexpr double maxEaseFactor = 3.0;
    static constexpr qint64 masteryIntervalThresholdDays = lexiquill::masteryIntervalThresholdDays;
    static constexpr qint64 masteryConsecutiveRepetitions = lexiquill::masteryConsecutiveRepetitions;

    /// Applies one review answer: reschedules the word and appends one entry to its history.
    static void processReview(WordRecord &word, ReviewFeedback feedback, Instant reviewDate,
                              const Calendar &calendar);

    /// Applies one new search of a recorded word; a mastered word returns to review.
    static void recordSearch(WordRecord &word, Instant searchDate);
};

} // namespace lexiquill
