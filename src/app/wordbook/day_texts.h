#pragma once

#include "model/word_record.h"

#include <QString>

namespace lexiquill {

/// The day of an instant in everyday words: "今天", "昨天", "3 天前" up to a month, else "2025-03-14".
QString relativeDay(Instant instant, Instant now, const Calendar &calendar);

/// When a word is reviewed next, as a statement: "今天待复习", "明天复习", "6 天后复习", "已完全掌握".
QString nextReviewText(const WordRecord &record, Instant now, const Calendar &calendar);

} // namespace lexiquill
