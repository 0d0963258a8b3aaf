#pragma once

#include "app/components/row_list_model.h"
#include "model/word_record.h"

#include <QQmlEngine>

namespace lexiquill {

class CurrentWeeklyPlan;
class StorageManager;
struct Services;

/// What the list of the weekly plan shows of a word.
struct PlannedWord {
    QUuid id;
    QString word;
    QString phonetic;
    QString summary;
    MemoryStatus status = MemoryStatus::New;
    bool isMastered = false;
    Instant nextReviewDate;
    qint64 searchCount = 0;

    friend bool operator==(const PlannedWord &, const PlannedWord &) = default;
};

/// The words of the weekly plan, or of one of its lists. Follows the plan for as long as it is active.
class WeeklyPlanModel : public RowListModel<PlannedWord> {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Filter filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum class Filter { All, Due, Difficult, New };
    Q_ENUM(Filter)
    enum Role {
        WordRole = Qt::UserRole,
        PhoneticRole,
        SummaryRole,
        StatusRole,
        BadgeRole,
        NextReviewRole,
        SearchCountRole
    };

    explicit WeeklyPlanModel(QObject *parent = nullptr);
    explicit WeeklyPlanModel(Services &services, QObject *parent = nullptr);

    Filter filter() const { return m_filter; }
    void setFilter(Filter filter);
    bool isActive() const { return m_isActive; }
    void setActive(bool isActive);
    int count() const { return rowCount(); }

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void filterChanged();
    void activeChanged();
    void countChanged();

private:
    void update();

    StorageManager &m_storage;
    CurrentWeeklyPlan &m_plan;
    Filter m_filter = Filter::All;
    bool m_isActive = false;
    bool m_isOutdated = true;
};

} // namespace lexiquill
