#include "app/wordbook/day_texts.h"

namespace lexiquill {

QString relativeDay(Instant instant, Instant now, const Calendar &calendar) {
    constexpr qint64 longestCount = 30;
    const auto days = calendar.daysBetween(instant, now);
    if (!days || *days < 0 || *days > longestCount)
        return calendar.isoDate(instant);
    if (*days == 0)
        return QStringLiteral("今天");
    return *days == 1 ? QStringLiteral("昨天") : QStringLiteral("%1 天前").arg(*days);
}

QString nextReviewText(const WordRecord &record, Instant now, const Calendar &calendar) {
    const QString text = record.nextReviewRelativeDescription(now, calendar);
    const auto days = calendar.daysBetween(now, record.nextReviewDate);
    return !record.isMastered && days && *days > 0 ? text + QStringLiteral("复习") : text;
}

} // namespace lexiquill
