#include "program.h"
#include "stardict_writer.h"
#include "support/test.h"

#include <QRegularExpression>
#include <QTimeZone>

using namespace lexiquill;

namespace {

const QString longRule = QString(70, u'-') + u'\n';

const QString usage =
    u"📖 Lexiquill 极简词典命令行工具\n"
    "\n"
    "用法：\n"
    "  Lexiquill search <word>      查询单词并记录到生词本 (优先有道在线，离线自动回退，简写: s)\n"
    "  Lexiquill plan               查看本周到期复习清单 (简写: w)\n"
    "  Lexiquill list               列出所有搜索过的单词 (简写: ls)\n"
    "  Lexiquill review <word>      在终端快速对某单词打卡 (简写: r)\n"
    "  Lexiquill export             导出本周复习清单为 Markdown 文件\n"
    "  Lexiquill                    直接启动 macOS 原生图形界面\n"_s;

/// The current local week in words.
QString currentWeek() {
    int year = 0;
    const int number = QDate::currentDate().weekNumber(&year);
    return u"%1 年第 %2 周"_s.arg(year).arg(number);
}

QString exportedName() {
    return currentWeek().remove(u' ') + u"单词复习清单.md"_s;
}

QString planHeading(int total, const QString &counts) {
    return u"\n📅 %1单词复习清单 (共 %2 词):\n%3\n"_s.arg(currentWeek()).arg(total).arg(counts) + longRule;
}

Instant inHours(double hours) {
    return Instant::now().adding(hours * 3600);
}

/// A wordbook. In `json`, "'" stands for the quotation mark and, for example, "<-2>" for the time two hours
/// ago.
QByteArray wordbook(QString json) {
    static const QRegularExpression time(u"<(-?\\d+)>"_s);
    for (auto match = time.match(json); match.hasMatch(); match = time.match(json))
        json.replace(match.captured(), inHours(match.captured(1).toDouble()).toIso8601());
    return json.replace(u'\'', u'"').toUtf8();
}

const QString planWords =
    u"[{'word': 'fresh', 'conciseSummary': 'n. 新', 'nextReviewDate': '<-1>'},"
    " {'word': 'known', 'repetitionCount': 5, 'nextReviewDate': '<-120>'},"
    " {'word': 'often', 'phonetic': 'ˈɒfn', 'conciseSummary': '%1|', 'searchCount': 9,"
    "  'repetitionCount': 2, 'intervalDays': 30, 'nextReviewDate': '<720>'},"
    " {'word': 'far', 'repetitionCount': 2, 'intervalDays': 30, 'nextReviewDate': '<720>'},"
    " {'word': 'forgotten', 'rawDefinition': '%2', 'memoryStatus': '学习中', 'intervalDays': 1,"
    "  'easeFactor': 1.5, 'nextReviewDate': '<-240>'}]"_s.arg(QString(70, u'常'), QString(50, u'忘'));

} // namespace

class CommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The expected results depend on the day, so the tests run in a zone where it is about noon.
    void initTestCase() {
        const int hour = QDateTime::currentDateTimeUtc().time().hour();
        qputenv("TZ", QByteArray("Noon") + (hour < 12 ? "-" : "+") + QByteArray::number(std::abs(12 - hour)));
    }

    void dispatch_data() {
        columns<QByteArray, QString, int>("arguments", "output", "status");
        const auto add = [](const char *arguments, const QString &output, int status = 0) {
            QTest::newRow(arguments) << QByteArray(arguments) << output << status;
        };
        for (const char *arguments :
             {"help", "HELP", "--help", "foo", "-s", "searchx", "", " list", "x|-psn_1", "-PSN_0_1",
              "-nsdocumentrevisionsdebugmode", "--desktop-services", "--Desktop-Service", "--desktop-action",
              "--desktop-service=1", "-desktop-service", "lexiquill"})
            add(arguments, usage);
        for (const char *arguments : {"search", "SEARCH|", "Lookup", "S"})
            add(arguments, u"❌ 错误：请提供要查询的单词，例如：Lexiquill search apple\n"_s, 1);
        const QString unknown = u"❌ 未在有道在线词典与系统离线词典中找到 “%1”\n"_s;
        add("s|Zzqx  |Qqzx", unknown.arg(u"Zzqx   Qqzx"_s));
        add("LOOKUP| ", unknown.arg(u" "_s));
        add("search||", unknown.arg(u" "_s));
        const QString empty = u"\n📚 生词本与搜索记录 (共 0 词):\n"_s + longRule + longRule + u'\n';
        for (const char *arguments : {"list", "LS|-psn_1"})
            add(arguments, empty);
        const QString plan = planHeading(0, u"重点攻坚: 0 | 本周新词: 0 | 到期巩固: 0"_s) + longRule + u'\n';
        for (const char *arguments : {"plan", "Weekly", "w", "review", "R"})
            add(arguments, plan);
        const QString unrecorded = u"❌ 生词本中未找到 “%1”，请先使用 search 查询录入。\n"_s;
        add("review|Ice|cream", unrecorded.arg(u"Ice"_s));
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
        const QRegularExpression oneLine(u"^❌ 没有可用的图形桌面[^\n]*\n$"_s);
        for (const char *arguments : {static_cast<const char *>(nullptr), "-psn_0_1", "-psn_|list",
                                      "-NSDocumentRevisionsDebugMode|YES"}) {
            const Outcome outcome = home.run(arguments);
            QVERIFY(oneLine.match(outcome.output).hasMatch());
            QCOMPARE(outcome.status, 1);
        }
        QVERIFY(!QFile::exists(home.wordbookPath()));
        Home unreachable;
        unreachable.environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":none"));
        const Outcome outcome = unreachable.run(nullptr);
        QVERIFY(oneLine.match(outcome.output).hasMatch());
        QCOMPARE(outcome.status, 1);
    }

    void search() {
        const Home home;
        home.setWordbook("[]");
        const QString dictionaries = home.path(u"XDG_DATA_HOME/stardict/dic"_s);
        QVERIFY(QDir().mkpath(dictionaries));
        QCOMPARE(tools::writeStarDict(
                     dictionaries, u"own"_s,
                     {tools::plainEntry("Zzqx", "[zɪks]\nn.\n1. (informal) 甲；乙\n▸ A zzqx. 一个甲。\n"
                                                "▸ Two zzqx. 两个甲。\n2. 丙\nvt.\n1. 丁\n"),
                      tools::plainEntry("qqzx", "戊")},
                     {.bookName = "Chinese own"}),
                 QString());
        const QString body =
            u"\n==========================================\n"
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
            "==========================================\n\n"_s;
        QCOMPARE(home.run("S| zzqx ").output, body.arg(1));
        QCOMPARE(home.run("search|ZZQX").output, body.arg(3));
        QVERIFY(home.run("lookup|qqzx")
                    .output.contains(u"📖 单词: qqzx [数据源: 苹果本地离线词典]\n"
                                     "------------------------------------------\n"
                                     "【释义 · 释义】\n"
                                     "  1. 戊\n"
                                     "------------------------------------------\n"_s));
        QCOMPARE(home.words()->size(), 2);
        QVERIFY(writeFile(home.settingsPath(), "[General]\ndictionarySourceMode=appleOffline\n"));
        QCOMPARE(home.run("search|Xxqz").output, u"❌ 未在系统离线词典中找到 “Xxqz”\n"_s);
    }

    void firstRunAndList() {
        const Home home;
        const QString state = u" | 新查询 | 间隔: 0天 | 今天待复习 | 查过1次\n"_s;
        const QString heading = u"\n📚 生词本与搜索记录 (共 5 词):\n"_s + longRule;
        QCOMPARE(home.run("list").output, heading +
                                              u"[1] concise         %1"
                                              "[2] ephemeral       %1"
                                              "[3] serendipity     %1"
                                              "[4] ubiquitous      %1"
                                              "[5] eloquent        %1"_s.arg(state) +
                                              longRule + u'\n');

        home.setWordbook(
            wordbook(u"[{'word': 'internationalization', 'nextReviewDate': '<0>'},"
                     " {'word': '苹果', 'searchCount': 3, 'intervalDays': 60, 'nextReviewDate': '<-99>'},"
                     " {'word': 'e\u0301te\u0301', 'repetitionCount': 2, 'intervalDays': 6, "
                     "  'nextReviewDate': '<144>'},"
                     " {'word': 'exactly sixteen!', 'repetitionCount': 1, 'nextReviewDate': '<24>'},"
                     " {'word': 'late', 'memoryStatus': '学习中', 'nextReviewDate': '<-240>'}]"_s));
        QCOMPARE(home.run("ls").output,
                 heading +
                     u"[1] internationaliza | 新查询 | 间隔: 0天 | 今天待复习 | 查过1次\n"
                     "[2] 苹果               | 已掌握 | 间隔: 60天 | 已完全掌握 | 查过3次\n"
                     "[3] e\u0301te\u0301              | 巩固中 | 间隔: 6天 | 6 天后 | 查过1次\n"
                     "[4] exactly sixteen! | 学习中 | 间隔: 1天 | 明天 | 查过1次\n"
                     "[5] late             | 学习中 | 间隔: 0天 | 已逾期 10 天 | 查过1次\n"_s +
                     longRule + u'\n');
    }

    void planAndExport() {
        const Home home;
        home.setWordbook(wordbook(planWords));
        QCOMPARE(home.run("plan").output, planHeading(3, u"重点攻坚: 2 | 本周新词: 1 | 到期巩固: 2"_s) +
                                              u"(1) forgotten [] - \n"
                                              "(2) often [ˈɒfn] - %1|\n"
                                              "(3) fresh [] - n. 新\n"_s.arg(QString(70, u'常')) +
                                              longRule + u'\n');

        const QString file = home.path(exportedName());
        QVERIFY(writeFile(file, QByteArray(10000, 'x')));
        QCOMPARE(home.run("Export").output, u"✅ 已成功导出本周复习清单至: %1\n"_s.arg(file));
        const QString markdown = QString::fromUtf8(readFile(file));
        QVERIFY(markdown.startsWith(u"# 📅 "_s + currentWeek() + u"单词复习清单\n\n> **周期**："_s));
        QVERIFY(markdown.contains(u"| 🔴 待攻克 | **forgotten** | `-` | "_s + QString(40, u'忘') +
                                  u" | 1天 | 1次 |\n"_s));
        QVERIFY(markdown.endsWith(u"vibe coding by Tolvan*\n"));

        // A directory whose name is not UTF-8, and a read-only file.
        const Outcome elsewhere = home.shell(
            u"mkdir \"$(printf 'd\\377')\" && cd d* && echo old >%1 && chmod 400 %1 && \"$PROGRAM\" export"
            " >&2 && cat %1; cd .. && rm -r d*"_s.arg(exportedName()));
        QCOMPARE(elsewhere.output, markdown);

        // No files can be created there.
        const Outcome unwritable = home.shell(u"cd /proc && exec \"$PROGRAM\" export"_s);
        QCOMPARE(unwritable.output, u"✅ 已成功导出本周复习清单至: /proc/"_s + exportedName() + u'\n');
        QVERIFY(unwritable.status == 0 && unwritable.errors.isEmpty());
    }

    void reviewAnswers_data() {
        columns<QByteArray, MemoryStatus>("input", "status");
        const QByteArray blanks(10 << 20, ' ');
        for (const char *input : {"1\n", " 1\t\n", "1", "1\n2\n", "1\r\n"})
            QTest::newRow(QByteArray(input).toHex()) << QByteArray(input) << MemoryStatus::Reviewing;
        for (const QByteArray &input : {"2\n"_ba, "\n"_ba, "y\n"_ba, "11\n1\n"_ba, "１\n"_ba,
                                        QByteArray("\xff\xfe\0001\x1b[2J\xc3\n", 9), QByteArray("1\0\n", 3),
                                        '1' + blanks + "2\n", QByteArray(blanks).replace(' ', '1')})
            QTest::newRow(input.left(10).toHex()) << input << MemoryStatus::Learning;
        QTest::newRow("1 among very many blanks") << blanks + '1' + blanks + '\n' << MemoryStatus::Reviewing;
        QTest::newRow("end of input") << QByteArray() << MemoryStatus::New;
    }
    void reviewAnswers() {
        QFETCH(const QByteArray, input);
        QFETCH(const MemoryStatus, status);
        const Home home;
        home.setWordbook(wordbook(u"[{'word': 'pear'}, {'word': 'apple', 'conciseSummary': 'n. 苹果'}]"_s));
        const Outcome outcome = home.run("review|Apple", input);
        QString expected = u"\n单词: apple\n"
                           "释义: n. 苹果\n"
                           "请选择打卡状态：\n"
                           "1. 记住了 (按艾宾浩斯曲线延长复习周期)\n"
                           "2. 没记住 (重置周期，明日重新攻坚)\n"
                           "请输入 1 或 2: "_s;
        if (status == MemoryStatus::Reviewing)
            expected += u"✅ 已记录为【记住了】，复习周期已自动延展！\n\n"_s;
        else if (status == MemoryStatus::Learning)
            expected += u"⚠️ 已记录为【没记住】，已排入明日重点复习！\n\n"_s;
        QCOMPARE(outcome.output, expected);
        QCOMPARE(outcome.status, 0);
        const WordRecord apple = home.words()->at(1);
        QCOMPARE(apple.memoryStatus, status);
        QCOMPARE(apple.reviewHistory.size(), status == MemoryStatus::New ? 0 : 1);
        QVERIFY(home.words()->at(0).reviewHistory.isEmpty());
    }

    void reviewOfAWordThatIsDeletedMeanwhile() {
        const Home home;
        home.setWordbook(wordbook(u"[{'word': 'apple'}]"_s));
        const auto review = home.start({u"review"_s, u"apple"_s});
        QByteArray asked;
        while (!asked.contains("1 或 2: ") && review->waitForReadyRead())
            asked += review->readAllStandardOutput();
        home.setWordbook("[]");
        const Outcome outcome = Home::finish(*review, "1\n");
        QCOMPARE(outcome.output, u"❌ 生词本中未找到 “apple”，请先使用 search 查询录入。\n"_s);
        QVERIFY(home.words()->isEmpty());
    }

    /// A locale, a time zone, and the expected zone.
    void environments_data() {
        addRows("zh_CN.GB18030    | :Asia/Shanghai   | Asia/Shanghai\n"
                "POSIX            | America/New_York | America/New_York\n"
                "en_US.ISO-8859-1 | CST-8            | Asia/Shanghai\n"
                "C                | UTC-8            | Asia/Shanghai\n"
                "C                | <+0530>-5:30     | Asia/Kolkata\n"
                "C                | EST5EDT,M3.2.0,M11.1.0 | America/New_York\n"
                "C                | :%1              | Asia/Shanghai\n"
                "nonsense         | Nonsense/Zone    | UTC\n"
                "                 |                  | UTC\n");
    }
    void environments() {
        QFETCH(const QStringList, cells);
        Home home;
        home.environment.insert(u"LC_ALL"_s, cells[0]);
        // A copy of a zone's file, as /etc/localtime may be one.
        const QString copy = home.path(u"localtime"_s);
        QVERIFY(QFile::copy(u"/usr/share/zoneinfo/Asia/Shanghai"_s, copy));
        home.environment.insert(u"TZ"_s, QString(cells[1]).replace(u"%1"_s, copy));
        const QTimeZone zone(cells[2].toLatin1());
        const auto dateThere = [&zone] {
            return QDateTime::currentDateTimeUtc().toTimeZone(zone).date();
        };
        QDate today;
        const auto record = [&zone](const char *word, const QDate &day) {
            return QByteArray("{'word': '") + word + "', 'nextReviewDate': '" +
                   day.startOfDay(zone).toUTC().toString(Qt::ISODate).toLatin1() + "'}";
        };
        Outcome outcome;
        // Repeat this if midnight passes in between.
        do {
            today = dateThere();
            const QByteArray words = '[' + record("苹果", today) + ',' + record("梨", today.addDays(1)) + ']';
            home.setWordbook(wordbook(QString::fromUtf8(words)));
            outcome = home.run("list");
        } while (today != dateThere());
        QVERIFY(
            outcome.output.contains(u"[1] 苹果               | 新查询 | 间隔: 0天 | 今天待复习 | 查过1次\n"
                                    "[2] 梨                | 新查询 | 间隔: 0天 | 明天 | 查过1次\n"_s));
        QCOMPARE(outcome.errors, QByteArray());
        // Names of files and words on the command line are UTF-8, too.
        QVERIFY(home.run("export").output.startsWith(u"✅ 已成功导出本周复习清单至: "_s + home.path()));
        QCOMPARE(QDir(home.path()).entryList({u"*周单词复习清单.md"_s}).size(), 1);
        QVERIFY(home.run("review|苹果", "1").output.contains(u"单词: 苹果\n"_s));
    }

    void brokenStreams_data() {
        QTest::addColumn<QString>("script");
        for (const char *script :
             {"{ sleep 0.2; \"$PROGRAM\" search water || echo failed >&2; } | true",
              "exec \"$PROGRAM\" search water >/dev/full", "exec \"$PROGRAM\" search water <&- >&- 2>&-",
              "echo 1 | \"$PROGRAM\" review concise >&-", "exec \"$PROGRAM\" review concise <&-",
              "exec \"$PROGRAM\" review concise </",
              "exec \"$PROGRAM\" search \"$(printf 'wat\\377er\\302')\""})
            QTest::newRow(script) << QString::fromLatin1(script);
    }
    void brokenStreams() {
        QFETCH(const QString, script);
        const Home home;
        const bool isSearch = script.contains(u"search water"_s);
        const bool isAnswered = script.startsWith(u"echo"_s);
        // A search is the first run itself.
        if (!isSearch)
            home.run("list");
        const Outcome outcome = home.shell(script);
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors, QByteArray());
        const auto words = home.words();
        QVERIFY(words);
        QCOMPARE(words->size(), isSearch ? 6 : 5);
        QCOMPARE(words->first().reviewHistory.size(), isAnswered ? 1 : 0);
        // No output has been written into a file.
        const QString note = QString::fromUtf8(readFile(home.wordbookPath() + u".lock"_s));
        QVERIFY2(QRegularExpression(u"\\A[0-9 ]*\\z"_s).match(note).hasMatch(), qPrintable(note));
    }
};

QTEST_GUILESS_MAIN(CommandsTest)
#include "commands_test.moc"
