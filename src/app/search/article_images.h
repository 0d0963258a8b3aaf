#pragma once

#include <QQuickImageProvider>

namespace lexiquill {

/// The pictures in dictionaries' articles. They are read on another thread; one that is too large, damaged or
/// of an unusual kind is left out.
class ArticleImages : public QQuickImageProvider {
public:
    ArticleImages() : QQuickImageProvider(Image, ForceAsynchronousImageLoading) {}

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

    /// The picture in these bytes, made smaller to fit into a card; null if there is none.
    static QImage decode(const QByteArray &bytes);
};

} // namespace lexiquill
