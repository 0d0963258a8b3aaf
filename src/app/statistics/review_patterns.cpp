#include "app/statistics/review_patterns.h"

#include "review/spaced_repetition_engine.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace lexiquill {

namespace {

constexpr qint64 daysOfYear = 365;
constexpr int hoursOfDay = 24;
constexpr double secondsPerHour = secondsPerDay / hoursOfDay;
constexpr int monthCount = 12;

/// Finds the day and the hour of instants in a span of days.
class DayFinder {
public:
    /// Empty if the calendar does not have the days.
    DayFinder(QDate first, QDate last, const Calendar &calendar) : m_calendar(calendar) {
        const QDate end = last.addDays(1);
        for (QDate day = first; day.isValid() && day <= end; day = day.addDays(1)) {
            const auto start = calendar.startOfDay(day);
            if (!start) {
                m_starts.clear();
                return;
            }
            m_starts.push_back(*start);
        }
    }

    qsizetype size() const { return std::max<qsizetype>(static_cast<qsizetype>(m_starts.size()) - 1, 0); }

    std::optional<std::size_t> day(Instant instant) const {
        if (m_starts.empty() || !(instant >= m_starts.front()) || !(instant < m_starts.back()))
            return std::nullopt;
        // Almost all days have 24 hours, so the correct day is near this one.
        const double days = (instant.seconds - m_starts.front().seconds) / secondsPerDay;
        std::size_t day = std::min(static_cast<std::size_t>(days), m_starts.size() - 2);
        while (instant < m_starts[day])
            --day;
        while (instant >= m_starts[day + 1])
            ++day;
        return day;
    }

    /// The hour of an instant on this day by the clock.
    int hour(Instant instant, std::size_t day) const {
        const Instant start = m_starts[day];
        if (m_starts[day + 1].seconds - start.seconds == secondsPerDay) // the clock was not changed
            return std::min(static_cast<int>((instant.seconds - start.seconds) / secondsPerHour),
                            hoursOfDay - 1);
        return m_calendar.dateTime(static_cast<qint64>(instant.unixSeconds()) * 1000).time().hour();
    }

private:
    const Calendar &m_calendar;
    std::vector<Instant> m_starts; ///< one more than there are days
};

/// Where a word comes in the order of the hardest words.
struct Hardness {
    int forgotten = 0;
    double easeFactor = 0;
    qsizetype position = 0;

    bool operator<(const Hardness &other) const {
        if (forgotten != other.forgotten)
            return forgotten > other.forgotten;
        if (easeFactor != other.easeFactor)
            return easeFactor < other.easeFactor;
        return position < other.position;
    }
};

QList<HardWord> hardest(std::vector<Hardness> candidates, const QList<WordRecord> &words) {
    constexpr std::size_t most = 10;
    const auto count = static_cast<std::ptrdiff_t>(std::min(most, candidates.size()));
    std::partial_sort(candidates.begin(), candidates.begin() + count, candidates.end());
    candidates.resize(static_cast<std::size_t>(count));
    QList<HardWord> result;
    for (const Hardness &each : candidates)
        result += {
            .word = words.at(each.position).word, .forgotten = each.forgotten, .easeFactor = each.easeFactor};
    return result;
}

} // namespace

ReviewPatterns ReviewPatterns::of(const QList<WordRecord> &words, QDate today, const Calendar &calendar) {
    const QDate yearAgo = today.addDays(-daysOfYear);
    const QDate first = yearAgo.addDays(-((yearAgo.dayOfWeek() - calendar.firstWeekday + 7) % 7));
    const DayFinder days(first, today, calendar);
    const auto dayCount = static_cast<std::size_t>(days.size());
    std::vector<int> perDay(dayCount, 0);
    std::vector<int> rememberedPerDay(dayCount, 0);
    std::array<int, hoursOfDay> perHour{};
    std::vector<Hardness> candidates;
    for (qsizetype i = 0; i < words.size(); ++i) {
        const WordRecord &word = words.at(i);
        int forgotten = 0;
        for (const ReviewLog &review : word.reviewHistory) {
            const bool isRemembered = review.feedback == ReviewFeedback::Remembered;
            forgotten += isRemembered ? 0 : 1;
            const auto day = days.day(review.reviewDate);
            if (!day)
                continue;
            ++perDay[*day];
            rememberedPerDay[*day] += isRemembered ? 1 : 0;
            ++perHour.at(static_cast<std::size_t>(days.hour(review.reviewDate, *day)));
        }
        if (forgotten > 0 || word.easeFactor < SpacedRepetitionEngine::defaultEaseFactor)
            candidates.push_back({.forgotten = forgotten, .easeFactor = word.easeFactor, .position = i});
    }
    ReviewPatterns result{.hardestWords = hardest(std::move(candidates), words)};
    if (dayCount == 0)
        return result;
    result.firstDay = first;
    result.perDay = {perDay.cbegin(), perDay.cend()};
    result.rememberedPerDay = {rememberedPerDay.cbegin(), rememberedPerDay.cend()};
    result.perHour = {perHour.cbegin(), perHour.cend()};
    return result;
}

QList<ReviewMonth> ReviewPatterns::months() const {
    QList<ReviewMonth> months;
    if (perDay.isEmpty())
        return months;
    const QDate today = firstDay.addDays(perDay.size() - 1);
    const QDate thisMonth(today.year(), today.month(), 1);
    for (int ago = monthCount - 1; ago >= 0; --ago)
        months += {.firstDay = thisMonth.addMonths(-ago)};
    qsizetype month = 0;
    for (qint64 i = std::max<qint64>(firstDay.daysTo(months.constFirst().firstDay), 0); i < perDay.size();
         ++i) {
        while (month + 1 < months.size() && firstDay.addDays(i) >= months.at(month + 1).firstDay)
            ++month;
        months[month].reviews += perDay.at(i);
        months[month].remembered += rememberedPerDay.at(i);
    }
    return months;
}

} // namespace lexiquill
