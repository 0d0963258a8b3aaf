#include "app/components/marked_chart.h"

#include <QHoverEvent>
#include <QKeyEvent>

#include <algorithm>

namespace lexiquill {

MarkedChart::MarkedChart(QQuickItem *parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);
}

QString MarkedChart::markedText() const {
    return m_mark >= 0 && m_mark < valueCount() ? valueText(m_mark) : QString();
}

qsizetype MarkedChart::step(int key) const {
    return key == Qt::Key_Left ? -1 : key == Qt::Key_Right ? 1 : 0;
}

void MarkedChart::updateValues() {
    if (m_mark >= valueCount())
        m_mark = hasActiveFocus() ? firstMark() : -1;
    // The marked value may have changed, too.
    Q_EMIT markChanged();
    update();
}

void MarkedChart::setMark(qsizetype mark) {
    if (mark == m_mark)
        return;
    m_mark = mark;
    update();
    Q_EMIT markChanged();
}

void MarkedChart::hoverMoveEvent(QHoverEvent *event) {
    setMark(valueAt(event->position()));
}

void MarkedChart::hoverLeaveEvent(QHoverEvent *event) {
    Q_UNUSED(event)
    setMark(hasActiveFocus() ? firstMark() : -1);
}

void MarkedChart::keyPressEvent(QKeyEvent *event) {
    const qsizetype distance = step(event->key());
    if (distance == 0 || event->modifiers() & ~Qt::KeypadModifier) {
        event->ignore();
        return;
    }
    if (m_mark < 0)
        setMark(firstMark());
    else if (m_mark + distance >= 0 && m_mark + distance < valueCount())
        setMark(m_mark + distance);
}

void MarkedChart::focusInEvent(QFocusEvent *event) {
    QQuickPaintedItem::focusInEvent(event);
    if (m_mark < 0)
        setMark(firstMark());
}

void MarkedChart::focusOutEvent(QFocusEvent *event) {
    QQuickPaintedItem::focusOutEvent(event);
    setMark(-1);
}

} // namespace lexiquill
