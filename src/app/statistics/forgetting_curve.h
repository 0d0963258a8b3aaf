#pragma once

#include "model/word_record.h"

#include <QList>

#include <optional>

namespace lexiquill {

/// An estimate of how well a word is remembered between its reviews. The model is exponential forgetting,
/// R(t) = exp(-t / S), where t is the time since the last review. The stability S follows from the interval
/// that the review resulted in: SM-2 schedules the next review for the time when 90 % of the words are still
/// known, so R(interval) = 0.9 and S = interval / -ln 0.9, that is R(t) = 0.9 ^ (t / interval).
struct ForgettingCurve {
    /// A review. Right after it the retention is 1.
    struct Review {
        double day = 0;      ///< days since the first review shown
        double interval = 1; ///< days to the next one
    };

    QList<Review> reviews = {}; ///< oldest first
    double today = 0;           ///< days since the first review shown
    double due = 0;             ///< the day of the next review

    bool isEmpty() const { return reviews.isEmpty(); }
    /// How likely the word is known on a day, 0 to 1.
    double retention(double day) const;
    /// The day at which the drawn curve ends.
    double lastDay() const;

    /// The curve of the word's last reviews. If it has never been reviewed, its first search counts as a
    /// review.
    static ForgettingCurve of(const WordRecord &word, Instant now);
    /// The curve of an average word: one review, with the mean interval and the mean age of the last reviews
    /// of all reviewed words. Empty if no word has been reviewed.
    static ForgettingCurve ofAverage(const QList<WordRecord> &words, Instant now);
};

} // namespace lexiquill
