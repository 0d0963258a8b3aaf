#pragma once

#include "app/components/expiry.h"
#include "app/statistics/forgetting_curve.h"
#include "app/statistics/memory_statistics.h"

#include <QObject>
#include <QQmlEngine>
#include <QTimer>
#include <QVariantList>

namespace lexiquill {

class StorageManager;

/// The data of the statistics screen. While active, it is recomputed when the wordbook changes, when a word
/// falls due, and when a day begins.
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
    Q_PROPERTY(QVariantList months READ months NOTIFY changed)
    Q_PROPERTY(QString monthSummary READ monthSummary NOTIFY changed)
    Q_PROPERTY(QVariantList hours READ hours NOTIFY changed)
    Q_PROPERTY(QString hourSummary READ hourSummary NOTIFY changed)
    Q_PROPERTY(QVariantList hardestWords READ hardestWords NOTIFY changed)
    Q_PROPERTY(QString reviewSummary READ reviewSummary NOTIFY changed)
    Q_PROPERTY(QString selectedWord READ selectedWord NOTIFY curveChanged)
    Q_PROPERTY(QString curveSummary READ curveSummary NOTIFY curveChanged)
    Q_PROPERTY(QString curveOutlook READ curveOutlook NOTIFY curveChanged)

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
    /// Objects with `label` and `count`.
    QVariantList nextSevenDaysForecast() const;
    const MemoryStatistics &figures() const { return m_statistics; }
    /// The last twelve months, each an object with `label` ("3月"), `count` (reviews), `share` (how many were
    /// remembered, 0 to 1), `top` (the same in percent) and `text`, all of it in words. Empty without
    /// reviews.
    QVariantList months() const;
    QString monthSummary() const;
    /// The hours of the day, each an object with `label` ("8"), `count` and `text`. Empty without reviews.
    QVariantList hours() const;
    QString hourSummary() const;
    /// Objects with `word` and `text`, which says why the word is hard.
    QVariantList hardestWords() const;
    /// A text with the number of reviews in the last year, the number of days with reviews, and the number of
    /// such days in a row up to today.
    QString reviewSummary() const;

    /// The word of the forgetting curve; empty for the average word.
    const QString &selectedWord() const { return m_selectedWord; }
    const ForgettingCurve &curve() const { return m_curve; }
    /// A one-line description of the curve.
    QString curveSummary() const;
    /// The values of the curve today and on some days after it, in words.
    QString curveOutlook() const;
    /// One value of a curve in words; `day` counts from today.
    static QString retentionOn(qint64 day, double retention);

    /// Selects the shortest word that begins with `text`, ignoring case; an empty text selects none. False if
    /// the wordbook has no such word; then none is selected.
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
    QTimer m_updating;
    bool m_isActive = false;
    bool m_isOutdated = true;
    MemoryStatistics m_statistics;
    QUuid m_selectedId;
    QString m_selectedWord;
    ForgettingCurve m_curve;
};

} // namespace lexiquill
