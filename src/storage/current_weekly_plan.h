#pragma once

#include "review/weekly_review_scheduler.h"

#include <QObject>

#include <optional>

namespace lexiquill {

class StorageManager;

/// The plan of the current week, kept in step with the wordbook.
class CurrentWeeklyPlan : public QObject {
    Q_OBJECT

public:
    /// `storage` must outlive the instance.
    explicit CurrentWeeklyPlan(StorageManager &storage, QObject *parent = nullptr);

    /// The plan as of the last change or refresh. It is built when it is first asked for.
    const std::optional<WeeklyReviewPlan> &weeklyPlan() const;
    /// Has the plan made anew for the present moment.
    void refreshWeeklyPlan();

Q_SIGNALS:
    void weeklyPlanChanged();

private:
    StorageManager &m_storage;
    mutable std::optional<WeeklyReviewPlan> m_weeklyPlan; ///< absent while it waits to be built
    Instant m_date;
};

} // namespace lexiquill
