#pragma once

#include "model/word_record.h"

namespace lexiquill {

/// What a text shows instead of the word.
inline constexpr QStringView wordBlank = u"____";

/// The text with blanks for the word and its forms, also where other words stand between those of a phrase:
/// "gave it up". Words that begin with a word of four letters or more count as its forms.
QString withoutWord(const QString &text, const QString &word);

/// The meaning of a word as a question: the record without its word and phonetic, with blanks in all texts
/// that would tell them. It holds no more senses and examples than a card shows at first.
WordRecord withoutWord(const WordRecord &record);

} // namespace lexiquill
