#include "app/shell/window_icon.h"

#include <QPainter>
#include <QSvgRenderer>

namespace lexiquill {

QList<QImage> windowIcon() {
    QSvgRenderer drawing(QStringLiteral(":/lexiquill/com.lexiquill.Lexiquill.svg"));
    QList<QImage> icon;
    for (const int size : {16, 22, 32, 48, 64, 128}) {
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        drawing.render(&painter);
        painter.end();
        icon += image;
    }
    return icon;
}

} // namespace lexiquill
