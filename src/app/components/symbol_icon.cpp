#include "app/components/symbol_icon.h"

#include <QPainter>
#include <QSvgRenderer>

namespace lexiquill {

SymbolIcon::SymbolIcon(QQuickItem *parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void SymbolIcon::setSymbol(const QString &symbol) {
    if (symbol == m_symbol)
        return;
    m_symbol = symbol;
    update();
    Q_EMIT symbolChanged();
}

void SymbolIcon::setColor(const QColor &color) {
    if (color == m_color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void SymbolIcon::paint(QPainter *painter) {
    if (m_symbol.isEmpty())
        return;
    QSvgRenderer drawing(QStringLiteral(":/lexiquill/symbols/%1.svg").arg(m_symbol));
    drawing.setAspectRatioMode(Qt::KeepAspectRatio);
    drawing.render(painter, boundingRect());
    // The files are drawn in black.
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(boundingRect(), m_color);
}

} // namespace lexiquill
