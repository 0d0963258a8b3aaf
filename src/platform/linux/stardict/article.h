#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <vector>

namespace lexiquill::stardict {

/// Largest article that is read, in bytes.
inline constexpr quint32 maxArticleSize = 4 * 1024 * 1024;

/// One typed part of an article. The data may hold any bytes and belongs to the article it was taken from.
struct Field {
    char type = 'm';
    QByteArrayView data;
};

/// The parts of an article. `typeSequence` names their types; when it is empty each part names its own. A
/// damaged article yields the parts before the damage.
std::vector<Field> splitArticle(QByteArrayView article, const QByteArray &typeSequence);

} // namespace lexiquill::stardict
