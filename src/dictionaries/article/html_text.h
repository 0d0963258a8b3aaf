#pragma once

#include "dictionaries/article/article.h"

namespace lexiquill::article {

/// A plain text with elements of HTML becomes a part in HTML that keeps its line breaks, and character
/// references in a text without elements become characters: many converted dictionaries have both. Other
/// parts stay as they are. Only elements that a dictionary uses for its layout count, if they are complete.
Part withRealForm(const Part &part);

} // namespace lexiquill::article
