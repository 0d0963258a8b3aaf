#pragma once

#include "dictionaries/article/line.h"

#include <QString>

namespace lexiquill::article {

/// Reads an article in the markup of MediaWiki: titles become headings, numbered items senses, what is
/// indented below them examples. Templates are left out.
PlainArticle readWikiText(const QString &text);

} // namespace lexiquill::article
