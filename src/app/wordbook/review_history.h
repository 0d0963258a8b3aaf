#pragma once

#include "model/word_record.h"

#include <QObject>
#include <QQmlEngine>
#include <QVariantList>

namespace lexiquill {

class CurrentWeeklyPlan;
class StorageManager;
struct Services;

/// The reviews of one record of the wordbook. Updated when the wordbook changes.
class ReviewHistory : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The record's id; an unknown or empty one has no reviews.
    Q_PROPERTY(QString wordId READ wordId WRITE setWordId NOTIFY wordIdChanged)
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// A summary of all reviews in one sentence.
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    /// One line that says when the word was first and last searched.
    Q_PROPERTY(QString searches READ searches NOTIFY changed)
    /// The latest reviews, newest first: objects with `date`, `answer`, `remembered` and `result`.
    Q_PROPERTY(QVariantList latest READ latest NOTIFY changed)

public:
    explicit ReviewHistory(QObject *parent = nullptr);
    explicit ReviewHistory(Services &services, QObject *parent = nullptr);

    const QString &wordId() const { return m_wordId; }
    void setWordId(const QString &wordId);
    /// Oldest first.
    const QList<ReviewLog> &reviews() const { return m_reviews; }
    /// The local date of an instant, "2025-03-14".
    QString date(Instant instant) const;
    /// A review in words: its date, the answer, and the interval and the ease after it.
    QString describe(const ReviewLog &review) const;
    int count() const { return static_cast<int>(m_reviews.size()); }
    QString summary() const;
    const QString &searches() const { return m_searches; }
    QVariantList latest() const;

Q_SIGNALS:
    void wordIdChanged();
    void changed();

private:
    void refresh();

    StorageManager &m_storage;
    CurrentWeeklyPlan &m_plan;
    QString m_wordId;
    QString m_searches;
    QList<ReviewLog> m_reviews;
};

} // namespace lexiquill
