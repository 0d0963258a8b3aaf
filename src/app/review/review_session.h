#pragma once

#include "storage/wordbook_change.h"

#include <QObject>
#include <QQmlEngine>
#include <QVariantList>

#include <optional>

namespace lexiquill {

class CurrentWeeklyPlan;
class StorageManager;
struct Services;

/// One round through the flash cards of the weekly plan. The order is fixed when the round begins, although
/// every answer changes the plan. Words deleted during the round are skipped.
class ReviewSession : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(int position READ position NOTIFY changed)
    Q_PROPERTY(int rememberedCount READ rememberedCount NOTIFY changed)
    Q_PROPERTY(int forgottenCount READ forgottenCount NOTIFY changed)
    Q_PROPERTY(QStringList forgottenWords READ forgottenWords NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(bool hasAnsweredToday READ hasAnsweredToday NOTIFY changed)
    Q_PROPERTY(QString word READ word NOTIFY changed)
    Q_PROPERTY(QString phonetic READ phonetic NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)
    Q_PROPERTY(QString badge READ badge NOTIFY changed)
    Q_PROPERTY(QString memory READ memory NOTIFY changed)
    Q_PROPERTY(QString notes READ notes NOTIFY changed)
    Q_PROPERTY(QVariantList groups READ groups NOTIFY changed)
    Q_PROPERTY(QVariantList examples READ examples NOTIFY changed)
    Q_PROPERTY(QString rawDefinition READ rawDefinition NOTIFY changed)

public:
    /// Empty: nothing to review. Asking: the word is shown. Revealed: its meaning is shown, too. Finished:
    /// all words are answered, or the user ended the round.
    enum class State { Empty, Asking, Revealed, Finished };
    Q_ENUM(State)

    explicit ReviewSession(QObject *parent = nullptr);
    explicit ReviewSession(Services &services, QObject *parent = nullptr);

    /// On becoming active, begins a new round if there is none, if nothing has been answered yet, or if the
    /// last round is finished and began on another day.
    bool isActive() const { return m_isActive; }
    void setActive(bool isActive);

    State state() const { return m_state; }
    /// The number of cards in the round.
    int count() const { return static_cast<int>(m_cards.size()); }
    /// The number of cards already answered or skipped.
    int position() const { return static_cast<int>(m_position); }
    int rememberedCount() const { return countOf(ReviewFeedback::Remembered); }
    int forgottenCount() const { return countOf(ReviewFeedback::Forgot); }
    QStringList forgottenWords() const;
    bool canUndo() const { return !m_answers.isEmpty(); }
    /// Whether the plan has words that a round leaves out, because they have been reviewed today.
    bool hasAnsweredToday() const { return m_hasAnsweredToday; }

    // These describe the word on the card; empty when there is no card.
    QString word() const { return m_record.word; }
    QString phonetic() const;
    QString status() const;
    QString badge() const;
    /// When the review is due and how often the word has been searched.
    QString memory() const;
    QString notes() const { return m_record.userNotes; }
    /// Objects with a part of speech `pos` and its `senses`, each sense one line of text.
    QVariantList groups() const;
    /// Objects with `en` and `cn`.
    QVariantList examples() const;
    QString rawDefinition() const { return m_record.rawDefinition; }

    /// Begins a round with the plan's words, most urgent first. Leaves out words reviewed today unless `all`.
    Q_INVOKABLE void start(bool all = false);
    /// Begins a round with the words that were forgotten in this one.
    Q_INVOKABLE void startWithForgotten();
    /// Shows the meaning.
    Q_INVOKABLE void reveal();
    /// Records the answer, once the meaning is shown, and goes on to the next card.
    Q_INVOKABLE void answer(bool isRemembered);
    /// Takes back the last answer and shows its card again.
    Q_INVOKABLE void undo();
    /// Ends the round early. Does nothing before the first answer.
    Q_INVOKABLE void finish();

Q_SIGNALS:
    void activeChanged();
    void changed();

private:
    struct Card {
        QUuid id;
        QString word;
    };
    struct Answer {
        ReviewUndone undo;
        ReviewFeedback feedback;
        qsizetype position;
    };

    int countOf(ReviewFeedback feedback) const;
    void begin(QList<Card> cards);
    void takeWords();
    bool takeRecord();
    void showCard();

    StorageManager &m_storage;
    CurrentWeeklyPlan &m_plan;
    bool m_isActive = false;
    State m_state = State::Empty;
    QList<Card> m_cards;
    qsizetype m_position = 0;
    QList<Answer> m_answers;
    bool m_hasAnsweredToday = false;
    Instant m_beginning;
    WordRecord m_record;
    bool m_isChanging = false;
};

} // namespace lexiquill
