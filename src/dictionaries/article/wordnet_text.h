#pragma once

#include "dictionaries/article/line.h"

#include <QString>

namespace lexiquill::article {

/// Whether a text looks like WordNet: English definitions behind "n 1:" or "v :".
bool isWordNetText(const QString &text);

/// Reads the text of WordNet. Each definition is an item, also if it is folded into several lines.
PlainArticle readWordNet(const QString &text);

} // namespace lexiquill::article
