#include "app/search/article_images.h"

#include "app/search/article_markup.h"
#include "app/shell/services.h"
#include "dictionaries/dictionary_shelf.h"

#include <QBuffer>
#include <QImageReader>

namespace lexiquill {

namespace {

constexpr qsizetype maxFileSize = qsizetype{8} << 20;
constexpr qint64 maxPixels = qint64{16} << 20;
/// Fits into the narrowest card.
constexpr int maxSide = 400;

} // namespace

QImage ArticleImages::decode(const QByteArray &bytes) {
    // Other formats can refer to more files, or have rarely been tested with hostile ones.
    static const QList<QByteArray> formats{"png", "jpeg", "gif", "bmp", "webp"};
    if (bytes.size() > maxFileSize)
        return {};
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (!formats.contains(reader.format()) || size.isEmpty() ||
        qint64{size.width()} * size.height() > maxPixels)
        return {};
    if (size.width() > maxSide || size.height() > maxSide)
        reader.setScaledSize(size.scaled(maxSide, maxSide, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return reader.read();
}

QImage ArticleImages::requestImage(const QString &id, QSize *size, const QSize &) {
    const ArticleImage wanted = ArticleImage::fromId(id);
    const auto bytes = Services::current().shelf.resource(wanted.dictionary, wanted.name);
    QImage image = bytes ? decode(*bytes) : QImage();
    if (image.isNull()) {
        // Without any image the text would show a broken one.
        image = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
    }
    *size = image.size();
    return image;
}

} // namespace lexiquill
