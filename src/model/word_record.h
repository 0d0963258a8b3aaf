#pragma once

#include "model/dictionary_entry.h"
#include "support/calendar.h"
#include "support/instant.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <array>
#include <optional>

namespace lexiquill {

/// How well a word is known. The raw value is used in JSON and on the screens.
enum class MemoryStatus { New, Learning, Reviewing, Mastered };

inline constexpr std::array allMemoryStatuses{MemoryStatus::New, MemoryStatus::Learning,
                                              MemoryStatus::Reviewing, MemoryStatus::Mastered};

/// "新查询", "学习中", "巩固中" or "已掌握"
QString rawValue(MemoryStatus status);
std::optional<MemoryStatus> memoryStatusFromRawValue(QStringView text);
/// "blue", "orange", "purple" or "green"
QString badgeColorName(MemoryStatus status);

/// The answer to one review.
enum class ReviewFeedback { Remembered, Forgot };

/// "记住了" or "没记住"
QString rawValue(ReviewFeedback feedback);
std::optional<ReviewFeedback> reviewFeedbackFromRawValue(QStringView text);

/// One review event.
struct ReviewLog {
    QUuid id = QUuid::createUuid();
    Instant reviewDate;
    ReviewFeedback feedback = ReviewFeedback::Forgot;
    qint64 resultingIntervalDays = 0;
    double resultingEaseFactor = 0;

    friend bool operator==(const ReviewLog &, const ReviewLog &) = default;
};

/// One entry of the wordbook: the word, its dictionary content at the last lookup, its search statistics
/// and its review state. Two records are equal when their ids are.
struct WordRecord {
    QUuid id = QUuid::createUuid();
    QString word;
    std::optional<QString> phonetic = std::nullopt;
    QString conciseSummary;
    QList<PartOfSpeechGroup> posGroups;
    QString rawDefinition;
    QList<ExampleSentence> examples;
    Instant firstSearchedDate;
    Instant lastSearchedDate;
    qint64 searchCount = 1;
    std::optional<Instant> lastReviewDate = std::nullopt; ///< absent until the first review
    Instant nextReviewDate;
    qint64 repetitionCount = 0; ///< "remembered" answers in a row
    qint64 intervalDays = 0;
    double easeFactor = 2.5;
    bool isMastered = false;
    MemoryStatus memoryStatus = MemoryStatus::New;
    QList<ReviewLog> reviewHistory; ///< normally oldest first, but a file may have any order
    QString userNotes;

    /// Whether the word is to be reviewed at `date`; never when mastered.
    bool isDue(Instant date) const { return !isMastered && nextReviewDate <= date; }
    /// When the next review is, in words and whole calendar days, e.g. "今天待复习" or "6 天后".
    QString nextReviewRelativeDescription(Instant relativeTo, const Calendar &calendar) const;

    friend bool operator==(const WordRecord &a, const WordRecord &b) { return a.id == b.id; }
};

inline size_t qHash(const WordRecord &record, size_t seed = 0) noexcept {
    return qHash(record.id, seed);
}

/// Copies the review state of `other` to `record`: the schedule, the ease and the status, but not the
/// history.
void takeReviewState(WordRecord &record, const WordRecord &other);

/// Whether all fields are equal; fast for records that are copies of each other.
bool haveSameContent(const WordRecord &a, const WordRecord &b);

} // namespace lexiquill

Q_DECLARE_TYPEINFO(lexiquill::ReviewLog, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(lexiquill::WordRecord, Q_RELOCATABLE_TYPE);
