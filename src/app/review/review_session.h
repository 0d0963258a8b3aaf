#pragma once

#include "storage/wordbook_change.h"

#include <QObject>
#include <QQmlEngine>
#include <QStringList>

#include <optional>

namespace lexiquill {

class CurrentWeeklyPlan;
class StorageManager;
struct Services;

/// Rounds through the words of the wordbook, one card after the other: what is due now, then the rest of the
/// weekly plan, or a practice, which changes no review state. The order is fixed when a round begins,
/// although every answer changes the plan. Words that have been deleted are skipped, and in a round of due
/// words those that were reviewed elsewhere.
class ReviewSession : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(int roundSize READ roundSize WRITE setRoundSize NOTIFY roundSizeChanged)
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(bool isPractice READ isPractice NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(int position READ position NOTIFY changed)
    Q_PROPERTY(int rememberedCount READ rememberedCount NOTIFY changed)
    Q_PROPERTY(int forgottenCount READ forgottenCount NOTIFY changed)
    Q_PROPERTY(QStringList forgottenWords READ forgottenWords NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(int dueLeft READ dueLeft NOTIFY changed)
    Q_PROPERTY(int restLeft READ restLeft NOTIFY changed)
    Q_PROPERTY(int reviewedToday READ reviewedToday NOTIFY changed)
    Q_PROPERTY(QString word READ word NOTIFY changed)
    Q_PROPERTY(QString wordId READ wordId NOTIFY changed)
    Q_PROPERTY(QString ifRemembered READ ifRemembered NOTIFY changed)
    Q_PROPERTY(QString ifForgotten READ ifForgotten NOTIFY changed)

public:
    /// Empty: nothing to review. Asking: the question is shown. Revealed: the answer is shown, too. Finished:
    /// all words are answered, or the user ended the round.
    enum class State { Empty, Asking, Revealed, Finished };
    Q_ENUM(State)

    explicit ReviewSession(QObject *parent = nullptr);
    explicit ReviewSession(Services &services, QObject *parent = nullptr);

    /// On becoming active, begins a round of due words if there is none, if nothing has been answered in such
    /// a round yet, or if the last round is finished and began on another day.
    bool isActive() const { return m_isActive; }
    void setActive(bool isActive);
    /// The most cards of the next rounds, at least 1.
    int roundSize() const { return m_roundSize; }
    void setRoundSize(int size);

    State state() const { return m_state; }
    /// Whether answers leave the review state of the words as it is.
    bool isPractice() const { return m_kind == Kind::Practice; }
    /// The number of cards in the round.
    int count() const { return static_cast<int>(m_cards.size()); }
    /// The number of cards already answered or skipped.
    int position() const { return static_cast<int>(m_position); }
    int rememberedCount() const { return countOf(ReviewFeedback::Remembered); }
    int forgottenCount() const { return countOf(ReviewFeedback::Forgot); }
    QStringList forgottenWords() const;
    bool canUndo() const { return !m_answers.isEmpty(); }

    // These are counted while no card is shown.
    /// The number of words that are due now.
    int dueLeft() const { return m_dueLeft; }
    /// The number of words in the plan that are not due now and have not been reviewed today.
    int restLeft() const { return m_restLeft; }
    int reviewedToday() const { return m_reviewedToday; }

    // These describe the word on the card; empty when there is no card.
    QString word() const { return m_record.word; }
    /// The id of its record.
    QString wordId() const;
    /// When the word comes up again after this answer, e.g. "6 天后"; empty in a practice.
    QString ifRemembered() const { return nextReview(ReviewFeedback::Remembered); }
    QString ifForgotten() const { return nextReview(ReviewFeedback::Forgot); }

    /// Begins a round with the words that are due now, most urgent first.
    Q_INVOKABLE void start();
    /// Begins a round with words of the plan that are not due yet and have not been reviewed today.
    Q_INVOKABLE void startWithRest();
    /// Begins a practice of the words that were forgotten in this round, of all its words, or, without a
    /// round, of the last words reviewed today.
    Q_INVOKABLE void practiseForgotten();
    Q_INVOKABLE void practiseAgain();
    /// Begins a practice of the records with these ids, in this order. Unknown ids are skipped.
    Q_INVOKABLE void practise(const QStringList &ids);
    /// Shows the answer.
    Q_INVOKABLE void reveal();
    /// Takes the user's answer, once the word is revealed, and goes on to the next card.
    Q_INVOKABLE void answer(bool isRemembered);
    /// Takes back the last answer and shows its card again.
    Q_INVOKABLE void undo();
    /// Ends the round early. Does nothing before the first answer.
    Q_INVOKABLE void finish();
    /// Follows changes of the words and of the time: without a card, begins a round if a word is due.
    Q_INVOKABLE void follow();

Q_SIGNALS:
    void activeChanged();
    void roundSizeChanged();
    void changed();
    /// A card has come up as a question.
    void opened();

private:
    enum class Kind { Due, Rest, Practice };
    struct Card {
        QUuid id;
        QString word;
    };
    struct Answer {
        std::optional<ReviewUndone> undo; ///< absent in a practice
        ReviewFeedback feedback;
        qsizetype position;
    };

    int countOf(ReviewFeedback feedback) const;
    QString nextReview(ReviewFeedback feedback) const;
    Instant startOfToday() const;
    QList<Card> lastReviewed() const;
    void startWithPlan(Kind kind);
    void begin(Kind kind, QList<Card> cards);
    bool isWanted(const WordRecord &word) const;
    bool takeRecord();
    void skipMissing();
    void showCard(bool isOpening);
    void countWords();

    StorageManager &m_storage;
    CurrentWeeklyPlan &m_plan;
    bool m_isActive = false;
    int m_roundSize;
    State m_state = State::Empty;
    Kind m_kind = Kind::Due;
    QList<Card> m_cards;
    qsizetype m_position = 0;
    QList<Answer> m_answers;
    int m_dueLeft = 0;
    int m_restLeft = 0;
    int m_reviewedToday = 0;
    Instant m_beginning;
    WordRecord m_record;
    bool m_isChanging = false;
};

} // namespace lexiquill
