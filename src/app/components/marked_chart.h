#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace lexiquill {

/// Base class of the painted charts whose values can be read: the pointer, or the arrow keys while the chart
/// has the keyboard, mark one of its values, which `markedText` describes.
class MarkedChart : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS
    /// The marked value in words; empty when none is marked.
    Q_PROPERTY(QString markedText READ markedText NOTIFY markChanged)

public:
    explicit MarkedChart(QQuickItem *parent = nullptr);

    QString markedText() const;

Q_SIGNALS:
    void markChanged();

protected:
    virtual qsizetype valueCount() const = 0;
    /// The value at a position of the item; -1 for none.
    virtual qsizetype valueAt(QPointF position) const = 0;
    /// A value in words.
    virtual QString valueText(qsizetype value) const = 0;
    /// The value that is marked when the chart gets the keyboard.
    virtual qsizetype firstMark() const { return valueCount() - 1; }
    /// By how many values a key moves the mark; 0 when it does not.
    virtual qsizetype step(int key) const;

    /// The marked value; -1 for none.
    qsizetype mark() const { return m_mark; }
    /// To be called when the values have changed.
    void updateValues();

    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void setMark(qsizetype mark);

    qsizetype m_mark = -1;
};

} // namespace lexiquill
