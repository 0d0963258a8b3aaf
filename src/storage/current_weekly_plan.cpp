#include "storage/current_weekly_plan.h"

#include "storage/storage_manager.h"

namespace lexiquill {

CurrentWeeklyPlan::CurrentWeeklyPlan(StorageManager &storage, QObject *parent)
    : QObject(parent),
      m_storage(storage),
      m_date(storage.now()) {
    // The plan shares the list of words. If it were kept, changing the list would copy all of it.
    connect(&storage, &StorageManager::aboutToChangeWords, this, [this] { m_weeklyPlan.reset(); });
    connect(&storage, &StorageManager::wordsChanged, this, &CurrentWeeklyPlan::refreshWeeklyPlan);
}

const std::optional<WeeklyReviewPlan> &CurrentWeeklyPlan::weeklyPlan() const {
    if (!m_weeklyPlan)
        m_weeklyPlan =
            WeeklyReviewScheduler::generateWeeklyPlan(m_storage.words(), m_date, m_storage.calendar());
    return m_weeklyPlan;
}

void CurrentWeeklyPlan::refreshWeeklyPlan() {
    m_weeklyPlan.reset();
    m_date = m_storage.now();
    Q_EMIT weeklyPlanChanged();
}

} // namespace lexiquill
