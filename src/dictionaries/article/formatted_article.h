#pragma once

#include "dictionaries/article/article.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace lexiquill::article {

/// The articles as rich text. It consists of the elements p, br, b, i, u, sub, sup, ol, ul, li, h3, and img
/// whose source is "dict:" and a relative path; anything else is dropped or escaped. It has no links and
/// loads nothing. What is longer than some 200,000 characters is cut.
QString formattedArticle(const std::vector<Article> &articles);

/// The paths of the links "sound://path" in articles of HTML, in their order; at most 100.
QStringList soundLinks(const std::vector<Article> &articles);

} // namespace lexiquill::article
