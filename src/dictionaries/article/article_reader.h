#pragma once

#include "dictionaries/article/article.h"
#include "model/dictionary_entry.h"

#include <optional>
#include <vector>

namespace lexiquill::article {

/// The entry that the articles on a word make together. Labels, numbers, separators and brackets that mark
/// the structure become structure; every other character stays as the dictionary has it. The raw text is
/// that of the articles without their markup. Nothing when the articles hold neither a letter nor a digit.
std::optional<DictionaryEntry> readArticles(const QString &headword, const std::vector<Article> &articles);

} // namespace lexiquill::article
