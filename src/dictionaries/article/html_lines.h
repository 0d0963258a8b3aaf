#pragma once

#include "dictionaries/article/line.h"

#include <QString>

namespace lexiquill::article {

/// Reads an article in HTML. The classes of its elements tell examples, transcriptions and parts of speech if
/// they have the usual names.
PlainArticle readHtml(const QString &text);

/// What dictionaries' elements are for the reader of an article.
bool isHiddenElement(const QString &name);
bool isBlockElement(const QString &name);
bool isHeadingElement(const QString &name);

} // namespace lexiquill::article
