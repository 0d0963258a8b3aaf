#pragma once

#include "model/word_record.h"

#include <QList>

#include <optional>

namespace lexiquill {

/// How the memory of a word fades between its reviews. The estimate is exponential forgetting,
/// R(t) = exp(-t / S), with t the time since the last review. The stability S follows from the interval that
/// the review led to: SM-2 aims at asking again when nine of ten words are still known, so R(interval) = 0.9
/// and S = interval / -ln 0.9, that is R(t) = 0.9 ^ (t / interval).
struct ForgettingCurve {
    /// A review, after which the word is known fully.
    struct Review {
        double day = 0;      ///< since the first one shown
        double interval = 1; ///< days to the next one
    };

    QList<Review> reviews = {}; ///< oldest first
    double today = 0;           ///< days since the first review shown
    double due = 0;             ///< the day of the next review

    bool isEmpty() const { return reviews.isEmpty(); }
    /// How likely the word is known on a day, 0 to 1.
    double retention(double day) const;
    /// The part of the curve worth looking at ends here.
    double lastDay() const;

    /// The word's last reviews; its first search stands for the one of a word that has never been reviewed.
    static ForgettingCurve of(const WordRecord &word, Instant now);
    /// One review with the mean interval of all words that have been reviewed, as long ago as theirs on
    /// average. Empty when there is none.
    static ForgettingCurve ofAverage(const QList<WordRecord> &words, Instant now);
};

} // namespace lexiquill
