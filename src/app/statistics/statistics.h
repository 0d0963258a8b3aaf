#pragma once

#include "app/components/expiry.h"
#include "app/statistics/forgetting_curve.h"
#include "app/statistics/memory_statistics.h"

#include <QObject>
#include <QQmlEngine>
#include <QVariantList>

namespace lexiquill {

class StorageManager;

/// What the statistics screen shows. Computed once for each change of the wordbook, and when a word falls due
/// or a day begins, for as long as it is active.
class Statistics : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(int total READ total NOTIFY changed)
    Q_PROPERTY(int masteredCount READ masteredCount NOTIFY changed)
    Q_PROPERTY(int reviewingCount READ reviewingCount NOTIFY changed)
    Q_PROPERTY(int dueCount READ dueCount NOTIFY changed)
    Q_PROPERTY(double retentionRate READ retentionRate NOTIFY changed)
    Q_PROPERTY(QString retentionText READ retentionText NOTIFY changed)
    Q_PROPERTY(QVariantList nextSevenDaysForecast READ nextSevenDaysForecast NOTIFY changed)
    Q_PROPERTY(QString reviewSummary READ reviewSummary NOTIFY changed)
    Q_PROPERTY(QString selectedWord READ selectedWord NOTIFY curveChanged)
    Q_PROPERTY(QString curveSummary READ curveSummary NOTIFY curveChanged)

public:
    explicit Statistics(QObject *parent = nullptr);
    explicit Statistics(StorageManager &storage, QObject *parent = nullptr);

    bool isActive() const { return m_isActive; }
    void setActive(bool isActive);

    int total() const { return static_cast<int>(m_statistics.total); }
    int masteredCount() const { return static_cast<int>(m_statistics.masteredCount); }
    int reviewingCount() const { return static_cast<int>(m_statistics.reviewingCount); }
    int dueCount() const { return static_cast<int>(m_statistics.dueCount); }
    double retentionRate() const { return m_statistics.retentionRate(); }
    QString retentionText() const { return m_statistics.retentionText(); }
    /// Objects of `label` and `count`.
    QVariantList nextSevenDaysForecast() const;
    const MemoryStatistics &figures() const { return m_statistics; }
    /// How often and on how many days of the last year words were reviewed, and for how many days in a row.
    QString reviewSummary() const;

    /// The word that the forgetting curve is of; empty for the average one.
    const QString &selectedWord() const { return m_selectedWord; }
    const ForgettingCurve &curve() const { return m_curve; }
    /// The curve in words.
    QString curveSummary() const;

    /// Selects the shortest word that begins with `text`, in whatever case; none for an empty text. False
    /// when the wordbook has no such word; none is selected then.
    Q_INVOKABLE bool selectWord(const QString &text);

Q_SIGNALS:
    void activeChanged();
    void changed();
    void curveChanged();

private:
    void update();
    void updateCurve();

    StorageManager &m_storage;
    Expiry m_expiry;
    bool m_isActive = false;
    bool m_isOutdated = true;
    MemoryStatistics m_statistics;
    QUuid m_selectedId;
    QString m_selectedWord;
    ForgettingCurve m_curve;
};

} // namespace lexiquill
