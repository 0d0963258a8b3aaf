#pragma once

#include "app/statistics/statistics_chart.h"

namespace lexiquill {

/// The reviews of the last year: a column for each week, a square for each day, the darker the more reviews.
/// The pointer and the arrow keys choose the day that `dayText` describes.
class ReviewCalendar : public lexiquill::StatisticsChart { // full name, for the QML type information
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString dayText READ dayText NOTIFY currentDayChanged)

public:
    explicit ReviewCalendar(QQuickItem *parent = nullptr);

    /// E.g. "2025年3月14日：复习 12 次"; empty when no day is chosen.
    QString dayText() const;

    void paint(QPainter *painter) override;

    /// The shade of a day: 0 without a review, else 1 to 4 by quarters of `most`.
    static int level(int count, int most);

Q_SIGNALS:
    void currentDayChanged();

protected:
    void takeFigures() override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    qsizetype dayCount() const;
    double pitch() const;
    QRectF square(qsizetype day) const;
    void setCurrentDay(qsizetype day);

    qsizetype m_currentDay = -1;
};

} // namespace lexiquill
