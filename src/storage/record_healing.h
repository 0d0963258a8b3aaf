#pragma once

#include "model/word_record.h"

namespace lexiquill {

/// Earlier versions put an invisible character, U+2060, into texts of dictionaries. Takes it out of the
/// record's content; the word and the user's own note are left alone.
void healContent(WordRecord &record);

} // namespace lexiquill
