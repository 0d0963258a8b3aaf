#include "app/components/symbol_icon.h"

#include "app/components/symbol_paths.h"

#include <QPainter>
#include <QPen>

#include <algorithm>

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
    constexpr double side = 24;
    constexpr double lineWidth = 1.7;
    const double scale = std::min(width(), height()) / side;
    const SymbolShape shape = symbolShape(m_symbol);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate((width() - side * scale) / 2, (height() - side * scale) / 2);
    painter->scale(scale, scale);
    painter->strokePath(shape.strokes, QPen(m_color, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->fillPath(shape.fills, m_color);
}

} // namespace lexiquill
