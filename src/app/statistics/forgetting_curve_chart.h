#pragma once

#include "app/statistics/statistics_chart.h"

namespace lexiquill {

/// Draws the forgetting curve: the past as a solid line, the future as a dotted line, and today as a dot. Its
/// values are whole days before and after today.
class ForgettingCurveChart : public lexiquill::StatisticsChart { // full name, for the QML type information
    Q_OBJECT
    QML_ELEMENT

public:
    using StatisticsChart::StatisticsChart;

    void paint(QPainter *painter) override;

protected:
    qsizetype valueCount() const override;
    qsizetype valueAt(QPointF position) const override;
    QString valueText(qsizetype value) const override;
    qsizetype firstMark() const override;

private:
    QRectF plot() const;
    /// How many days are between two values.
    double daysPerValue() const;
    double dayOf(qsizetype value) const;
};

} // namespace lexiquill
