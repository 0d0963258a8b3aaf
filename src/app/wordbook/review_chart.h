#pragma once

#include "app/components/marked_chart.h"
#include "app/wordbook/review_history.h"

#include <QColor>
#include <QPointer>

namespace lexiquill {

/// Draws the interval (a line with a dot for each review) and the ease factor (a thin dashed line) after each
/// review of a word, over time.
class ReviewChart : public lexiquill::MarkedChart { // full name, for the QML type information
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lexiquill::ReviewHistory *history READ history WRITE setHistory NOTIFY historyChanged)
    Q_PROPERTY(QColor textColor MEMBER m_textColor NOTIFY lookChanged)
    Q_PROPERTY(QColor gridColor MEMBER m_gridColor NOTIFY lookChanged)
    Q_PROPERTY(QColor intervalColor MEMBER m_intervalColor NOTIFY lookChanged)
    Q_PROPERTY(QColor easeColor MEMBER m_easeColor NOTIFY lookChanged)
    Q_PROPERTY(QColor rememberedColor MEMBER m_rememberedColor NOTIFY lookChanged)
    Q_PROPERTY(QColor forgottenColor MEMBER m_forgottenColor NOTIFY lookChanged)

public:
    explicit ReviewChart(QQuickItem *parent = nullptr);

    ReviewHistory *history() const { return m_history; }
    void setHistory(ReviewHistory *history);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void historyChanged();
    void lookChanged();

protected:
    qsizetype valueCount() const override;
    qsizetype valueAt(QPointF position) const override;
    QString valueText(qsizetype value) const override;

private:
    QList<ReviewLog> shownReviews() const;

    QPointer<ReviewHistory> m_history;
    QList<QPointF> m_points; ///< the dots of the reviews, as last painted
    QColor m_textColor = Qt::black;
    QColor m_gridColor = Qt::lightGray;
    QColor m_intervalColor = Qt::blue;
    QColor m_easeColor = Qt::gray;
    QColor m_rememberedColor = Qt::green;
    QColor m_forgottenColor = Qt::red;
};

} // namespace lexiquill
