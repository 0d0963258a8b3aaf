#include "app/statistics/memory_statistics.h"

#include <QStringList>

#include <algorithm>
#include <limits>
#include <vector>

namespace lexiquill {

namespace {

constexpr qint64 forecastDays = 7;

/// "周日" for 7 and so on
QString weekdayName(int dayOfWeek) {
    static const QStringList names{QStringLiteral("周日"), QStringLiteral("周一"), QStringLiteral("周二"),
                                   QStringLiteral("周三"), QStringLiteral("周四"), QStringLiteral("周五"),
                                   QStringLiteral("周六")};
    return names.at(dayOfWeek % 7);
}

QString forecastLabel(qint64 offset, Instant dayStart, const Calendar &calendar) {
    if (offset == 0)
        return QStringLiteral("今天");
    if (offset == 1)
        return QStringLiteral("明天");
    const auto date = calendar.date(dayStart);
    return date ? weekdayName(date->dayOfWeek()) : QString();
}

QList<ForecastDay> forecast(const QList<WordRecord> &words, Instant startOfToday, const Calendar &calendar) {
    struct Day {
        Instant start;
        Instant end;
    };
    std::vector<Day> days;
    QList<ForecastDay> result;
    for (qint64 offset = 0; offset < forecastDays; ++offset) {
        const auto start = calendar.addingDays(startOfToday, offset);
        const auto end = start ? calendar.addingDays(*start, 1) : std::nullopt;
        if (!end)
            continue;
        days.push_back({*start, *end});
        result += {.label = forecastLabel(offset, *start, calendar)};
    }
    for (const WordRecord &word : words) {
        if (word.isMastered)
            continue;
        for (std::size_t i = 0; i < days.size(); ++i) {
            if (days[i].start <= word.nextReviewDate && word.nextReviewDate < days[i].end)
                ++result[static_cast<qsizetype>(i)].count;
        }
    }
    return result;
}

} // namespace

double MemoryStatistics::retentionRate() const {
    if (total == 0)
        return 0.0;
    return static_cast<double>(masteredCount + reviewingCount) / static_cast<double>(total) * 100.0;
}

QString MemoryStatistics::retentionText() const {
    return QString::asprintf("%.1f%%", retentionRate());
}

MemoryStatistics MemoryStatistics::of(const QList<WordRecord> &words, Instant now, const Calendar &calendar) {
    MemoryStatistics result;
    result.total = words.size();
    result.validUntil = Instant{std::numeric_limits<double>::infinity()};
    for (const WordRecord &word : words) {
        result.masteredCount += word.isMastered ? 1 : 0;
        result.reviewingCount += word.memoryStatus == MemoryStatus::Reviewing ? 1 : 0;
        if (word.isDue(now))
            ++result.dueCount;
        else if (!word.isMastered)
            result.validUntil = std::min(result.validUntil, word.nextReviewDate);
    }
    const auto today = calendar.date(now);
    result.reviews = ReviewPatterns::of(words, today.value_or(QDate()), calendar);
    const auto startOfToday = today ? calendar.startOfDay(*today) : std::nullopt;
    const auto endOfToday = today ? calendar.startOfDay(today->addDays(1)) : std::nullopt;
    if (!startOfToday || !endOfToday)
        return result;
    result.validUntil = std::min(result.validUntil, *endOfToday);
    result.nextSevenDaysForecast = forecast(words, *startOfToday, calendar);
    return result;
}

} // namespace lexiquill
