#pragma once

#include <QtGlobal>

namespace lexiquill {

/// A word is mastered once its interval is this long, in days.
inline constexpr qint64 masteryIntervalThresholdDays = 60;
/// A word is mastered once it has been remembered this many times in a row.
inline constexpr qint64 masteryConsecutiveRepetitions = 5;

/// The rule of mastery: either condition suffices.
constexpr bool reachesMastery(qint64 repetitionCount, qint64 intervalDays) {
    return repetitionCount >= masteryConsecutiveRepetitions || intervalDays >= masteryIntervalThresholdDays;
}

} // namespace lexiquill
