#include "app/review/review_session.h"

#include "app/search/definition_rows.h"
#include "app/shell/services.h"
#include "app/wordbook/day_texts.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"
#include "support/text.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace lexiquill {

namespace {

// A card shows no more than a user can learn at once.
constexpr qsizetype mostSenses = 60;
constexpr qsizetype mostExamples = 3;

QString senseText(const SenseItem &sense, qsizetype number) {
    const QString context =
        sense.context && !sense.context->isEmpty() ? QStringLiteral("〔%1〕").arg(*sense.context) : QString();
    return QString::number(number) + QStringLiteral(". ") + context + sense.chineseMeaning;
}

} // namespace

ReviewSession::ReviewSession(QObject *parent) : ReviewSession(Services::current(), parent) {}

ReviewSession::ReviewSession(Services &services, QObject *parent)
    : QObject(parent),
      m_storage(services.storage),
      m_plan(services.plan) {
    connect(&m_plan, &CurrentWeeklyPlan::weeklyPlanChanged, this, &ReviewSession::takeWords);
}

void ReviewSession::setActive(bool isActive) {
    if (isActive == m_isActive)
        return;
    m_isActive = isActive;
    Q_EMIT activeChanged();
    if (!m_isActive)
        return;
    const bool isUntouched = m_state == State::Asking && m_answers.isEmpty();
    const bool isOfAnotherDay =
        m_state == State::Finished && m_storage.calendar().daysBetween(m_beginning, m_storage.now()) != 0;
    if (isUntouched || isOfAnotherDay)
        start();
    else
        takeWords();
}

/// Follows changes of the words that this session did not make.
void ReviewSession::takeWords() {
    if (!m_isActive || m_isChanging)
        return;
    if (m_state == State::Empty)
        start();
    else if (m_state != State::Finished)
        showCard();
}

void ReviewSession::start(bool all) {
    const auto &plan = m_plan.weeklyPlan();
    const Calendar calendar = m_storage.calendar();
    const auto today = calendar.date(m_storage.now());
    const auto startOfToday = today ? calendar.startOfDay(*today) : std::nullopt;
    QList<Card> cards;
    m_hasAnsweredToday = false;
    if (plan) {
        for (const WordRecord &word : plan->prioritizedList) {
            const bool isAnswered =
                startOfToday && word.lastReviewDate && *word.lastReviewDate >= *startOfToday;
            m_hasAnsweredToday |= isAnswered;
            if (all || !isAnswered)
                cards += {word.id, word.word};
        }
    }
    begin(std::move(cards));
}

void ReviewSession::startWithForgotten() {
    QList<Card> cards;
    for (const Answer &answer : std::as_const(m_answers)) {
        if (answer.feedback == ReviewFeedback::Forgot)
            cards += m_cards.at(answer.position);
    }
    begin(std::move(cards));
}

void ReviewSession::begin(QList<Card> cards) {
    m_cards = std::move(cards);
    m_position = 0;
    m_answers.clear();
    m_beginning = m_storage.now();
    m_state = m_cards.isEmpty() ? State::Empty : State::Asking;
    showCard();
}

bool ReviewSession::takeRecord() {
    const QList<WordRecord> &words = m_storage.words();
    const Card &card = m_cards.at(m_position);
    const qsizetype index = indexOfWord(words, card.id, card.word);
    if (index >= 0)
        m_record = words.at(index);
    return index >= 0;
}

/// Shows the card at the position, or the next one whose word still exists.
void ReviewSession::showCard() {
    const qsizetype before = m_position;
    while (m_position < m_cards.size() && !takeRecord())
        ++m_position;
    if (m_position != before)
        m_state = State::Asking;
    if (m_position >= m_cards.size()) {
        m_record = WordRecord();
        m_state = m_answers.isEmpty() ? State::Empty : State::Finished;
    }
    Q_EMIT changed();
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
    if (auto undo = m_storage.recordReview(m_record.id, feedback))
        m_answers += {.undo = *std::move(undo), .feedback = feedback, .position = m_position};
    ++m_position;
    m_state = State::Asking;
    showCard();
}

void ReviewSession::undo() {
    if (m_answers.isEmpty())
        return;
    const Answer answer = m_answers.takeLast();
    const QScopedValueRollback changing(m_isChanging, true);
    m_storage.undoReview(answer.undo);
    m_position = answer.position;
    m_state = State::Revealed;
    showCard();
}

void ReviewSession::finish() {
    if (m_answers.isEmpty())
        return;
    m_state = State::Finished;
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

QString ReviewSession::phonetic() const {
    return shownPhonetic(m_record);
}

QString ReviewSession::status() const {
    return rawValue(m_record.memoryStatus);
}

QString ReviewSession::badge() const {
    return badgeColorName(m_record.memoryStatus);
}

QString ReviewSession::memory() const {
    if (m_record.word.isEmpty())
        return {};
    return QStringLiteral("%1 · 间隔 %2 天 · 查过 %3 次")
        .arg(nextReviewText(m_record, m_storage.now(), m_storage.calendar()))
        .arg(m_record.intervalDays)
        .arg(m_record.searchCount);
}

QVariantList ReviewSession::groups() const {
    QVariantList groups;
    qsizetype left = mostSenses;
    for (const PartOfSpeechGroup &group : m_record.posGroups) {
        QStringList senses;
        for (const SenseItem &sense : group.senses) {
            if (left-- > 0)
                senses += senseText(sense, senses.size() + 1);
        }
        if (!senses.isEmpty())
            groups += QVariantMap{{QStringLiteral("pos"), group.posAbbreviation()},
                                  {QStringLiteral("senses"), senses}};
    }
    return groups;
}

QVariantList ReviewSession::examples() const {
    QVariantList examples;
    for (const ExampleSentence &example :
         m_record.examples.first(std::min(mostExamples, m_record.examples.size())))
        examples += QVariantMap{{QStringLiteral("en"), example.en}, {QStringLiteral("cn"), example.cn}};
    return examples;
}

} // namespace lexiquill
