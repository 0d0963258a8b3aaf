#include "cli/cli_handler.h"

#include "cli/commands.h"
#include "cli/terminal.h"
#include "desktop_search/spotlight_manager.h"
#include "platform/process.h"
#include "storage/storage_manager.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace lexiquill::CLIHandler {

namespace {

/// How long the last attempt to save waits for other processes.
constexpr std::chrono::seconds lastPatience{10};

enum class Outcome { Done, MissingWord, RecordsChanged };

struct Command {
    QStringList words;
    Outcome (*run)(const CommandServices &services, const QStringList &operands);
};

Outcome search(const CommandServices &services, const QStringList &operands) {
    const QString term = operands.join(u' ');
    if (term.isEmpty())
        return Outcome::MissingWord;
    return commands::performLookup(services, term) ? Outcome::RecordsChanged : Outcome::Done;
}

Outcome list(const CommandServices &services, const QStringList &) {
    commands::listVocabulary(services);
    return Outcome::Done;
}

Outcome plan(const CommandServices &services, const QStringList &) {
    commands::showWeeklyPlan(services);
    return Outcome::Done;
}

Outcome review(const CommandServices &services, const QStringList &operands) {
    if (operands.isEmpty())
        return plan(services, operands);
    return commands::interactiveReview(services, operands.first()) ? Outcome::RecordsChanged : Outcome::Done;
}

Outcome exportPlan(const CommandServices &services, const QStringList &) {
    commands::exportPlan(services);
    return Outcome::Done;
}

const QList<Command> &commandTable() {
    const auto words = [](const char *text) {
        return QString::fromLatin1(text).split(u' ');
    };
    static const QList<Command> table{
        {words("search lookup s"), search}, {words("list ls"), list},      {words("plan weekly w"), plan},
        {words("review r"), review},        {words("export"), exportPlan},
    };
    return table;
}

void printUsage() {
    terminal::printLine(QStringLiteral(
        "📖 Lexiquill 极简词典命令行工具\n"
        "\n"
        "用法：\n"
        "  Lexiquill search <word>      查询单词并记录到生词本 (优先有道在线，离线自动回退，简写: s)\n"
        "  Lexiquill plan               查看本周到期复习清单 (简写: w)\n"
        "  Lexiquill list               列出所有搜索过的单词 (简写: ls)\n"
        "  Lexiquill review <word>      在终端快速对某单词打卡 (简写: r)\n"
        "  Lexiquill export             导出本周复习清单为 Markdown 文件\n"
        "  Lexiquill                    直接启动 macOS 原生图形界面"));
}

Outcome dispatch(const CommandServices &services, const QStringList &args) {
    const QString commandWord = args.isEmpty() ? QStringLiteral("help") : args.first().toLower();
    for (const Command &command : commandTable()) {
        if (command.words.contains(commandWord))
            return command.run(services, args.mid(1));
    }
    printUsage();
    return Outcome::Done;
}

} // namespace

void run(const CommandServices &services, const QStringList &args) {
    const Outcome outcome = dispatch(services, args);
    if (outcome == Outcome::MissingWord) {
        terminal::printLine(QStringLiteral("❌ 错误：请提供要查询的单词，例如：Lexiquill search apple"));
        endProcess(EXIT_FAILURE);
    }
    if (outcome == Outcome::RecordsChanged) {
        std::fflush(stdout);
        // No later change of this process will save an unsaved one, too, so try once more.
        if (services.storage().hasUnsavedChanges())
            services.storage().saveData(lastPatience);
        services.spotlight().finish();
    }
    endProcess(EXIT_SUCCESS);
}

} // namespace lexiquill::CLIHandler
