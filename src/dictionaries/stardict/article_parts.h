#pragma once

#include "dictionaries/article/article.h"

#include <QByteArray>
#include <QByteArrayView>

namespace lexiquill::stardict {

/// The readable parts of an article. `typeSequence` contains the types of all its parts; if it is empty, each
/// part begins with its type. For a damaged article, returns the parts before the damage.
article::Article splitArticle(QByteArrayView article, const QByteArray &typeSequence);

} // namespace lexiquill::stardict
