#include "cli/commands.h"

#include "cli/terminal.h"
#include "cli/terminal_lookup.h"
#include "dictionaries/system_dictionary_service.h"
#include "lookup/dictionary_service.h"
#include "platform/durable_file.h"
#include "review/weekly_review_scheduler.h"
#include "storage/storage_manager.h"
#include "support/text.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace lexiquill::commands {

namespace {

using terminal::printLine;

constexpr qsizetype shortRuleLength = 42;
constexpr qsizetype longRuleLength = 70;
constexpr qsizetype wordColumnWidth = 16;

QString rule(char16_t character, qsizetype length) {
    return QString(length, QChar(character));
}

/// Exactly `width` characters: cut, or padded with blanks on the right.
QString fitted(const QString &text, qsizetype width) {
    const QString head = leadingCharacters(text, width);
    return head + QString(width - characterCount(head), u' ');
}

void printEntry(const DictionaryEntry &entry, DictionarySourceMode source) {
    const QString sourceLabel = source == DictionarySourceMode::YoudaoOnline
                                    ? QStringLiteral("有道在线词典")
                                    : QStringLiteral("苹果本地离线词典");
    printLine(QString());
    printLine(rule(u'=', shortRuleLength));
    printLine({u"📖 单词: ", entry.headword, u" [数据源: ", sourceLabel, u"]"});
    if (entry.phonetic)
        printLine({u"🔊 音标: ", *entry.phonetic});
    printLine(rule(u'-', shortRuleLength));
    for (const PartOfSpeechGroup &group : entry.posGroups) {
        printLine({u"【", group.pos, u" · ", group.posChinese, u"】"});
        int number = 0;
        for (const SenseItem &sense : group.senses) {
            const QString context = sense.context ? QStringLiteral("(%1) ").arg(*sense.context) : QString();
            printLine({u"  ", QString::number(++number), u". ", context, sense.chineseMeaning});
            for (const QString &example : sense.examples)
                printLine({u"     ▸ ", example});
        }
    }
    // An article without senses is shown as it is.
    if (entry.posGroups.isEmpty()) {
        for (const QStringView line : QStringView(entry.rawText).tokenize(u'\n', Qt::SkipEmptyParts))
            printLine({u"  ", line});
    }
    printLine(rule(u'-', shortRuleLength));
}

WeeklyReviewPlan currentPlan(const CommandServices &services, const Calendar &calendar) {
    return WeeklyReviewScheduler::generateWeeklyPlan(services.storage().words(), services.clock(), calendar);
}

void printUnknown(const QString &word) {
    printLine({u"❌ 生词本中未找到 “", word, u"”，请先使用 search 查询录入。"});
}

} // namespace

bool performLookup(const CommandServices &services, const QString &term) {
    services.offlineDictionaries().ensureDictionariesConfigured();
    const LookupResult result = terminal::lookUp(services, term);
    if (!result.entry) {
        const bool isOnline = services.dictionary().currentMode() == DictionarySourceMode::YoudaoOnline;
        const QString source =
            isOnline ? QStringLiteral("有道在线词典与系统离线词典") : QStringLiteral("系统离线词典");
        printLine({u"❌ 未在", source, u"中找到 “", term, u"”"});
        return false;
    }
    const WordRecord record = services.storage().addOrUpdateSearch(*result.entry);
    printEntry(*result.entry, result.actualMode);
    const QString next = record.nextReviewRelativeDescription(services.clock(), services.calendar());
    printLine({u"🧠 遗忘曲线: 间隔 ", QString::number(record.intervalDays), u" 天 | 下次复习: ", next,
               u" | 查词 ", QString::number(record.searchCount), u" 次"});
    printLine(rule(u'=', shortRuleLength));
    printLine(QString());
    return true;
}

