#include "review/weekly_review_scheduler.h"

#include "support/text.h"

#include <QSet>
#include <QStringBuilder>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <vector>

namespace lexiquill {

namespace {

constexpr double secondsPerWeek = 7 * secondsPerDay;
constexpr qint64 difficultSearchCount = 2;
constexpr double difficultEaseFactor = 2.0;
constexpr qsizetype summaryCharacters = 60;
constexpr qsizetype definitionCharacters = 40;

Calendar::Week weekOf(Instant referenceDate, const Calendar &calendar) {
    if (const auto week = calendar.week(referenceDate))
        return *week;
    const auto date = calendar.date(referenceDate);
    return {.number = 1,
            .year = date ? date->year() : 0,
            .start = referenceDate,
            .end = referenceDate.adding(secondsPerWeek)};
}

bool isDifficult(const WordRecord &word) {
    return !word.isMastered &&
           (word.memoryStatus == MemoryStatus::Learning || word.searchCount >= difficultSearchCount ||
            word.easeFactor < difficultEaseFactor);
}

double calculatePriority(const WordRecord &word, Instant referenceDate) {
    const double overdue = referenceDate.seconds - word.nextReviewDate.seconds;
    double score = overdue > 0 ? overdue / secondsPerDay * 4.0 : 0.0;
    score += static_cast<double>(word.searchCount) * 2.5;
    score += (3.0 - word.easeFactor) * 2;
    if (word.memoryStatus == MemoryStatus::Learning)
        score += 6.0;
    // Extreme dates and factors may result in a NaN, which cannot be sorted.
    return std::isnan(score) ? 0.0 : score;
}

using Positions = QList<qsizetype>;

/// The positions of all selections by descending priority, each record id only once.
Positions prioritized(const QList<WordRecord> &records, std::initializer_list<const Positions *> selections,
                      Instant referenceDate) {
    struct Ranked {
        double priority;
        qsizetype position;
    };
    qsizetype most = 0;
    for (const Positions *selection : selections)
        most += selection->size();
    std::vector<Ranked> ranked;
    ranked.reserve(static_cast<std::size_t>(most));
    QSet<QUuid> seen;
    seen.reserve(most);
    for (const Positions *selection : selections) {
        for (const qsizetype position : *selection) {
            const WordRecord &word = records.at(position);
            const qsizetype before = seen.size();
            seen.insert(word.id);
            if (seen.size() != before)
                ranked.push_back({calculatePriority(word, referenceDate), position});
        }
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const Ranked &a, const Ranked &b) { return a.priority > b.priority; });
    Positions result;
    result.reserve(static_cast<qsizetype>(ranked.size()));
    for (const Ranked &each : ranked)
        result += each.position;
    return result;
}

void prefetch(const void *address, std::size_t size = 1) {
    constexpr std::size_t line = 64;
    for (std::size_t offset = 0; offset < size; offset += line)
        __builtin_prefetch(static_cast<const char *>(address) + offset);
}

/// Calls `use(record)` for every record. The records of a plan are scattered in memory, and a wordbook is far
/// larger than the caches. So the next records are prefetched while one is being used.
template <typename Use> void forEachRecord(const RecordSelection &selection, Use use) {
    constexpr qsizetype recordsAhead = 24;
    constexpr qsizetype textsAhead = 12;
    for (qsizetype i = 0; i < selection.size(); ++i) {
        if (i + recordsAhead < selection.size())
            prefetch(&selection.at(i + recordsAhead), sizeof(WordRecord));
        if (i + textsAhead < selection.size()) {
            const WordRecord &next = selection.at(i + textsAhead);
            prefetch(next.word.constData());
            prefetch(next.conciseSummary.constData(), 2 * summaryCharacters);
            if (next.phonetic)
                prefetch(next.phonetic->constData());
        }
        use(selection.at(i));
    }
}

QString statusLabel(MemoryStatus status) {
    switch (status) {
    case MemoryStatus::New:
        return QStringLiteral("🔵 新词");
    case MemoryStatus::Learning:
        return QStringLiteral("🔴 待攻克");
    case MemoryStatus::Reviewing:
        return QStringLiteral("🟣 巩固中");
    case MemoryStatus::Mastered:
        return QStringLiteral("🟢 已掌握");
    }
    Q_UNREACHABLE();
}

} // namespace

QString WeeklyReviewPlan::markdownFileName() const {
    return QStringLiteral("%1年第%2周单词复习清单.md").arg(year).arg(weekNumber);
}

WeeklyReviewPlan WeeklyReviewScheduler::generateWeeklyPlan(const QList<WordRecord> &records,
                                                           Instant referenceDate, const Calendar &calendar) {
    const Calendar::Week week = weekOf(referenceDate, calendar);
    WeeklyReviewPlan plan{
        .weekNumber = week.number, .year = week.year, .startOfWeek = week.start, .endOfWeek = week.end};
    Positions due;
    Positions fresh;
    Positions difficult;
    for (qsizetype i = 0; i < records.size(); ++i) {
        const WordRecord &word = records.at(i);
        if (!word.isMastered && word.nextReviewDate <= plan.endOfWeek)
            due += i;
        if (word.lastSearchedDate >= plan.startOfWeek && word.repetitionCount == 0 &&
            word.memoryStatus == MemoryStatus::New)
            fresh += i;
        if (isDifficult(word))
            difficult += i;
    }
    plan.prioritizedList = {records, prioritized(records, {&difficult, &due, &fresh}, referenceDate)};
    plan.dueWords = {records, std::move(due)};
    plan.newSearches = {records, std::move(fresh)};
    plan.difficultWords = {records, std::move(difficult)};
    return plan;
}

QString WeeklyReviewScheduler::exportMarkdown(const WeeklyReviewPlan &plan, const Calendar &calendar) {
    QString text = QStringLiteral("# 📅 %1 年第 %2 周单词复习清单\n\n").arg(plan.year).arg(plan.weekNumber);
    text += QStringLiteral("> **周期**：%1 至 %2  \n")
                .arg(calendar.isoDate(plan.startOfWeek), calendar.isoDate(plan.endOfWeek));
    text += QStringLiteral("> **待复习总数**：%1 词 | **重点攻坚**：%2 词 | **新词录入**：%3 词\n\n")
                .arg(plan.totalCount())
                .arg(plan.difficultWords.size())
                .arg(plan.newSearches.size());
    text += QStringLiteral("## 待复习单词列表\n\n"
                           "| 状态 | 单词 | 音标 | 词性与核心中文释义 | 间隔 | 查询频次 |\n"
                           "| :--- | :--- | :--- | :--- | :--- | :--- |\n");
    forEachRecord(plan.prioritizedList, [&text](const WordRecord &word) {
        const QString definition = word.conciseSummary.isEmpty()
                                       ? leadingCharacters(word.rawDefinition, definitionCharacters)
                                       : leadingCharacters(word.conciseSummary, summaryCharacters);
        // The pieces are appended one by one, because they may contain text that arg() treats as a
        // placeholder.
        text += u"| " % statusLabel(word.memoryStatus) % u" | **" % word.word % u"** | `" %
                word.phonetic.value_or(QStringLiteral("-")) % u"` | " % definition % u" | " %
                QString::number(word.intervalDays) % u"天 | " % QString::number(word.searchCount) % u"次 |\n";
    });
    text += QStringLiteral("\n---\n"
                           "*由 Lexiquill 极简词典自动生成 · 遵循艾宾浩斯与 SM-2 遗忘曲线算法 · "
                           "vibe coding by Tolvan*\n");
    return text;
}

} // namespace lexiquill
