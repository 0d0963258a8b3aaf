#pragma once

#include "app/components/marked_chart.h"
#include "app/statistics/statistics.h"

#include <QColor>

namespace lexiquill {

/// Base class of the charts on the statistics screen. The colours come from the theme.
class StatisticsChart : public lexiquill::MarkedChart { // full name, for the QML type information
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(
        lexiquill::Statistics *statistics MEMBER m_statistics WRITE setStatistics NOTIFY statisticsChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY coloursChanged)
    Q_PROPERTY(QColor faintColor MEMBER m_faintColor NOTIFY coloursChanged)
    Q_PROPERTY(QColor textColor MEMBER m_textColor NOTIFY coloursChanged)
    Q_PROPERTY(QColor groundColor MEMBER m_groundColor NOTIFY coloursChanged)

public:
    explicit StatisticsChart(QQuickItem *parent = nullptr);

    void setStatistics(Statistics *statistics);

Q_SIGNALS:
    void statisticsChanged();
    void coloursChanged();

protected:
    /// Called when the statistics have changed.
    virtual void takeFigures() { updateValues(); }

    Statistics *statistics() const { return m_statistics; }
    const QColor &color() const { return m_color; }
    const QColor &faintColor() const { return m_faintColor; }
    const QColor &textColor() const { return m_textColor; }
    const QColor &groundColor() const { return m_groundColor; }

private:
    Statistics *m_statistics = nullptr;
    QColor m_color = Qt::blue;
    QColor m_faintColor = Qt::lightGray;
    QColor m_textColor = Qt::gray;
    QColor m_groundColor = Qt::white;
};

} // namespace lexiquill
