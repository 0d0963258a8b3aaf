#pragma once

#include "app/review/spelling_comparison.h"

#include <QObject>
#include <QQmlEngine>
#include <QVariantList>

namespace lexiquill {

/// The spelling that the user has typed for the word of a card, and how it compares.
class SpellingAttempt : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isMade READ isMade NOTIFY changed)
    Q_PROPERTY(bool isRight READ isRight NOTIFY changed)
    Q_PROPERTY(QVariantList pieces READ pieces NOTIFY changed)
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed)

public:
    using QObject::QObject;

    bool isMade() const { return !m_spoken.isEmpty(); }
    bool isRight() const { return m_comparison.isRight; }
    /// Objects with `text` and whether it `isExtra` or `isMissing`; neither for right letters.
    QVariantList pieces() const;
    /// The result as a sentence; empty without an attempt.
    const QString &spoken() const { return m_spoken; }

    Q_INVOKABLE void make(const QString &typed, const QString &word);
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void changed();

private:
    SpellingComparison m_comparison;
    QString m_spoken;
};

} // namespace lexiquill
