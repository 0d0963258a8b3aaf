#include "model/word_record.h"

#include <tuple>

namespace lexiquill {

QString rawValue(MemoryStatus status) {
    switch (status) {
    case MemoryStatus::New:
        return QStringLiteral("新查询");
    case MemoryStatus::Learning:
        return QStringLiteral("学习中");
    case MemoryStatus::Reviewing:
        return QStringLiteral("巩固中");
    case MemoryStatus::Mastered:
        return QStringLiteral("已掌握");
    }
    Q_UNREACHABLE();
}

std::optional<MemoryStatus> memoryStatusFromRawValue(QStringView text) {
    for (const MemoryStatus status : allMemoryStatuses) {
        if (rawValue(status) == text)
            return status;
    }
    return std::nullopt;
}

QString badgeColorName(MemoryStatus status) {
    switch (status) {
    case MemoryStatus::New:
        return QStringLiteral("blue");
    case MemoryStatus::Learning:
        return QStringLiteral("orange");
    case MemoryStatus::Reviewing:
        return QStringLiteral("purple");
    case MemoryStatus::Mastered:
        return QStringLiteral("green");
    }
    Q_UNREACHABLE();
}

QString rawValue(ReviewFeedback feedback) {
    return feedback == ReviewFeedback::Remembered ? QStringLiteral("记住了") : QStringLiteral("没记住");
}

std::optional<ReviewFeedback> reviewFeedbackFromRawValue(QStringView text) {
    for (const ReviewFeedback feedback : {ReviewFeedback::Remembered, ReviewFeedback::Forgot}) {
        if (rawValue(feedback) == text)
            return feedback;
    }
    return std::nullopt;
}

QString WordRecord::nextReviewRelativeDescription(Instant relativeTo, const Calendar &calendar) const {
    if (isMastered)
        return QStringLiteral("已完全掌握");
    const auto days = calendar.daysBetween(relativeTo, nextReviewDate);
    if (!days)
        return QStringLiteral("今天");
    if (*days < 0)
        return QStringLiteral("已逾期 %1 天").arg(-*days);
    if (*days == 0)
        return QStringLiteral("今天待复习");
    if (*days == 1)
        return QStringLiteral("明天");
    return QStringLiteral("%1 天后").arg(*days);
}

void takeReviewState(WordRecord &record, const WordRecord &other) {
    record.lastReviewDate = other.lastReviewDate;
    record.nextReviewDate = other.nextReviewDate;
    record.repetitionCount = other.repetitionCount;
    record.intervalDays = other.intervalDays;
    record.easeFactor = other.easeFactor;
    record.isMastered = other.isMastered;
    record.memoryStatus = other.memoryStatus;
}

namespace {

/// Compares texts. Fast if both share the same data.
bool areSame(const QString &a, const QString &b) {
    return (a.constData() == b.constData() && a.size() == b.size()) || a == b;
}

bool areSame(const std::optional<QString> &a, const std::optional<QString> &b) {
    return a && b ? areSame(*a, *b) : a.has_value() == b.has_value();
}

template <typename T> bool areSame(const T &a, const T &b) {
    return a == b;
}

/// References to all fields. If a field is missing here, this does not compile.
auto fieldsOf(const WordRecord &record) {
    const auto &[id, word, phonetic, conciseSummary, posGroups, rawDefinition, examples, firstSearchedDate,
                 lastSearchedDate, searchCount, lastReviewDate, nextReviewDate, repetitionCount, intervalDays,
                 easeFactor, isMastered, memoryStatus, reviewHistory, userNotes] = record;
    return std::tie(id, word, phonetic, conciseSummary, posGroups, rawDefinition, examples, firstSearchedDate,
                    lastSearchedDate, searchCount, lastReviewDate, nextReviewDate, repetitionCount,
                    intervalDays, easeFactor, isMastered, memoryStatus, reviewHistory, userNotes);
}

} // namespace

bool haveSameContent(const WordRecord &a, const WordRecord &b) {
    return std::apply(
        [&b](const auto &...ofA) {
            return std::apply([&](const auto &...ofB) { return (areSame(ofA, ofB) && ...); }, fieldsOf(b));
        },
        fieldsOf(a));
}

} // namespace lexiquill
