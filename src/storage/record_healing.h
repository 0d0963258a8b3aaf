#pragma once

#include "model/word_record.h"

namespace lexiquill {

/// Removes the invisible character U+2060 from a record's content. Earlier versions put it into texts of
/// dictionaries. The word and the user's note are not changed.
void healContent(WordRecord &record);

} // namespace lexiquill
