#pragma once

#include "review/weekly_review_scheduler.h"

#include <QObject>

#include <optional>

namespace lexiquill {

class StorageManager;

/// The plan of the current week, kept in sync with the wordbook.
class CurrentWeeklyPlan : public QObject {
    Q_OBJECT

public:
    /// `storage` must outlive the instance.
    explicit CurrentWeeklyPlan(StorageManager &storage, QObject *parent = nullptr);

    /// The plan as of the last change or refresh. It is built when it is first asked for.
    const std::optional<WeeklyReviewPlan> &weeklyPlan() const;
    /// Makes the plan be rebuilt for the current time.
    void refreshWeeklyPlan();

Q_SIGNALS:
    void weeklyPlanChanged();

private:
    StorageManager &m_storage;
    mutable std::optional<WeeklyReviewPlan> m_weeklyPlan; ///< absent until it is built
    Instant m_date;
};

} // namespace lexiquill
