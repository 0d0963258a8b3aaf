#pragma once

#include "app/wordbook/review_history.h"

#include <QColor>
#include <QPointer>
#include <QQuickPaintedItem>

namespace lexiquill {

/// Draws the interval (a line with a dot for each review) and the ease factor (a thin dashed line) after each
/// review of a word, over time.
class ReviewChart : public QQuickPaintedItem {
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

private:
    QPointer<ReviewHistory> m_history;
    QColor m_textColor = Qt::black;
    QColor m_gridColor = Qt::lightGray;
    QColor m_intervalColor = Qt::blue;
    QColor m_easeColor = Qt::gray;
    QColor m_rememberedColor = Qt::green;
    QColor m_forgottenColor = Qt::red;
};

} // namespace lexiquill
