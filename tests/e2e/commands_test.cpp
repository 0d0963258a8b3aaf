#include "program.h"
#include "stardict_writer.h"

#include <QRegularExpression>
#include <QTest>
#include <QTimeZone>

using namespace lexiquill;

namespace {

const QString longRule = QString(70, u'-') + u'\n';

const QString usage = QStringLiteral(
    "📖 Lexiquill 极简词典命令行工具\n"
    "\n"
    "用法：\n"
    "  Lexiquill search <word>      查询单词并记录到生词本 (优先有道在线，离线自动回退，简写: s)\n"
    "  Lexiquill plan               查看本周到期复习清单 (简写: w)\n"
    "  Lexiquill list               列出所有搜索过的单词 (简写: ls)\n"
    "  Lexiquill review <word>      在终端快速对某单词打卡 (简写: r)\n"
    "  Lexiquill export             导出本周复习清单为 Markdown 文件\n"
    "  Lexiquill                    直接启动 macOS 原生图形界面\n");

/// The current week in UTC: its year and number in words, and its first day.
std::pair<QString, QDate> currentWeek() {
    const QDate today = QDateTime::currentDateTimeUtc().date();
    int year = 0;
    const int number = today.weekNumber(&year);
    return {QStringLiteral("%1 年第 %2 周").arg(year).arg(number), today.addDays(1 - today.dayOfWeek())};
}

QString exportedName() {
    return currentWeek().first.remove(u' ') + QStringLiteral("单词复习清单.md");
}

QString planHeading(int total, const QString &counts) {
    return QStringLiteral("\n📅 %1单词复习清单 (共 %2 词):\n%3\n")
               .arg(currentWeek().first)
               .arg(total)
               .arg(counts) +
           longRule;
}

Instant inHours(double hours) {
    return Instant::now().adding(hours * 3600);
}

/// A wordbook in which "'" stands for the quotation mark and, say, "<-2>" for the time two hours ago.
QByteArray wordbook(QString json) {
    static const QRegularExpression time(QStringLiteral("<(-?\\d+)>"));
    for (auto match = time.match(json); match.hasMatch(); match = time.match(json))
        json.replace(match.captured(), inHours(match.captured(1).toDouble()).toIso8601());
    return json.replace(u'\'', u'"').toUtf8();
}

const QString planWords =
    QStringLiteral(
        "[{'word': 'fresh', 'conciseSummary': 'n. 新', 'nextReviewDate': '<-1>'},"
        " {'word': 'known', 'repetitionCount': 5, 'nextReviewDate': '<-120>'},"
        " {'word': 'often', 'phonetic': 'ˈɒfn', 'conciseSummary': '%1|', 'searchCount': 9,"
        "  'repetitionCount': 2, 'intervalDays': 30, 'nextReviewDate': '<720>'},"
        " {'word': 'far', 'repetitionCount': 2, 'intervalDays': 30, 'nextReviewDate': '<720>'},"
        " {'word': 'forgotten', 'rawDefinition': '%2', 'memoryStatus': '学习中', 'intervalDays': 1,"
        "  'easeFactor': 1.5, 'nextReviewDate': '<-240>'}]")
        .arg(QString(70, u'常'), QString(50, u'忘'));

QString dayWords(Instant next, const QTimeZone &zone) {
    const auto milliseconds = static_cast<qint64>(next.unixSeconds()) * 1000;
    const QDate day = QDateTime::fromMSecsSinceEpoch(milliseconds, zone).date();
    const qint64 days = QDateTime::currentDateTimeUtc().toTimeZone(zone).date().daysTo(day);
    if (days < 0)
        return QStringLiteral("已逾期 %1 天").arg(-days);
    if (days > 1)
        return QStringLiteral("%1 天后").arg(days);
    return days == 0 ? QStringLiteral("今天待复习") : QStringLiteral("明天");
}

} // namespace

class CommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// What is expected depends on the day, so no test may run across a midnight of any zone.
    void init() {
        const QTime time = QTime::currentTime();
        if (time.minute() % 15 == 14 && time.second() > 45)
            QTest::qSleep((61 - time.second()) * 1000);
    }

    void dispatch_data() {
        QTest::addColumn<QByteArray>("arguments");
        QTest::addColumn<QString>("output");
        QTest::addColumn<int>("status");
        const auto add = [](const char *arguments, const QString &output, int status = 0) {
            QTest::newRow(arguments) << QByteArray(arguments) << output << status;
        };
        for (const char *arguments : {"help", "HELP", "--help", "foo", "-s", "searchx", "", " list",
                                      "x|-psn_1", "-PSN_0_1", "-nsdocumentrevisionsdebugmode"})
            add(arguments, usage);
        for (const char *arguments : {"search", "SEARCH|", "Lookup", "S"})
            add(arguments, QStringLiteral("❌ 错误：请提供要查询的单词，例如：Lexiquill search apple\n"), 1);
        const QString unknown = QStringLiteral("❌ 未在有道在线词典与系统离线词典中找到 “%1”\n");
        add("s|Zzqx  |Qqzx", unknown.arg(QStringLiteral("Zzqx   Qqzx")));
        add("LOOKUP| ", unknown.arg(QStringLiteral(" ")));
        add("search||", unknown.arg(QStringLiteral(" ")));
        const QString empty =
            QStringLiteral("\n📚 生词本与搜索记录 (共 0 词):\n") + longRule + longRule + u'\n';
        for (const char *arguments : {"list", "LS|-psn_1"})
            add(arguments, empty);
        const QString plan =
            planHeading(0, QStringLiteral("重点攻坚: 0 | 本周新词: 0 | 到期巩固: 0")) + longRule + u'\n';
        for (const char *arguments : {"plan", "Weekly", "w", "review", "R"})
            add(arguments, plan);
        const QString unrecorded = QStringLiteral("❌ 生词本中未找到 “%1”，请先使用 search 查询录入。\n");
        add("review|Ice|cream", unrecorded.arg(QStringLiteral("Ice")));
        add("r|", unrecorded.arg(QString()));
    }
    void dispatch() {
        QFETCH(const QByteArray, arguments);
        QFETCH(const QString, output);
        const Home home;
        home.setWordbook("[]");
        const Outcome outcome = home.run(arguments.constData());
        QCOMPARE(outcome.output, output);
        QTEST(outcome.status, "status");
        QCOMPARE(outcome.errors, QByteArray());
        QVERIFY(home.words()->isEmpty());
    }

    void desktopStartWithoutADesktop() {
        const Home home;
        const QRegularExpression oneLine(QStringLiteral("^❌ 没有可用的图形桌面[^\n]*\n$"));
        for (const char *arguments : {static_cast<const char *>(nullptr), "-psn_0_1", "-psn_|list",
                                      "-NSDocumentRevisionsDebugMode|YES"}) {
            const Outcome outcome = home.run(arguments);
            QVERIFY(oneLine.match(outcome.output).hasMatch());
            QCOMPARE(outcome.status, 1);
        }
        QVERIFY(!QFile::exists(home.wordbookPath()));
    }

    void search() {
        const Home home;
        home.setWordbook("[]");
        const QString dictionaries = home.path(QStringLiteral("XDG_DATA_HOME/stardict/dic"));
        QVERIFY(QDir().mkpath(dictionaries));
        QCOMPARE(tools::writeStarDict(
                     dictionaries, QStringLiteral("own"),
                     {tools::plainEntry("Zzqx", "[zɪks]\nn.\n1. (informal) 甲；乙\n▸ A zzqx. 一个甲。\n"
                                                "▸ Two zzqx. 两个甲。\n2. 丙\nvt.\n1. 丁\n"),
                      tools::plainEntry("qqzx", "戊")},
                     {.bookName = "Chinese own"}),
                 QString());
        const QString body =
            QStringLiteral("\n==========================================\n"
                           "📖 单词: Zzqx [数据源: 苹果本地离线词典]\n"
                           "🔊 音标: zɪks\n"
                           "------------------------------------------\n"
                           "【noun · 名词】\n"
                           "  1. (informal) 甲；乙\n"
                           "     ▸ A zzqx. 一个甲。\n"
                           "     ▸ Two zzqx. 两个甲。\n"
                           "  2. 丙\n"
                           "【transitive verb · 动词】\n"
                           "  1. 丁\n"
                           "------------------------------------------\n"
                           "🧠 遗忘曲线: 间隔 0 天 | 下次复习: 今天待复习 | 查词 %1 次\n"
                           "==========================================\n\n");
        QCOMPARE(home.run("S| zzqx ").output, body.arg(1));
        QCOMPARE(home.run("search|ZZQX").output, body.arg(3));
        QVERIFY(home.run("lookup|qqzx")
                    .output.contains(QStringLiteral("📖 单词: qqzx [数据源: 苹果本地离线词典]\n"
                                                    "------------------------------------------\n"
                                                    "【释义 · 释义】\n"
                                                    "  1. 戊\n"
                                                    "------------------------------------------\n")));
        QCOMPARE(home.words()->size(), 2);
        QVERIFY(writeFile(home.settingsPath(), "[General]\ndictionarySourceMode=appleOffline\n"));
        QCOMPARE(home.run("search|Xxqz").output, QStringLiteral("❌ 未在系统离线词典中找到 “Xxqz”\n"));
    }

    void firstRunAndList() {
        const Home home;
        const QString state = QStringLiteral(" | 新查询 | 间隔: 0天 | 今天待复习 | 查过1次\n");
        const QString heading = QStringLiteral("\n📚 生词本与搜索记录 (共 5 词):\n") + longRule;
        QCOMPARE(home.run("list").output, heading +
                                              QStringLiteral("[1] concise         %1"
                                                             "[2] ephemeral       %1"
                                                             "[3] serendipity     %1"
                                                             "[4] ubiquitous      %1"
                                                             "[5] eloquent        %1")
                                                  .arg(state) +
                                              longRule + u'\n');

        home.setWordbook(wordbook(QStringLiteral(
            "[{'word': 'internationalization', 'nextReviewDate': '<0>'},"
            " {'word': '苹果', 'searchCount': 3, 'intervalDays': 60, 'nextReviewDate': '<-99>'},"
            " {'word': 'e\u0301te\u0301', 'repetitionCount': 2, 'intervalDays': 6, "
            "  'nextReviewDate': '<144>'},"
            " {'word': 'exactly sixteen!', 'repetitionCount': 1, 'nextReviewDate': '<24>'},"
            " {'word': 'late', 'memoryStatus': '学习中', 'nextReviewDate': '<-240>'}]")));
        QCOMPARE(
            home.run("ls").output,
            heading +
                QStringLiteral("[1] internationaliza | 新查询 | 间隔: 0天 | 今天待复习 | 查过1次\n"
                               "[2] 苹果               | 已掌握 | 间隔: 60天 | 已完全掌握 | 查过3次\n"
                               "[3] e\u0301te\u0301              | 巩固中 | 间隔: 6天 | 6 天后 | 查过1次\n"
                               "[4] exactly sixteen! | 学习中 | 间隔: 1天 | 明天 | 查过1次\n"
                               "[5] late             | 学习中 | 间隔: 0天 | 已逾期 10 天 | 查过1次\n") +
                longRule + u'\n');
    }

    void planAndExport() {
        const Home home;
        home.setWordbook(wordbook(planWords));
        QCOMPARE(home.run("plan").output,
                 planHeading(3, QStringLiteral("重点攻坚: 2 | 本周新词: 1 | 到期巩固: 2")) +
                     QStringLiteral("(1) forgotten [] - \n"
                                    "(2) often [ˈɒfn] - %1|\n"
                                    "(3) fresh [] - n. 新\n")
                         .arg(QString(70, u'常')) +
                     longRule + u'\n');

        const QString file = home.path(exportedName());
        QVERIFY(writeFile(file, QByteArray(10000, 'x')));
        QCOMPARE(home.run("Export").output, QStringLiteral("✅ 已成功导出本周复习清单至: %1\n").arg(file));
        const auto [week, start] = currentWeek();
        const QString period =
            start.toString(Qt::ISODate) + QStringLiteral(" 至 ") + start.addDays(7).toString(Qt::ISODate);
        QCOMPARE(QString::fromUtf8(readFile(file)),
                 QStringLiteral("# 📅 %1单词复习清单\n\n"
                                "> **周期**：%2  \n"
                                "> **待复习总数**：3 词 | **重点攻坚**：2 词 | **新词录入**：1 词\n\n"
                                "## 待复习单词列表\n\n"
                                "| 状态 | 单词 | 音标 | 词性与核心中文释义 | 间隔 | 查询频次 |\n"
                                "| :--- | :--- | :--- | :--- | :--- | :--- |\n"
                                "| 🔴 待攻克 | **forgotten** | `-` | %3 | 1天 | 1次 |\n"
                                "| 🟣 巩固中 | **often** | `ˈɒfn` | %4 | 30天 | 9次 |\n"
                                "| 🔵 新词 | **fresh** | `-` | n. 新 | 0天 | 1次 |\n"
                                "\n---\n*由 Lexiquill 极简词典自动生成 · 遵循艾宾浩斯与 SM-2 遗忘曲线算法 · "
                                "vibe coding by Tolvan*\n")
                     .arg(week, period, QString(40, u'忘'), QString(60, u'常')));

        // Nobody can create files there.
        const Outcome unwritable = home.shell(QStringLiteral("cd /proc && exec \"$PROGRAM\" export"));
        QCOMPARE(unwritable.output,
                 QStringLiteral("✅ 已成功导出本周复习清单至: /proc/") + exportedName() + u'\n');
        QVERIFY(unwritable.status == 0 && unwritable.errors.isEmpty());
    }

    void reviewAnswers_data() {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<MemoryStatus>("status");
        const QByteArray blanks(10 << 20, ' ');
        for (const char *input : {"1\n", " 1\t\n", "1", "1\n2\n", "1\r\n"})
            QTest::newRow(QByteArray(input).toHex()) << QByteArray(input) << MemoryStatus::Reviewing;
        for (const QByteArray &input :
             {QByteArray("2\n"), QByteArray("\n"), QByteArray("y\n"), QByteArray("11\n1\n"),
              QByteArray("１\n"), QByteArray("\xff\xfe\0001\x1b[2J\xc3\n", 9), QByteArray("1\0\n", 3),
              '1' + blanks + "2\n", QByteArray(blanks).replace(' ', '1')})
            QTest::newRow(input.left(10).toHex()) << input << MemoryStatus::Learning;
        QTest::newRow("1 among very many blanks") << blanks + '1' + blanks + '\n' << MemoryStatus::Reviewing;
        QTest::newRow("end of input") << QByteArray() << MemoryStatus::New;
    }
    void reviewAnswers() {
        QFETCH(const QByteArray, input);
        QFETCH(const MemoryStatus, status);
        const Home home;
        home.setWordbook(
            wordbook(QStringLiteral("[{'word': 'pear'}, {'word': 'apple', 'conciseSummary': 'n. 苹果'}]")));
        const Outcome outcome = home.run("review|Apple", input);
        QString expected = QStringLiteral("\n单词: apple\n"
                                          "释义: n. 苹果\n"
                                          "请选择打卡状态：\n"
                                          "1. 记住了 (按艾宾浩斯曲线延长复习周期)\n"
                                          "2. 没记住 (重置周期，明日重新攻坚)\n"
                                          "请输入 1 或 2: ");
        if (status == MemoryStatus::Reviewing)
            expected += QStringLiteral("✅ 已记录为【记住了】，复习周期已自动延展！\n\n");
        else if (status == MemoryStatus::Learning)
            expected +=
                QStringLiteral("⚠️ 已记录为【没记住】，已排入明日重点复习！\n\n");
        QCOMPARE(outcome.output, expected);
        QCOMPARE(outcome.status, 0);
        const WordRecord apple = home.words()->at(1);
        QCOMPARE(apple.memoryStatus, status);
        QCOMPARE(apple.reviewHistory.size(), status == MemoryStatus::New ? 0 : 1);
        QVERIFY(home.words()->at(0).reviewHistory.isEmpty());
    }

    void environments_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("timeZone");
        QTest::addColumn<QByteArray>("meant");
        const auto add = [](const char *locale, const char *timeZone, const QByteArray &meant) {
            QTest::addRow("%s %s", locale, timeZone)
                << QString::fromLatin1(locale) << QString::fromLatin1(timeZone) << meant;
        };
        add("C", "UTC", "UTC");
        add("zh_CN.UTF-8", "Asia/Shanghai", "Asia/Shanghai");
        add("zh_CN.GB18030", ":Asia/Shanghai", "Asia/Shanghai");
        add("POSIX", "America/New_York", "America/New_York");
        add("en_US.ISO-8859-1", "CST-8", "Asia/Shanghai");
        add("nonsense", "Nonsense/Zone", "UTC");
        add("", "", "UTC");
    }
    void environments() {
        QFETCH(const QString, locale);
        QFETCH(const QString, timeZone);
        QFETCH(const QByteArray, meant);
        Home home;
        home.environment.insert(QStringLiteral("LC_ALL"), locale);
        home.environment.insert(QStringLiteral("TZ"), timeZone);
        QString words = QStringLiteral("[{'word': '苹果'}");
        QString expected =
            QStringLiteral("\n📚 生词本与搜索记录 (共 25 词):\n") + longRule +
            QStringLiteral("[1] 苹果               | 新查询 | 间隔: 0天 | 今天待复习 | 查过1次\n");
        for (int i = 2; i <= 25; ++i) {
            const int hours = (i - 13) * 4;
            words +=
                QStringLiteral(", {'word': '一二三四五六七八九十一二三四五六', 'nextReviewDate': '<%1>'}")
                    .arg(hours);
            expected +=
                QStringLiteral("[%1] 一二三四五六七八九十一二三四五六 | 新查询 | 间隔: 0天 | %2 | 查过1次\n")
                    .arg(i)
                    .arg(dayWords(inHours(hours), QTimeZone(meant)));
        }
        home.setWordbook(wordbook(words + u']'));
        const Outcome outcome = home.run("list");
        QCOMPARE(outcome.output, expected + longRule + u'\n');
        QCOMPARE(outcome.errors, QByteArray());
        // Names of files and words on the command line are UTF-8, too.
        QVERIFY(home.run("export").output.startsWith(QStringLiteral("✅ 已成功导出本周复习清单至: ") +
                                                     home.path()));
        QCOMPARE(QDir(home.path()).entryList({QStringLiteral("*周单词复习清单.md")}).size(), 1);
        QVERIFY(home.run("review|苹果", "1").output.contains(QStringLiteral("单词: 苹果\n")));
    }

    void brokenStreams_data() {
        QTest::addColumn<QString>("script");
        const auto add = [](const char *name, const char *script) {
            QTest::newRow(name) << QString::fromLatin1(script);
        };
        add("search, reader gone", "{ sleep 0.2; \"$PROGRAM\" search water || echo failed >&2; } | true");
        add("search, output closed", "exec \"$PROGRAM\" search water >&-");
        add("search, disk full", "exec \"$PROGRAM\" search water >/dev/full");
        add("search, all closed", "exec \"$PROGRAM\" search water <&- >&- 2>&-");
        add("review, reader gone",
            "echo 1 | { sleep 0.2; \"$PROGRAM\" review concise || echo failed >&2; } | true");
        add("review, output closed", "echo 1 | \"$PROGRAM\" review concise >&-");
        add("review, input closed", "exec \"$PROGRAM\" review concise <&-");
        add("review, directory as input", "exec \"$PROGRAM\" review concise </");
        add("bytes that are no UTF-8", "exec \"$PROGRAM\" search \"$(printf 'wat\\377er\\302')\"");
    }
    void brokenStreams() {
        QFETCH(const QString, script);
        const Home home;
        const bool isSearch = script.contains(QStringLiteral("search water"));
        const bool isAnswered = script.startsWith(QStringLiteral("echo"));
        // The searches are the first run, too.
        if (!isSearch)
            home.run("list");
        const Outcome outcome = home.shell(script);
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors, QByteArray());
        const auto words = home.words();
        QVERIFY(words);
        QCOMPARE(words->size(), isSearch ? 6 : 5);
        QCOMPARE(words->first().reviewHistory.size(), isAnswered ? 1 : 0);
        QCOMPARE(readFile(home.wordbookPath() + QStringLiteral(".lock")), QByteArray());
    }
};

QTEST_GUILESS_MAIN(CommandsTest)
#include "commands_test.moc"
