#pragma once

#include "model/word_record.h"

#include <optional>

namespace lexiquill {

/// The fields of a word record whose defaults depend on each other; absent if the source does not contain
/// them.
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

/// Sets these fields of a record whose other fields are already set. An absent date becomes `now`, unless it
/// can be derived from other fields. The other absent fields follow from the review rules.
void fillIn(WordRecord &record, const GivenFields &given, Instant now);

} // namespace lexiquill
