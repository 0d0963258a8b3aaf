#include "app/wordbook/review_history.h"

#include "app/shell/services.h"
#include "app/wordbook/day_texts.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"

#include <algorithm>

namespace lexiquill {

namespace {

QString resultOf(const ReviewLog &review) {
    return QStringLiteral("间隔 %1 天 · 系数 %2")
        .arg(QString::number(review.resultingIntervalDays),
             QString::number(review.resultingEaseFactor, 'f', 2));
}

} // namespace

ReviewHistory::ReviewHistory(QObject *parent) : ReviewHistory(Services::current(), parent) {}

ReviewHistory::ReviewHistory(Services &services, QObject *parent)
    : QObject(parent),
      m_storage(services.storage),
      m_plan(services.plan) {
    // The plan is rebuilt after every change and when a new day begins.
    connect(&m_plan, &CurrentWeeklyPlan::weeklyPlanChanged, this, &ReviewHistory::refresh);
}

void ReviewHistory::setWordId(const QString &wordId) {
    if (wordId == m_wordId)
        return;
    m_wordId = wordId;
    Q_EMIT wordIdChanged();
    refresh();
}

void ReviewHistory::refresh() {
    const QList<WordRecord> &words = m_storage.words();
    const qsizetype index = m_wordId.isEmpty() ? -1 : indexOfWord(words, QUuid::fromString(m_wordId));
    QList<ReviewLog> reviews;
    QString searches;
    if (index >= 0) {
        const WordRecord &record = words.at(index);
        reviews = record.reviewHistory;
        // A file may hold the reviews in any order.
        std::stable_sort(reviews.begin(), reviews.end(),
                         [](const ReviewLog &a, const ReviewLog &b) { return a.reviewDate < b.reviewDate; });
        const Instant now = m_storage.now();
        const Calendar calendar = m_storage.calendar();
        searches = QStringLiteral("首次查询 %1 · 最近查询 %2")
                       .arg(relativeDay(record.firstSearchedDate, now, calendar),
                            relativeDay(record.lastSearchedDate, now, calendar));
    }
    if (reviews == m_reviews && searches == m_searches)
        return;
    m_reviews = std::move(reviews);
    m_searches = std::move(searches);
    Q_EMIT changed();
}

QString ReviewHistory::date(Instant instant) const {
    return m_storage.calendar().isoDate(instant);
}

QString ReviewHistory::summary() const {
    if (m_reviews.isEmpty())
        return QStringLiteral("还没有复习记录");
    const auto remembered = std::count_if(m_reviews.cbegin(), m_reviews.cend(), [](const ReviewLog &review) {
        return review.feedback == ReviewFeedback::Remembered;
    });
    const ReviewLog &last = m_reviews.last();
    return QStringLiteral("复习 %1 次，记住 %2 次，间隔 %3 天，难度系数 %4")
        .arg(QString::number(m_reviews.size()), QString::number(remembered),
             QString::number(last.resultingIntervalDays), QString::number(last.resultingEaseFactor, 'f', 2));
}

QString ReviewHistory::describe(const ReviewLog &review) const {
    return QStringLiteral("%1：%2，%3")
        .arg(date(review.reviewDate), rawValue(review.feedback), resultOf(review));
}

QVariantList ReviewHistory::latest() const {
    constexpr qsizetype mostRows = 12;
    QVariantList rows;
    for (qsizetype i = m_reviews.size() - 1; i >= 0 && rows.size() < mostRows; --i) {
        const ReviewLog &review = m_reviews.at(i);
        rows += QVariantMap{{QStringLiteral("date"), date(review.reviewDate)},
                            {QStringLiteral("answer"), rawValue(review.feedback)},
                            {QStringLiteral("remembered"), review.feedback == ReviewFeedback::Remembered},
                            {QStringLiteral("result"), resultOf(review)}};
    }
    return rows;
}

} // namespace lexiquill
