#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>

namespace lexiquill {

/// A symbol of the program's own icon set, drawn in one colour at any size. The files are in symbols/.
class SymbolIcon : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(SymbolIcon)
    Q_PROPERTY(QString symbol READ symbol WRITE setSymbol NOTIFY symbolChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit SymbolIcon(QQuickItem *parent = nullptr);

    /// The file's name without ".svg"; nothing is drawn while it is empty.
    const QString &symbol() const { return m_symbol; }
    void setSymbol(const QString &symbol);
    const QColor &color() const { return m_color; }
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void symbolChanged();
    void colorChanged();

private:
    QString m_symbol;
    QColor m_color = Qt::black;
};

} // namespace lexiquill
