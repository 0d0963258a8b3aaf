#pragma once

#include "platform/linux/stardict/article.h"

#include <QString>

#include <optional>
#include <vector>

namespace lexiquill::stardict {

/// The articles on a word as one line: "headword | phonetic | body", or "headword | body" when no phonetic is
/// known. The body holds, for every part of speech, its label and the numbered senses with their examples:
/// "noun ① (医) gloss ▸ example ② gloss". Nothing when the articles hold no text.
std::optional<QString> definitionText(const QString &headword,
                                      const std::vector<std::vector<Field>> &articles);

} // namespace lexiquill::stardict
