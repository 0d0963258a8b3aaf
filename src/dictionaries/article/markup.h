#pragma once

#include "dictionaries/article/line.h"

#include <QString>

namespace lexiquill::article {

/// Html is for documents that cannot be read as a tree, see readHtml().
enum class MarkupKind { Xdxf, Html, Pango, PowerWord, WordNet };

/// Removes the markup from an article. Anything that is not a well-formed tag stays as text. Takes linear
/// time, even for malformed text.
PlainArticle readMarkup(const QString &text, MarkupKind kind);

} // namespace lexiquill::article
