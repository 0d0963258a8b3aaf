#include "app/statistics/review_calendar.h"

#include <QHoverEvent>
#include <QKeyEvent>
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

ReviewCalendar::ReviewCalendar(QQuickItem *parent) : StatisticsChart(parent) {
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);
}

int ReviewCalendar::level(int count, int most) {
    if (count <= 0 || most <= 0)
        return 0;
    return std::clamp(static_cast<int>(std::ceil(static_cast<double>(count) * levels / most)), 1, levels);
}

qsizetype ReviewCalendar::dayCount() const {
    return statistics() != nullptr ? statistics()->figures().reviewsPerDay.size() : 0;
}

double ReviewCalendar::pitch() const {
    const auto weeks = std::max<qsizetype>(1, (dayCount() + daysOfWeek - 1) / daysOfWeek);
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
    if (m_currentDay >= dayCount())
        setCurrentDay(-1);
    // The chosen day may have a new number of reviews.
    Q_EMIT currentDayChanged();
    update();
}

void ReviewCalendar::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    StatisticsChart::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width())
        setImplicitHeight(monthLabelHeight + pitch() * daysOfWeek);
}

void ReviewCalendar::paint(QPainter *painter) {
    if (dayCount() == 0)
        return;
    const QDate first = statistics()->figures().firstReviewDay;
    const QList<int> &counts = statistics()->figures().reviewsPerDay;
    const int most = *std::ranges::max_element(counts);
    painter->setRenderHint(QPainter::Antialiasing);
    QFont font = painter->font();
    font.setPixelSize(10);
    painter->setFont(font);

    painter->setPen(textColor());
    static const QStringList weekdays{QStringLiteral("一"), QStringLiteral("二"), QStringLiteral("三"),
                                      QStringLiteral("四"), QStringLiteral("五"), QStringLiteral("六"),
                                      QStringLiteral("日")};
    for (qsizetype row = 0; row < std::min(daysOfWeek, dayCount()); row += 2) {
        const QRectF place(0, square(row).top() - 4, weekdayLabelWidth - 6, square(row).height() + 8);
        painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                          weekdays.at(first.addDays(row).dayOfWeek() - 1));
    }
    double free = 0;
    for (qsizetype day = 0; day < dayCount(); day += daysOfWeek) {
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
    for (qsizetype day = 0; day < dayCount(); ++day) {
        QColor shade = faintColor();
        if (const int depth = level(counts.at(day), most); depth > 0) {
            shade = color();
            shade.setAlphaF(0.25F + 0.75F * static_cast<float>(depth - 1) / (levels - 1));
        }
        painter->setPen(day == m_currentDay ? QPen(textColor(), 1.5) : QPen(Qt::NoPen));
        painter->setBrush(shade);
        painter->drawRoundedRect(square(day), radius, radius);
    }
}

QString ReviewCalendar::dayText() const {
    if (m_currentDay < 0 || m_currentDay >= dayCount())
        return {};
    const MemoryStatistics &figures = statistics()->figures();
    const QString date =
        figures.firstReviewDay.addDays(m_currentDay).toString(QStringLiteral("yyyy年M月d日"));
    const int count = figures.reviewsPerDay.at(m_currentDay);
    return count == 0 ? date + QStringLiteral("：没有复习")
                      : QStringLiteral("%1：复习 %2 次").arg(date).arg(count);
}

void ReviewCalendar::setCurrentDay(qsizetype day) {
    if (day == m_currentDay)
        return;
    m_currentDay = day;
    update();
    Q_EMIT currentDayChanged();
}

void ReviewCalendar::hoverMoveEvent(QHoverEvent *event) {
    const double side = pitch();
    const QPointF at = event->position() - QPointF(weekdayLabelWidth, monthLabelHeight);
    if (side <= 0 || at.x() < 0 || at.y() < 0 || at.y() >= side * daysOfWeek) {
        setCurrentDay(-1);
        return;
    }
    const auto day =
        static_cast<qsizetype>(at.x() / side) * daysOfWeek + static_cast<qsizetype>(at.y() / side);
    setCurrentDay(day < dayCount() ? day : -1);
}

void ReviewCalendar::hoverLeaveEvent(QHoverEvent *event) {
    Q_UNUSED(event)
    setCurrentDay(hasActiveFocus() ? dayCount() - 1 : -1);
}

void ReviewCalendar::keyPressEvent(QKeyEvent *event) {
    qsizetype step = 0;
    switch (event->key()) {
    case Qt::Key_Left:
        step = -daysOfWeek;
        break;
    case Qt::Key_Right:
        step = daysOfWeek;
        break;
    case Qt::Key_Up:
        step = -1;
        break;
    case Qt::Key_Down:
        step = 1;
        break;
    default:
        event->ignore();
        return;
    }
    if (const qsizetype day = m_currentDay + step; m_currentDay >= 0 && day >= 0 && day < dayCount())
        setCurrentDay(day);
}

void ReviewCalendar::focusInEvent(QFocusEvent *event) {
    StatisticsChart::focusInEvent(event);
    if (m_currentDay < 0)
        setCurrentDay(dayCount() - 1);
}

void ReviewCalendar::focusOutEvent(QFocusEvent *event) {
    StatisticsChart::focusOutEvent(event);
    setCurrentDay(-1);
}

} // namespace lexiquill
