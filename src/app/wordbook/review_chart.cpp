#include "app/wordbook/review_chart.h"

#include "review/spaced_repetition_engine.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace lexiquill {

namespace {

constexpr qsizetype mostPoints = 300; ///< the latest reviews; more could not be distinguished
constexpr int fontSize = 11;

QPainterPath lineThrough(const QList<QPointF> &points) {
    QPainterPath path(points.first());
    for (const QPointF &point : points)
        path.lineTo(point);
    return path;
}

/// The position of a value in a range, 0 to 1; 0.5 if the range is empty.
double share(double value, double from, double to) {
    return to > from ? std::clamp((value - from) / (to - from), 0.0, 1.0) : 0.5;
}

} // namespace

ReviewChart::ReviewChart(QQuickItem *parent) : MarkedChart(parent) {
    connect(this, &ReviewChart::lookChanged, this, [this] { update(); });
}

void ReviewChart::setHistory(ReviewHistory *history) {
    if (history == m_history)
        return;
    if (m_history)
        disconnect(m_history, nullptr, this, nullptr);
    m_history = history;
    if (m_history)
        connect(m_history, &ReviewHistory::changed, this, &ReviewChart::updateValues);
    updateValues();
    Q_EMIT historyChanged();
}

QList<ReviewLog> ReviewChart::shownReviews() const {
    return m_history ? m_history->reviews().last(valueCount()) : QList<ReviewLog>();
}

qsizetype ReviewChart::valueCount() const {
    return m_history ? std::min(m_history->reviews().size(), mostPoints) : 0;
}

qsizetype ReviewChart::valueAt(QPointF position) const {
    if (m_points.size() != valueCount())
        return -1;
    const auto nearest = std::ranges::min_element(
        m_points, {}, [position](QPointF point) { return (point - position).manhattanLength(); });
    return nearest == m_points.cend() ? -1 : nearest - m_points.cbegin();
}

QString ReviewChart::valueText(qsizetype value) const {
    return m_history->describe(shownReviews().at(value));
}

void ReviewChart::paint(QPainter *painter) {
    m_points.clear();
    const QList<ReviewLog> reviews = shownReviews();
    if (reviews.isEmpty())
        return;
    QFont font = painter->font();
    font.setPixelSize(fontSize);
    painter->setFont(font);
    const QFontMetricsF metrics(font);

    // The intervals grow by a factor, so their axis is logarithmic.
    const auto height = [](qint64 days) {
        return std::log1p(static_cast<double>(std::max<qint64>(days, 0)));
    };
    const auto longest = std::max_element(reviews.cbegin(), reviews.cend(), [](const auto &a, const auto &b) {
        return a.resultingIntervalDays < b.resultingIntervalDays;
    });
    const qint64 longestInterval = std::max<qint64>(longest->resultingIntervalDays, 1);
    const QString topLabel = QStringLiteral("%1 天").arg(longestInterval);
    const QString easeTop = QString::number(SpacedRepetitionEngine::maxEaseFactor, 'f', 1);
    const QString easeBottom = QString::number(SpacedRepetitionEngine::minEaseFactor, 'f', 1);

    constexpr double gap = 8;
    const double left = std::max(metrics.horizontalAdvance(topLabel), metrics.horizontalAdvance(u'0')) + gap;
    const double right = metrics.horizontalAdvance(easeTop) + gap;
    const double line = metrics.height();
    const QRectF plot(left, line / 2, width() - left - right, this->height() - 2 * line - gap / 2);
    if (plot.width() <= 0 || plot.height() <= 0)
        return;

    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(m_gridColor, 1));
    for (const double y : {plot.top(), plot.center().y(), plot.bottom()})
        painter->drawLine(QPointF(plot.left(), std::round(y) + 0.5),
                          QPointF(plot.right(), std::round(y) + 0.5));

    painter->setPen(m_textColor);
    const auto label = [&](double x, double y, double labelWidth, Qt::Alignment alignment,
                           const QString &text) {
        painter->drawText(QRectF(x, y - line / 2, labelWidth, line), (alignment | Qt::AlignVCenter).toInt(),
                          text);
    };
    label(0, plot.top(), left - gap, Qt::AlignRight, topLabel);
    label(0, plot.bottom(), left - gap, Qt::AlignRight, QStringLiteral("0"));
    label(plot.right() + gap, plot.top(), right, Qt::AlignLeft, easeTop);
    label(plot.right() + gap, plot.bottom(), right, Qt::AlignLeft, easeBottom);
    const Instant first = reviews.first().reviewDate;
    const Instant last = reviews.last().reviewDate;
    const double dateLine = plot.bottom() + line / 2 + gap / 2 + line / 2;
    const QString firstDate = m_history->date(first);
    const QString lastDate = m_history->date(last);
    if (firstDate == lastDate) {
        label(plot.left(), dateLine, plot.width(), Qt::AlignHCenter, firstDate);
    } else {
        label(plot.left(), dateLine, plot.width(), Qt::AlignLeft, firstDate);
        label(plot.left(), dateLine, plot.width(), Qt::AlignRight, lastDate);
    }

    QList<QPointF> intervals;
    QList<QPointF> eases;
    for (const ReviewLog &review : reviews) {
        const double x =
            plot.left() + plot.width() * share(review.reviewDate.seconds, first.seconds, last.seconds);
        const auto y = [&plot](double part) {
            return plot.bottom() - plot.height() * part;
        };
        intervals += {x, y(share(height(review.resultingIntervalDays), 0, height(longestInterval)))};
        eases += {x, y(share(review.resultingEaseFactor, SpacedRepetitionEngine::minEaseFactor,
                             SpacedRepetitionEngine::maxEaseFactor))};
    }
    QPen easePen(m_easeColor, 1.5, Qt::DashLine, Qt::RoundCap, Qt::RoundJoin);
    painter->strokePath(lineThrough(eases), easePen);
    if (eases.size() == 1)
        painter->fillRect(QRectF(eases.first() - QPointF(5, 0.75), QSizeF(10, 1.5)), m_easeColor);

    QPainterPath area = lineThrough(intervals);
    area.lineTo(intervals.last().x(), plot.bottom());
    area.lineTo(intervals.first().x(), plot.bottom());
    QColor ground = m_intervalColor;
    ground.setAlphaF(0.12F);
    painter->fillPath(area, ground);
    painter->strokePath(lineThrough(intervals),
                        QPen(m_intervalColor, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setPen(Qt::NoPen);
    for (qsizetype i = 0; i < reviews.size(); ++i) {
        const bool isRemembered = reviews.at(i).feedback == ReviewFeedback::Remembered;
        painter->setBrush(isRemembered ? m_rememberedColor : m_forgottenColor);
        const double radius = i == mark() ? 6 : 3.5;
        painter->drawEllipse(intervals.at(i), radius, radius);
    }
    m_points = intervals;
}

} // namespace lexiquill
