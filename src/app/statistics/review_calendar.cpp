#include "app/statistics/review_calendar.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace lexiquill {

namespace {

constexpr qsizetype daysOfWeek = 7;
constexpr double weekdayLabelWidth = 24;
constexpr double monthLabelHeight = 18;
constexpr double mostPitch = 16;
constexpr double gap = 2.5;
constexpr int levels = 4;

} // namespace

int ReviewCalendar::level(int count, int most) {
    if (count <= 0 || most <= 0)
        return 0;
    return std::clamp(static_cast<int>(std::ceil(static_cast<double>(count) * levels / most)), 1, levels);
}

qsizetype ReviewCalendar::valueCount() const {
    return statistics() != nullptr ? statistics()->figures().reviews.perDay.size() : 0;
}

double ReviewCalendar::pitch() const {
    const auto weeks = std::max<qsizetype>(1, (valueCount() + daysOfWeek - 1) / daysOfWeek);
    return std::clamp((width() - weekdayLabelWidth) / static_cast<double>(weeks), 0.0, mostPitch);
}

QRectF ReviewCalendar::square(qsizetype day) const {
    const double side = pitch();
    const qsizetype week = day / daysOfWeek;
    return {weekdayLabelWidth + side * static_cast<double>(week),
            monthLabelHeight + side * static_cast<double>(day % daysOfWeek), side - gap, side - gap};
}

void ReviewCalendar::takeFigures() {
    setImplicitHeight(monthLabelHeight + pitch() * daysOfWeek);
    updateValues();
}

void ReviewCalendar::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    StatisticsChart::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width())
        setImplicitHeight(monthLabelHeight + pitch() * daysOfWeek);
}

void ReviewCalendar::paint(QPainter *painter) {
    if (valueCount() == 0)
        return;
    const QDate first = statistics()->figures().reviews.firstDay;
    const QList<int> &counts = statistics()->figures().reviews.perDay;
    const int most = *std::ranges::max_element(counts);
    painter->setRenderHint(QPainter::Antialiasing);
    QFont font = painter->font();
    font.setPixelSize(10);
    painter->setFont(font);

    painter->setPen(textColor());
    static const QStringList weekdays{QStringLiteral("一"), QStringLiteral("二"), QStringLiteral("三"),
                                      QStringLiteral("四"), QStringLiteral("五"), QStringLiteral("六"),
                                      QStringLiteral("日")};
    for (qsizetype row = 0; row < std::min(daysOfWeek, valueCount()); row += 2) {
        const QRectF place(0, square(row).top() - 4, weekdayLabelWidth - 6, square(row).height() + 8);
        painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                          weekdays.at(first.addDays(row).dayOfWeek() - 1));
    }
    double free = 0;
    for (qsizetype day = 0; day < valueCount(); day += daysOfWeek) {
        const QDate date = first.addDays(day);
        const double x = square(day).left();
        // The month is named above the first week that begins in it.
        if (date.day() > static_cast<int>(daysOfWeek) || x < free || x + 30 > width())
            continue;
        const QString name = QStringLiteral("%1月").arg(date.month());
        painter->drawText(QPointF(x, monthLabelHeight - 6), name);
        free = x + 30;
    }

    const double radius = std::min(2.5, pitch() / 4);
    for (qsizetype day = 0; day < valueCount(); ++day) {
        QColor shade = faintColor();
        if (const int depth = level(counts.at(day), most); depth > 0) {
            shade = color();
            shade.setAlphaF(0.25F + 0.75F * static_cast<float>(depth - 1) / (levels - 1));
        }
        painter->setPen(day == mark() ? QPen(textColor(), 1.5) : QPen(Qt::NoPen));
        painter->setBrush(shade);
        painter->drawRoundedRect(square(day), radius, radius);
    }
}

QString ReviewCalendar::valueText(qsizetype day) const {
    const ReviewPatterns &reviews = statistics()->figures().reviews;
    const QString date = reviews.firstDay.addDays(day).toString(QStringLiteral("yyyy年M月d日"));
    const int count = reviews.perDay.at(day);
    return count == 0 ? date + QStringLiteral("：没有复习")
                      : QStringLiteral("%1：复习 %2 次").arg(date).arg(count);
}

qsizetype ReviewCalendar::valueAt(QPointF position) const {
    const double side = pitch();
    const QPointF at = position - QPointF(weekdayLabelWidth, monthLabelHeight);
    if (side <= 0 || at.x() < 0 || at.y() < 0 || at.y() >= side * daysOfWeek)
        return -1;
    const auto day =
        static_cast<qsizetype>(at.x() / side) * daysOfWeek + static_cast<qsizetype>(at.y() / side);
    return day < valueCount() ? day : -1;
}

qsizetype ReviewCalendar::step(int key) const {
    switch (key) {
    case Qt::Key_Left:
        return -daysOfWeek;
    case Qt::Key_Right:
        return daysOfWeek;
    case Qt::Key_Up:
        return -1;
    case Qt::Key_Down:
        return 1;
    default:
        return 0;
    }
}

} // namespace lexiquill
