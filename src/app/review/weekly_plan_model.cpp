#include "app/review/weekly_plan_model.h"

#include "app/search/definition_rows.h"
#include "app/shell/services.h"
#include "app/wordbook/day_texts.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"

namespace lexiquill {

namespace {

const RecordSelection &selection(const WeeklyReviewPlan &plan, WeeklyPlanModel::Filter filter) {
    switch (filter) {
    case WeeklyPlanModel::Filter::Due:
        return plan.dueWords;
    case WeeklyPlanModel::Filter::Difficult:
        return plan.difficultWords;
    case WeeklyPlanModel::Filter::New:
        return plan.newSearches;
    case WeeklyPlanModel::Filter::All:
        break;
    }
    return plan.prioritizedList;
}

} // namespace

WeeklyPlanModel::WeeklyPlanModel(QObject *parent) : WeeklyPlanModel(Services::current(), parent) {}

WeeklyPlanModel::WeeklyPlanModel(Services &services, QObject *parent)
    : RowListModel(parent),
      m_storage(services.storage),
      m_plan(services.plan) {
    connect(&m_plan, &CurrentWeeklyPlan::weeklyPlanChanged, this, [this] {
        m_isOutdated = true;
        update();
    });
}

void WeeklyPlanModel::setFilter(Filter filter) {
    if (filter == m_filter)
        return;
    m_filter = filter;
    m_isOutdated = true;
    Q_EMIT filterChanged();
    update();
}

void WeeklyPlanModel::setActive(bool isActive) {
    if (isActive == m_isActive)
        return;
    m_isActive = isActive;
    Q_EMIT activeChanged();
    update();
}

void WeeklyPlanModel::update() {
    if (!m_isActive || !m_isOutdated)
        return;
    m_isOutdated = false;
    QList<PlannedWord> rows;
    if (const auto &plan = m_plan.weeklyPlan()) {
        const RecordSelection &words = selection(*plan, m_filter);
        rows.reserve(words.size());
        for (const WordRecord &word : words) {
            rows += {.id = word.id,
                     .word = word.word,
                     .phonetic = shownPhonetic(word),
                     .summary = word.conciseSummary.isEmpty() ? word.rawDefinition : word.conciseSummary,
                     .status = word.memoryStatus,
                     .isMastered = word.isMastered,
                     .nextReviewDate = word.nextReviewDate,
                     .searchCount = word.searchCount};
        }
    }
    const int before = count();
    setRows(std::move(rows));
    if (count() != before)
        Q_EMIT countChanged();
}

QVariant WeeklyPlanModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PlannedWord &row = rows().at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case WordRole:
        return row.word;
    case PhoneticRole:
        return row.phonetic;
    case SummaryRole:
        return row.summary;
    case StatusRole:
        return rawValue(row.status);
    case BadgeRole:
        return badgeColorName(row.status);
    case NextReviewRole: {
        WordRecord record;
        record.nextReviewDate = row.nextReviewDate;
        record.isMastered = row.isMastered;
        return nextReviewText(record, m_storage.now(), m_storage.calendar());
    }
    case SearchCountRole:
        return row.searchCount;
    default:
        return {};
    }
}

QHash<int, QByteArray> WeeklyPlanModel::roleNames() const {
    return {{WordRole, "word"},
            {PhoneticRole, "phonetic"},
            {SummaryRole, "summary"},
            {StatusRole, "status"},
            {BadgeRole, "badge"},
            {NextReviewRole, "nextReview"},
            {SearchCountRole, "searchCount"}};
}

} // namespace lexiquill