void listVocabulary(const CommandServices &services) {
    const QList<WordRecord> &words = services.storage().words();
    const Instant now = services.clock();
    const Calendar calendar = services.calendar();
    printLine({u"\n📚 生词本与搜索记录 (共 ", QString::number(words.size()), u" 词):"});
    printLine(rule(u'-', longRuleLength));
    qsizetype number = 0;
    for (const WordRecord &record : words) {
        printLine({u"[", QString::number(++number), u"] ", fitted(record.word, wordColumnWidth), u" | ",
                   rawValue(record.memoryStatus), u" | 间隔: ", QString::number(record.intervalDays),
                   u"天 | ", record.nextReviewRelativeDescription(now, calendar), u" | 查过",
                   QString::number(record.searchCount), u"次"});
    }
    printLine(rule(u'-', longRuleLength));
    printLine(QString());
}

void showWeeklyPlan(const CommandServices &services) {
    const WeeklyReviewPlan plan = currentPlan(services, services.calendar());
    printLine({u"\n📅 ", QString::number(plan.year), u" 年第 ", QString::number(plan.weekNumber),
               u" 周单词复习清单 (共 ", QString::number(plan.totalCount()), u" 词):"});
    printLine({u"重点攻坚: ", QString::number(plan.difficultWords.size()), u" | 本周新词: ",
               QString::number(plan.newSearches.size()), u" | 到期巩固: ",
               QString::number(plan.dueWords.size())});
    printLine(rule(u'-', longRuleLength));
    qsizetype number = 0;
    for (const WordRecord &record : plan.prioritizedList) {
        printLine({u"(", QString::number(++number), u") ", record.word, u" [",
                   record.phonetic.value_or(QString()), u"] - ", record.conciseSummary});
    }
    printLine(rule(u'-', longRuleLength));
    printLine(QString());
}

bool interactiveReview(const CommandServices &services, const QString &word) {
    const QList<WordRecord> &words = services.storage().words();
    const qsizetype index = indexOfWord(words, word.toLower());
    if (index < 0) {
        printUnknown(word);
        return false;
    }
    const WordRecord record = words.at(index);
    printLine({u"\n单词: ", record.word});
    printLine({u"释义: ", record.conciseSummary});
    printLine(QStringLiteral("请选择打卡状态："));
    printLine(QStringLiteral("1. 记住了 (按艾宾浩斯曲线延长复习周期)"));
    printLine(QStringLiteral("2. 没记住 (重置周期，明日重新攻坚)"));
    terminal::printPrompt(QStringLiteral("请输入 1 或 2: "));
    const auto answer = terminal::readAnswer();
    if (!answer)
        return false;
    // Only "1" counts as remembered. After any other input the word is asked again tomorrow.
    const bool isRemembered = *answer == QLatin1StringView("1");
    const auto feedback = isRemembered ? ReviewFeedback::Remembered : ReviewFeedback::Forgot;
    // Another process may have deleted the word while this one waited for the answer.
    if (!services.storage().recordReview(record.id, feedback)) {
        printUnknown(word);
        return false;
    }
    printLine(isRemembered
                  ? QStringLiteral("✅ 已记录为【记住了】，复习周期已自动延展！\n")
                  : QStringLiteral("⚠️ 已记录为【没记住】，已排入明日重点复习！\n"));
    return true;
}

void exportPlan(const CommandServices &services) {
    const Calendar calendar = services.calendar();
    const WeeklyReviewPlan plan = currentPlan(services, calendar);
    // Use the file name alone, because the path of the directory may not be valid text. A failure leaves an
    // existing file unchanged and is not reported.
    const QString name = plan.markdownFileName();
    replaceFile(resolvedFile(name), WeeklyReviewScheduler::exportMarkdown(plan, calendar).toUtf8(),
                {.access = DurableFile::Access::Ordinary});
    const QString path = QDir::current().filePath(name);
    printLine({u"✅ 已成功导出本周复习清单至: ", path});
}

} // namespace lexiquill::commands
