#pragma once

#include "app/statistics/statistics_chart.h"

namespace lexiquill {

/// Draws the forgetting curve: what has passed as a line, what is to come dashed, and today as a dot.
class ForgettingCurveChart : public lexiquill::StatisticsChart { // in full, for the QML type information
    Q_OBJECT
    QML_ELEMENT

public:
    using StatisticsChart::StatisticsChart;

    void paint(QPainter *painter) override;
};

} // namespace lexiquill
