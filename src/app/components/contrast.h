#pragma once

#include <QColor>
#include <QObject>
#include <QQmlEngine>

namespace lexiquill {

/// Contrast between colours, as the accessibility guidelines for web content measure it: from 1 to 21.
class Contrast : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The ratio of two colours; they count as opaque.
    Q_INVOKABLE static double ratio(const QColor &one, const QColor &other);
    /// The tone of `base` that is as near to it as possible and has at least the contrast `minimum` on the
    /// ground: darker than `base` on a light ground, lighter on a dark one. Black or white if even they have
    /// less.
    Q_INVOKABLE static QColor readable(const QColor &base, const QColor &ground, double minimum);
};

} // namespace lexiquill
