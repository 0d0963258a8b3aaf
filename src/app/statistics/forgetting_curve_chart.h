#pragma once

#include "app/statistics/statistics_chart.h"

namespace lexiquill {

/// Draws the forgetting curve: the past as a solid line, the future as a dotted line, and today as a dot.
class ForgettingCurveChart : public lexiquill::StatisticsChart { // full name, for the QML type information
    Q_OBJECT
    QML_ELEMENT

public:
    using StatisticsChart::StatisticsChart;

    void paint(QPainter *painter) override;
};

} // namespace lexiquill
