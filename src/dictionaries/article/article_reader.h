#pragma once

#include "dictionaries/article/article.h"
#include "model/dictionary_entry.h"

#include <optional>
#include <vector>

namespace lexiquill::article {

/// Combines the articles on a word into one entry. Labels, numbers, separators and brackets that mark the
/// structure become structure. Phrases are the last group. The raw text is the text of the articles without
/// their markup; what is no meaning, such as derivatives and tags, stands only there. An article that is
/// prose has no groups. No value if the articles contain no letter and no digit.
std::optional<DictionaryEntry> readArticles(const QString &headword, const std::vector<Article> &articles);

} // namespace lexiquill::article
