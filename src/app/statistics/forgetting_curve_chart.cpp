#include "app/statistics/forgetting_curve_chart.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace lexiquill {

namespace {

constexpr double labelWidth = 36;
constexpr double labelHeight = 20;
constexpr double topMargin = 8;
constexpr double rightMargin = 12;
constexpr double pointsPerStep = 2;
constexpr double mostValues = 100;

} // namespace

QRectF ForgettingCurveChart::plot() const {
    return {labelWidth, topMargin, width() - labelWidth - rightMargin, height() - topMargin - labelHeight};
}

double ForgettingCurveChart::daysPerValue() const {
    return std::max(1.0, std::ceil(statistics()->curve().lastDay() / mostValues));
}

double ForgettingCurveChart::dayOf(qsizetype value) const {
    return statistics()->curve().today + static_cast<double>(value - firstMark()) * daysPerValue();
}

/// Today.
qsizetype ForgettingCurveChart::firstMark() const {
    return valueCount() == 0 ? -1 : static_cast<qsizetype>(statistics()->curve().today / daysPerValue());
}

qsizetype ForgettingCurveChart::valueCount() const {
    if (statistics() == nullptr || statistics()->curve().isEmpty())
        return 0;
    const ForgettingCurve &curve = statistics()->curve();
    return static_cast<qsizetype>(curve.today / daysPerValue()) +
           static_cast<qsizetype>((curve.lastDay() - curve.today) / daysPerValue()) + 1;
}

qsizetype ForgettingCurveChart::valueAt(QPointF position) const {
    const QRectF area = plot();
    if (valueCount() == 0 || area.width() <= 0 || position.x() < area.left() || position.x() > area.right())
        return -1;
    const ForgettingCurve &curve = statistics()->curve();
    const double day = (position.x() - area.left()) / area.width() * curve.lastDay();
    const auto value = firstMark() + qRound64((day - curve.today) / daysPerValue());
    return std::clamp<qsizetype>(value, 0, valueCount() - 1);
}

QString ForgettingCurveChart::valueText(qsizetype value) const {
    const double day = dayOf(value);
    return Statistics::retentionOn(qRound64(day - statistics()->curve().today),
                                   statistics()->curve().retention(day));
}

void ForgettingCurveChart::paint(QPainter *painter) {
    const QRectF plot = this->plot();
    if (plot.width() <= 0 || plot.height() <= 0)
        return;
    painter->setRenderHint(QPainter::Antialiasing);
    QFont font = painter->font();
    font.setPixelSize(10);
    painter->setFont(font);
    for (const int percent : {0, 50, 100}) {
        const double y = plot.bottom() - plot.height() * percent / 100;
        painter->setPen(QPen(faintColor(), 1));
        painter->drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter->setPen(textColor());
        painter->drawText(QRectF(0, y - 8, labelWidth - 6, 16), Qt::AlignRight | Qt::AlignVCenter,
                          QStringLiteral("%1%").arg(percent));
    }
    if (statistics() == nullptr || statistics()->curve().isEmpty())
        return;

    const ForgettingCurve &curve = statistics()->curve();
    const double lastDay = curve.lastDay();
    const auto xOf = [&](double day) {
        return plot.left() + plot.width() * day / lastDay;
    };
    const auto yOf = [&](double retention) {
        return plot.bottom() - plot.height() * retention;
    };
    // The line falls after each review until the next review raises it to 1.
    const auto lineBetween = [&](double from, double to) {
        QPainterPath path(QPointF(xOf(from), yOf(curve.retention(from))));
        qsizetype next = 0;
        const double step = lastDay / plot.width() * pointsPerStep;
        const int steps = static_cast<int>(std::ceil((to - from) / step));
        for (int i = 0; i < steps; ++i) {
            const double day = from + i * step;
            for (; next < curve.reviews.size() && curve.reviews.at(next).day <= day; ++next) {
                const ForgettingCurve::Review &review = curve.reviews.at(next);
                if (next > 0 && review.day > from)
                    path.lineTo(xOf(review.day), yOf(curve.retention(std::nextafter(review.day, 0.0))));
                if (review.day > from)
                    path.lineTo(xOf(review.day), yOf(1));
            }
            path.lineTo(xOf(day), yOf(curve.retention(day)));
        }
        path.lineTo(xOf(to), yOf(curve.retention(to)));
        return path;
    };

    const QPainterPath past = lineBetween(0, curve.today);
    QPainterPath area = past;
    area.lineTo(xOf(curve.today), plot.bottom());
    area.lineTo(xOf(0), plot.bottom());
    QColor shade = color();
    shade.setAlphaF(0.12F);
    painter->fillPath(area, shade);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(color(), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(past);
    painter->setPen(QPen(color(), 2, Qt::DotLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(lineBetween(curve.today, lastDay));

    const auto label = [&](double day, const QString &text) {
        painter->setPen(QPen(faintColor(), 1, Qt::DashLine));
        painter->drawLine(QPointF(xOf(day), plot.top()), QPointF(xOf(day), plot.bottom()));
        painter->setPen(textColor());
        const double textWidth = painter->fontMetrics().horizontalAdvance(text);
        const double x =
            std::clamp(xOf(day) - textWidth / 2, plot.left(), std::max(plot.left(), width() - textWidth));
        painter->drawText(QPointF(x, height() - 5), text);
        return std::pair(x, x + textWidth);
    };
    const auto today = label(curve.today, QStringLiteral("今天"));
    const auto untilDue = qRound(curve.due - curve.today);
    const QString dueText = untilDue >= 0 ? QStringLiteral("%1 天后复习").arg(untilDue)
                                          : QStringLiteral("应于 %1 天前复习").arg(-untilDue);
    // Leave out the second label where the two would overlap.
    const double dueWidth = painter->fontMetrics().horizontalAdvance(dueText);
    if (std::abs(xOf(curve.due) - (today.first + today.second) / 2) > dueWidth / 2 + 20 && curve.due > 0)
        label(curve.due, dueText);
    const auto dot = [&](double day, double radius) {
        painter->setPen(QPen(groundColor(), 2));
        painter->setBrush(color());
        painter->drawEllipse(QPointF(xOf(day), yOf(curve.retention(day))), radius, radius);
    };
    dot(curve.today, 5);
    if (mark() >= 0 && mark() < valueCount()) {
        const double day = dayOf(mark());
        painter->setPen(QPen(textColor(), 1));
        painter->drawLine(QPointF(xOf(day), plot.top()), QPointF(xOf(day), plot.bottom()));
        dot(day, 4);
    }
}

} // namespace lexiquill
