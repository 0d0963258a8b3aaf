#pragma once

#include "app/statistics/statistics_chart.h"

namespace lexiquill {

/// The reviews of the last year: a column for each week, a square for each day, the darker the more reviews.
class ReviewCalendar : public lexiquill::StatisticsChart { // full name, for the QML type information
    Q_OBJECT
    QML_ELEMENT

public:
    using StatisticsChart::StatisticsChart;

    void paint(QPainter *painter) override;

    /// The shade of a day: 0 without a review, else 1 to 4 by quarters of `most`.
    static int level(int count, int most);

protected:
    qsizetype valueCount() const override;
    qsizetype valueAt(QPointF position) const override;
    QString valueText(qsizetype day) const override;
    qsizetype step(int key) const override;
    void takeFigures() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    double pitch() const;
    QRectF square(qsizetype day) const;
};

} // namespace lexiquill
