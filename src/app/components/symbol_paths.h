#pragma once

#include <QPainterPath>
#include <QString>
#include <QStringList>

namespace lexiquill {

/// A symbol's lines and its filled areas, in a square of 24 by 24.
struct SymbolShape {
    QPainterPath strokes;
    QPainterPath fills;
};

/// An empty shape for an unknown name.
SymbolShape symbolShape(const QString &name);

/// The names of all symbols.
QStringList symbolNames();

} // namespace lexiquill
