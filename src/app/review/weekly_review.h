#pragma once

#include "app/components/expiry.h"

#include <QObject>
#include <QQmlEngine>
#include <QUrl>

namespace lexiquill {

class CurrentWeeklyPlan;
class StorageManager;
struct Services;

/// The week of the review plan, its counts, and its export. Follows the plan while it is active. Refreshes
/// the plan when a new day begins.
class WeeklyReview : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(QString week READ week NOTIFY planChanged)
    Q_PROPERTY(QString period READ period NOTIFY planChanged)
    Q_PROPERTY(int totalCount READ totalCount NOTIFY planChanged)
    Q_PROPERTY(int dueCount READ dueCount NOTIFY planChanged)
    Q_PROPERTY(int difficultCount READ difficultCount NOTIFY planChanged)
    Q_PROPERTY(int newCount READ newCount NOTIFY planChanged)

public:
    explicit WeeklyReview(QObject *parent = nullptr);
    explicit WeeklyReview(Services &services, QObject *parent = nullptr);

    bool isActive() const { return m_isActive; }
    void setActive(bool isActive);

    /// E.g. "2025年第7周"
    const QString &week() const { return m_week; }
    /// First and last day, e.g. "2月10日 至 2月16日"
    const QString &period() const { return m_period; }
    int totalCount() const { return m_totalCount; }
    int dueCount() const { return m_dueCount; }
    int difficultCount() const { return m_difficultCount; }
    int newCount() const { return m_newCount; }

    /// The suggested file for an export: the plan's file name in the user's documents folder, or in the home
    /// directory if there is no such folder.
    Q_INVOKABLE QUrl suggestedFile() const;
    /// Writes the plan as Markdown, on another thread.
    Q_INVOKABLE void exportTo(const QUrl &chosen);

Q_SIGNALS:
    /// An export has ended. `error` says in Chinese why it failed; empty after success.
    void exported(const QUrl &file, const QString &error);
    void activeChanged();
    void planChanged();

private:
    void update();

    StorageManager &m_storage;
    CurrentWeeklyPlan &m_plan;
    Expiry m_day;
    bool m_isActive = false;
    bool m_isOutdated = true;
    QString m_week;
    QString m_period;
    int m_totalCount = 0;
    int m_dueCount = 0;
    int m_difficultCount = 0;
    int m_newCount = 0;
};

} // namespace lexiquill
