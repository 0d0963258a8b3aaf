#include "app/statistics/forgetting_curve.h"

#include <algorithm>
#include <cmath>

namespace lexiquill {

namespace {

constexpr double targetRetention = 0.9;
constexpr qsizetype mostReviews = 8;
// Stored dates and intervals may have any value. They are limited to a century.
constexpr double mostDays = 36500;
constexpr double shortestView = 7;

double days(double seconds) {
    const double count = seconds / secondsPerDay;
    return std::isnan(count) ? 0 : std::clamp(count, 0.0, mostDays);
}

double intervalOf(qint64 intervalDays) {
    return std::clamp(static_cast<double>(intervalDays), 1.0, mostDays);
}

} // namespace

double ForgettingCurve::retention(double day) const {
    const auto next = std::upper_bound(reviews.cbegin(), reviews.cend(), day,
                                       [](double at, const Review &review) { return at < review.day; });
    if (next == reviews.cbegin())
        return 0;
    const Review &last = *(next - 1);
    return std::pow(targetRetention, (day - last.day) / last.interval);
}

double ForgettingCurve::lastDay() const {
    return std::max({today, due, shortestView}) * 1.15;
}

ForgettingCurve ForgettingCurve::of(const WordRecord &word, Instant now) {
    QList<ReviewLog> history = word.reviewHistory;
    std::ranges::stable_sort(history, {}, [](const ReviewLog &review) { return review.reviewDate.seconds; });
    if (history.size() > mostReviews)
        history.remove(0, history.size() - mostReviews);
    if (history.isEmpty()) {
        ReviewLog search;
        search.reviewDate = word.lastReviewDate.value_or(word.firstSearchedDate);
        search.resultingIntervalDays = word.intervalDays;
        history += search;
    }
    const Instant first = history.constFirst().reviewDate;
    ForgettingCurve curve;
    for (const ReviewLog &review : std::as_const(history))
        curve.reviews += {.day = days(review.reviewDate.seconds - first.seconds),
                          .interval = intervalOf(review.resultingIntervalDays)};
    curve.today = std::max(days(now.seconds - first.seconds), curve.reviews.constLast().day);
    curve.due = days(word.nextReviewDate.seconds - first.seconds);
    return curve;
}

ForgettingCurve ForgettingCurve::ofAverage(const QList<WordRecord> &words, Instant now) {
    double intervals = 0;
    double elapsed = 0;
    double count = 0;
    for (const WordRecord &word : words) {
        if (!word.lastReviewDate)
            continue;
        intervals += intervalOf(word.intervalDays);
        elapsed += days(now.seconds - word.lastReviewDate->seconds);
        ++count;
    }
    if (count == 0)
        return {};
    const double interval = intervals / count;
    return {.reviews = {{.day = 0, .interval = interval}}, .today = elapsed / count, .due = interval};
}

} // namespace lexiquill
