#include "app/review/review_session.h"

#include "app/preferences/window_preferences.h"
#include "app/shell/services.h"
#include "review/spaced_repetition_engine.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"

#include <QHash>
#include <QScopedValueRollback>

#include <algorithm>
#include <functional>
#include <utility>

namespace lexiquill {

namespace {

bool isReviewedSince(const WordRecord &word, Instant start) {
    return word.lastReviewDate && *word.lastReviewDate >= start;
}

/// Whether a word of the plan is neither due nor reviewed today.
bool isRest(const WordRecord &word, Instant now, Instant startOfToday) {
    return !word.isDue(now) && !isReviewedSince(word, startOfToday);
}

} // namespace

ReviewSession::ReviewSession(QObject *parent) : ReviewSession(Services::current(), parent) {}

ReviewSession::ReviewSession(Services &services, QObject *parent)
    : QObject(parent),
      m_storage(services.storage),
      m_plan(services.plan),
      m_roundSize(WindowPreferences::defaultRoundSize) {
    connect(&m_plan, &CurrentWeeklyPlan::weeklyPlanChanged, this, &ReviewSession::follow);
}

void ReviewSession::setActive(bool isActive) {
    if (isActive == m_isActive)
        return;
    m_isActive = isActive;
    Q_EMIT activeChanged();
    if (!m_isActive)
        return;
    const bool isUntouched = m_kind == Kind::Due && m_state == State::Asking && m_answers.isEmpty();
    const bool isOfAnotherDay =
        m_state == State::Finished && m_storage.calendar().daysBetween(m_beginning, m_storage.now()) != 0;
    if (isUntouched || isOfAnotherDay)
        start();
    else
        follow();
}

void ReviewSession::setRoundSize(int size) {
    size = std::max(1, size);
    if (size == m_roundSize)
        return;
    m_roundSize = size;
    Q_EMIT roundSizeChanged();
}

void ReviewSession::follow() {
    if (!m_isActive || m_isChanging)
        return;
    if (m_state == State::Empty) {
        start();
    } else if (m_state == State::Finished) {
        countWords();
        Q_EMIT changed();
    } else {
        showCard(false);
    }
}

Instant ReviewSession::startOfToday() const {
    const Instant now = m_storage.now();
    const Calendar calendar = m_storage.calendar();
    const auto today = calendar.date(now);
    return (today ? calendar.startOfDay(*today) : std::nullopt).value_or(now);
}

void ReviewSession::start() {
    startWithPlan(Kind::Due);
}

void ReviewSession::startWithRest() {
    startWithPlan(Kind::Rest);
}

void ReviewSession::startWithPlan(Kind kind) {
    const Instant now = m_storage.now();
    const auto isOutdated = [now](const WeeklyReviewPlan &plan) {
        return now < plan.startOfWeek || now >= plan.endOfWeek;
    };
    if (m_plan.weeklyPlan() && isOutdated(*m_plan.weeklyPlan())) {
        const QScopedValueRollback changing(m_isChanging, true);
        m_plan.refreshWeeklyPlan();
    }
    QList<Card> cards;
    if (const auto &plan = m_plan.weeklyPlan()) {
        const Instant today = startOfToday();
        for (const WordRecord &word : plan->prioritizedList) {
            if (cards.size() == m_roundSize)
                break;
            if (kind == Kind::Due ? word.isDue(now) : isRest(word, now, today))
                cards += {word.id, word.word};
        }
    }
    begin(kind, std::move(cards));
}

void ReviewSession::practiseForgotten() {
    QList<Card> cards;
    for (const Answer &answer : std::as_const(m_answers)) {
        if (answer.feedback == ReviewFeedback::Forgot)
            cards += m_cards.at(answer.position);
    }
    begin(Kind::Practice, std::move(cards));
}

void ReviewSession::practiseAgain() {
    QList<Card> cards;
    if (m_state == State::Finished) {
        cards = m_cards;
    } else {
        cards = lastReviewed();
    }
    begin(Kind::Practice, std::move(cards));
}

/// The words reviewed today, the last one first, as many as make a round.
QList<ReviewSession::Card> ReviewSession::lastReviewed() const {
    const Instant today = startOfToday();
    QList<const WordRecord *> reviewed;
    for (const WordRecord &word : m_storage.words()) {
        if (isReviewedSince(word, today))
            reviewed += &word;
    }
    std::ranges::stable_sort(reviewed, std::ranges::greater(),
                             [](const WordRecord *word) { return *word->lastReviewDate; });
    reviewed.resize(std::min<qsizetype>(reviewed.size(), m_roundSize));
    QList<Card> cards;
    for (const WordRecord *word : std::as_const(reviewed))
        cards += {word->id, word->word};
    return cards;
}

void ReviewSession::practise(const QStringList &ids) {
    QHash<QUuid, QString> wanted;
    wanted.reserve(ids.size());
    for (const QString &id : ids)
        wanted.insert(QUuid::fromString(id), QString());
    for (const WordRecord &word : m_storage.words()) {
        const auto found = wanted.find(word.id);
        if (found != wanted.end())
            *found = word.word;
    }
    QList<Card> cards;
    for (const QString &text : ids) {
        const QUuid id = QUuid::fromString(text);
        // Taken, so that an id that is repeated gives one card.
        if (const QString word = wanted.take(id); !word.isEmpty())
            cards += {id, word};
    }
    begin(Kind::Practice, std::move(cards));
}

void ReviewSession::begin(Kind kind, QList<Card> cards) {
    m_kind = kind;
    m_cards = std::move(cards);
    m_position = 0;
    m_answers.clear();
    m_beginning = m_storage.now();
    m_state = State::Asking;
    showCard(true);
}

/// Whether a round of this kind still asks for the word.
bool ReviewSession::isWanted(const WordRecord &word) const {
    return m_kind != Kind::Due || word.isDue(m_storage.now());
}

bool ReviewSession::takeRecord() {
    const QList<WordRecord> &words = m_storage.words();
    const Card &card = m_cards.at(m_position);
    const qsizetype index = indexOfWord(words, card.id, card.word);
    if (index < 0 || !isWanted(words.at(index)))
        return false;
    m_record = words.at(index);
    return true;
}

/// Goes on to the next card that can be shown. All words may have been replaced, so this takes linear time.
void ReviewSession::skipMissing() {
    const QList<WordRecord> &words = m_storage.words();
    QHash<QUuid, qsizetype> byId;
    QHash<QString, qsizetype> byWord;
    byId.reserve(words.size());
    byWord.reserve(words.size());
    for (qsizetype i = words.size() - 1; i >= 0; --i) {
        byId.insert(words.at(i).id, i);
        byWord.insert(words.at(i).word.toLower(), i);
    }
    for (; m_position < m_cards.size(); ++m_position) {
        const Card &card = m_cards.at(m_position);
        const qsizetype index = byId.value(card.id, byWord.value(card.word.toLower(), -1));
        if (index < 0 || !isWanted(words.at(index)))
            continue;
        m_record = words.at(index);
        return;
    }
}

/// Shows the card at the position, or the next one whose word still exists.
void ReviewSession::showCard(bool isOpening) {
    const qsizetype before = m_position;
    if (m_position < m_cards.size() && !takeRecord())
        skipMissing();
    if (m_position != before)
        m_state = State::Asking;
    if (m_position >= m_cards.size()) {
        m_record = WordRecord();
        m_state = m_answers.isEmpty() ? State::Empty : State::Finished;
        countWords();
    }
    Q_EMIT changed();
    if (m_state == State::Asking && (isOpening || m_position != before))
        Q_EMIT opened();
}

void ReviewSession::countWords() {
    const Instant now = m_storage.now();
    const Instant today = startOfToday();
    const QList<WordRecord> &words = m_storage.words();
    m_dueLeft = static_cast<int>(
        std::ranges::count_if(words, [now](const WordRecord &word) { return word.isDue(now); }));
    m_reviewedToday = static_cast<int>(std::ranges::count_if(
        words, [today](const WordRecord &word) { return isReviewedSince(word, today); }));
    m_restLeft = 0;
    if (const auto &plan = m_plan.weeklyPlan()) {
        for (const WordRecord &word : plan->prioritizedList)
            m_restLeft += isRest(word, now, today) ? 1 : 0;
    }
}

void ReviewSession::reveal() {
    if (m_state != State::Asking)
        return;
    m_state = State::Revealed;
    Q_EMIT changed();
}

void ReviewSession::answer(bool isRemembered) {
    if (m_state != State::Revealed)
        return;
    const ReviewFeedback feedback = isRemembered ? ReviewFeedback::Remembered : ReviewFeedback::Forgot;
    const QScopedValueRollback changing(m_isChanging, true);
    std::optional<ReviewUndone> undo;
    if (!isPractice())
        undo = m_storage.recordReview(m_record.id, feedback);
    if (undo || isPractice())
        m_answers += {.undo = std::move(undo), .feedback = feedback, .position = m_position};
    ++m_position;
    m_state = State::Asking;
    showCard(true);
}

void ReviewSession::undo() {
    if (m_answers.isEmpty())
        return;
    const Answer answer = m_answers.takeLast();
    const QScopedValueRollback changing(m_isChanging, true);
    if (answer.undo)
        m_storage.undoReview(*answer.undo);
    m_position = answer.position;
    m_state = State::Revealed;
    showCard(false);
}

void ReviewSession::finish() {
    if (m_answers.isEmpty())
        return;
    m_state = State::Finished;
    countWords();
    Q_EMIT changed();
}

int ReviewSession::countOf(ReviewFeedback feedback) const {
    return static_cast<int>(std::ranges::count(m_answers, feedback, &Answer::feedback));
}

QStringList ReviewSession::forgottenWords() const {
    QStringList words;
    for (const Answer &answer : m_answers) {
        if (answer.feedback == ReviewFeedback::Forgot)
            words += m_cards.at(answer.position).word;
    }
    return words;
}

QString ReviewSession::wordId() const {
    return m_record.word.isEmpty() ? QString() : m_record.id.toString(QUuid::WithoutBraces);
}

QString ReviewSession::nextReview(ReviewFeedback feedback) const {
    if (m_record.word.isEmpty() || isPractice())
        return {};
    WordRecord record = m_record;
    // Otherwise the new entry would copy all of it.
    record.reviewHistory.clear();
    SpacedRepetitionEngine::processReview(record, feedback, m_storage.now(), m_storage.calendar());
    return record.isMastered ? rawValue(record.memoryStatus)
                             : QStringLiteral("%1 天后").arg(record.intervalDays);
}

} // namespace lexiquill
