#pragma once

#include "model/word_record.h"

#include <optional>

namespace lexiquill {

/// The fields of a word record of which others depend, as a source gives them: absent where it does not.
struct GivenFields {
    std::optional<QString> rawDefinition = {};
    std::optional<Instant> firstSearchedDate = {};
    std::optional<Instant> lastSearchedDate = {};
    std::optional<Instant> nextReviewDate = {};
    std::optional<qint64> repetitionCount = {};
    std::optional<qint64> intervalDays = {};
    std::optional<bool> isMastered = {};
    std::optional<MemoryStatus> memoryStatus = {};
};

/// Fills these fields of a record in, whose other fields are set already. An absent date is `now`, unless it
/// follows from others; the rest follows from the rules of review.
void fillIn(WordRecord &record, const GivenFields &given, Instant now);

} // namespace lexiquill
