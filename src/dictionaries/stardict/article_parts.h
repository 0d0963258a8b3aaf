#pragma once

#include "dictionaries/article/article.h"

#include <QByteArray>
#include <QByteArrayView>

namespace lexiquill::stardict {

/// Largest article that is read, in bytes.
inline constexpr quint32 maxArticleSize = 4 * 1024 * 1024;

/// The parts of an article that can be read. `typeSequence` names the types of all its parts; when it is
/// empty each part names its own. A damaged article yields the parts before the damage.
article::Article splitArticle(QByteArrayView article, const QByteArray &typeSequence);

} // namespace lexiquill::stardict
