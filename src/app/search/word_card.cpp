#include "app/search/word_card.h"

#include "app/search/card_article.h"
#include "app/search/definition_rows.h"
#include "app/search/word_blanks.h"
#include "app/shell/services.h"
#include "app/wordbook/day_texts.h"
#include "model/note_tags.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"
#include "support/background_task.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>
#include <limits>
#include <utility>

namespace lexiquill {

namespace {

/// Senses shown at first, so that even a long entry appears at once.
constexpr qsizetype firstSenses = 60;
constexpr qsizetype furtherSenses = 200;
constexpr qsizetype maxRawLength = 20'000;

/// The definition to show when there are no groups of senses.
const QString &plainText(const WordRecord &record) {
    return record.rawDefinition.isEmpty() ? record.conciseSummary : record.rawDefinition;
}

} // namespace

WordCard::WordCard(QObject *parent) : WordCard(Services::current(), parent) {}

WordCard::WordCard(Services &services, QObject *parent)
    : QObject(parent),
      m_storage(services.storage),
      m_shelf(services.shelf),
      m_plan(services.plan),
      m_deletions(services.storage) {
    // The plan is rebuilt after every change and when a new day begins.
    connect(&m_plan, &CurrentWeeklyPlan::weeklyPlanChanged, this, &WordCard::refresh);
}

void WordCard::setWordId(const QString &wordId) {
    if (wordId == m_wordId)
        return;
    m_wordId = wordId;
    m_senseLimit = firstSenses;
    Q_EMIT wordIdChanged();
    refresh();
}

void WordCard::setHidesWord(bool hidesWord) {
    if (hidesWord == m_hidesWord)
        return;
    m_hidesWord = hidesWord;
    Q_EMIT hidesWordChanged();
    refresh();
}

void WordCard::refresh() {
    const qsizetype index = indexOfWord(m_storage.words(), QUuid::fromString(m_wordId));
    std::optional<WordRecord> record;
    if (!m_wordId.isEmpty() && index >= 0)
        record = m_storage.words().at(index);
    if (record && m_hidesWord)
        record = withoutWord(*record);
    show(std::move(record));
}

void WordCard::show(std::optional<WordRecord> record) {
    const std::optional<WordRecord> previous = std::exchange(m_record, std::move(record));
    if (!previous && !m_record)
        return;
    if (!previous || !m_record || previous->id != m_record->id || previous->word != m_record->word ||
        previous->phonetic != m_record->phonetic || previous->posGroups != m_record->posGroups ||
        previous->examples != m_record->examples || previous->rawDefinition != m_record->rawDefinition)
        describe();
    Q_EMIT changed();
    if (!previous || !m_record || previous->id != m_record->id || previous->userNotes != m_record->userNotes)
        Q_EMIT userNotesChanged();
}

void WordCard::describe() {
    m_groups = m_record ? definitionRows(m_record->posGroups, m_record->word, m_senseLimit) : QVariantList();
    m_examples = m_record ? exampleParagraphs(m_record->examples, m_record->word) : TextParagraphs();
    findArticle();
    Q_EMIT contentChanged();
}

void WordCard::findArticle() {
    m_article.clear();
    m_articleSearch.reset();
    // The article would show the word.
    if (!m_record || m_hidesWord || !m_groups.isEmpty() || m_record->rawDefinition.isEmpty())
        return;
    m_articleSearch = std::make_unique<Cancellation>();
    const std::stop_token stop = m_articleSearch->token();
    const auto find = [&shelf = m_shelf, word = m_record->word, text = m_record->rawDefinition, stop] {
        return articleOf(shelf, word, text, stop);
    };
    runInBackground(this, find, [this, stop](const QString &article) {
        if (stop.stop_requested() || article.isEmpty())
            return;
        m_article = article;
        Q_EMIT contentChanged();
    });
}

QString WordCard::headword() const {
    return m_record ? m_record->word : QString();
}

QString WordCard::phonetic() const {
    return m_record ? shownPhonetic(*m_record) : QString();
}

int WordCard::hiddenSenses() const {
    const qsizetype count = m_record ? senseCount(m_record->posGroups) - m_senseLimit : 0;
    return static_cast<int>(std::clamp<qsizetype>(count, 0, std::numeric_limits<int>::max()));
}

QString WordCard::rawText() const {
    return m_record && m_groups.isEmpty() && m_article.isEmpty() ? plainText(*m_record).left(maxRawLength)
                                                                 : QString();
}

QString WordCard::statusText() const {
    return m_record ? rawValue(m_record->memoryStatus) : QString();
}

QString WordCard::statusColorName() const {
    return m_record ? badgeColorName(m_record->memoryStatus) : QString();
}

QString WordCard::memoryText() const {
    if (!m_record)
        return {};
    QStringList parts;
    if (m_record->lastReviewDate)
        parts += QStringLiteral("间隔 %1 天").arg(m_record->intervalDays);
    else
        parts += QStringLiteral("尚未复习");
    parts += nextReviewText(*m_record, m_storage.now(), m_storage.calendar());
    parts += QStringLiteral("查询 %1 次").arg(m_record->searchCount);
    return parts.join(QStringLiteral(" · "));
}

QString WordCard::userNotes() const {
    return m_record ? m_record->userNotes : QString();
}

QStringList WordCard::tags() const {
    return noteTags(userNotes());
}

void WordCard::showMore() {
    m_senseLimit += furtherSenses;
    describe();
}

void WordCard::answer(bool remembered) {
    if (m_record)
        m_storage.recordReview(m_record->id,
                               remembered ? ReviewFeedback::Remembered : ReviewFeedback::Forgot);
}

void WordCard::saveNotes(const QString &notes) {
    if (m_record && notes != m_record->userNotes)
        m_storage.setUserNotes(m_record->id, notes);
}

void WordCard::copy() {
    if (!m_record)
        return;
    QGuiApplication::clipboard()->setText(plainDefinition(m_record->word, phonetic(), m_record->posGroups,
                                                          m_record->examples, plainText(*m_record)));
}

QString WordCard::remove() {
    return m_record ? m_deletions.remove({QUuid(m_record->id)}) : QString();
}

void WordCard::undoRemoval() {
    m_deletions.undo();
}

} // namespace lexiquill
