#pragma once

#include "dictionaries/article/article.h"
#include "dictionaries/article/line.h"

namespace lexiquill::article {

/// The text without a byte order mark at its start, and without control characters, which could control a
/// terminal. Line feeds and tabs stay.
QString readable(QString text);

/// Removes the markup from a part of an article.
PlainArticle plainArticle(const Part &part);

} // namespace lexiquill::article
