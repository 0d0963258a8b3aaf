#include "app/statistics/statistics_chart.h"

namespace lexiquill {

StatisticsChart::StatisticsChart(QQuickItem *parent) : MarkedChart(parent) {
    connect(this, &StatisticsChart::coloursChanged, this, [this] { update(); });
}

void StatisticsChart::setStatistics(Statistics *statistics) {
    if (statistics == m_statistics)
        return;
    if (m_statistics != nullptr)
        m_statistics->disconnect(this);
    m_statistics = statistics;
    if (m_statistics != nullptr) {
        connect(m_statistics, &Statistics::changed, this, &StatisticsChart::takeFigures);
        connect(m_statistics, &Statistics::curveChanged, this, &StatisticsChart::takeFigures);
        connect(m_statistics, &QObject::destroyed, this, [this] { m_statistics = nullptr; });
    }
    Q_EMIT statisticsChanged();
    takeFigures();
}

} // namespace lexiquill
