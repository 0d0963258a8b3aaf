#include "e2e/program.h"
#include "support/test.h"
#include "update/remote_update_info.h"
#include "update/update_script.h"
#include "update/version_order.h"

#include <unistd.h>

using namespace lexiquill;

class UpdateScriptTest : public QObject {
    Q_OBJECT

    static int runScript(const UpdatePaths &paths, const QString &bundle, qint64 pid) {
        writeFile(paths.script, updateScript(ScriptPlatform::Linux, paths, bundle, pid));
        return QProcess::execute(u"/bin/bash"_s, {paths.script});
    }

private Q_SLOTS:
    void macOSHasCommandsOfItsOwn() {
        const QByteArray script = updateScript(ScriptPlatform::MacOS, UpdatePaths::in(u"/tmp"_s),
                                               u"/Applications/Lexiquill.app"_s, 4711);
        QVERIFY(script.startsWith("#!/bin/bash\nexec > /tmp/lexiquill_updater.log 2>&1\n"));
        for (const char *command :
             {"/usr/bin/ditto -x -k \"/tmp/Lexiquill_update.zip\" \"/tmp/Lexiquill_update_extracted\"\n",
              "/usr/bin/xattr -cr \"/Applications/Lexiquill.app\" 2>/dev/null || true\n",
              "/usr/bin/open \"/Applications/Lexiquill.app\""})
            QVERIFY2(script.contains(command), command);
    }

    void wordsReachTheShell() {
        for (const char *each : {"/tmp/plain-1.0_a+b.sh", "a b", "\"", "'", "${HOME}", "`id`", "$(id)",
                                 "\\\\\"", "a\n\r\tb", "!", "*", "~", "#", "好", "", "{APP}", "\\1"}) {
            const QString word = QString::fromUtf8(each);
            QProcess bash;
            bash.start(u"/bin/bash"_s, {u"-c"_s, u"printf %s "_s + shellWord(word)});
            QVERIFY(bash.waitForFinished());
            QCOMPARE(QString::fromUtf8(bash.readAllStandardOutput()), word);
        }
    }

    /// Files that belong to another user are neither unpacked nor installed.
    void foreignFiles_data() { addRows("Lexiquill_update_extracted\nLexiquill_update.zip\nlink\n"); }

    void foreignFiles() {
        QFETCH(const QStringList, cells);
        if (::geteuid() != 0)
            QSKIP("only root can make files of others");
        const QTemporaryDir root;
        const UpdatePaths paths = UpdatePaths::in(root.path());
        const QString bundle = root.filePath(u"installed/Lexiquill.app"_s);
        writeFile(bundle + u"/old"_s, {});
        writeFile(paths.unpackDirectory + u"/Lexiquill.app/AppRun"_s, "#!/bin/sh\n");
        writeFile(paths.archive, "no archive");
        constexpr uid_t other = 65534;
        if (cells[0] == "link"_L1) {
            const QString elsewhere = root.filePath(u"elsewhere"_s);
            QVERIFY(QFile::rename(paths.unpackDirectory, elsewhere));
            QVERIFY(QFile::link(elsewhere, paths.unpackDirectory));
        } else {
            QCOMPARE(::chown(QFile::encodeName(root.filePath(cells[0])).constData(), other, other), 0);
        }
        QProcess ended;
        ended.start(u"/bin/true"_s, QStringList());
        const qint64 pid = ended.processId();
        QVERIFY(ended.waitForFinished());
        QCOMPARE(runScript(paths, bundle, pid), 1);
        QVERIFY(readFile(paths.log).endsWith("Error: The update files belong to somebody else.\n"));
        QVERIFY(QFile::exists(bundle + u"/old"_s));
        QVERIFY(QFile::exists(paths.unpackDirectory + u"/Lexiquill.app/AppRun"_s));
    }

    void versions_data() {
        addRows("1.10.0 | > | 1.9.0\n"
                "1.2    | = | 1.2\n"
                "1.2.0  | > | 1.2\n"
                "1.02   | = | 1.2\n"
                "       | = |\n"
                "1.0    | > | 1-0\n"
                "1.0b2  | < | 1.0b10\n"
                "18446744073709551617 | > | 1\n"
                "99999999999999999999999999999999 | < | 100000000000000000000000000000000\n"
                "1.00000000000000000000000000000002 | > | 1.1\n"
                "1.٢    | > | 1.9\n");
    }

    void versions() {
        QFETCH(const QStringList, cells);
        const auto sign = [](std::strong_ordering order) {
            return std::is_lt(order) ? u'<' : std::is_gt(order) ? u'>' : u'=';
        };
        QCOMPARE(QString(sign(compareVersions(cells[0], cells[2]))), cells[1]);
        QCOMPARE(std::is_lt(compareVersions(cells[2], cells[0])), cells[1] == ">"_L1);
    }

    void records_data() {
        columns<QByteArray, bool>("json", "isRecord");
        const QByteArray all =
            "{\"name\":\"N\",\"version\":\"2\",\"build\":\"3\",\"releaseDate\":\"D\","
            "\"releaseNotes\":\"好\\n\\\"\",\"downloadUrl\":\"U\",\"minOSVersion\":\"12\"}";
        const auto replaced = [&](const char *before, const char *after) {
            return QByteArray(all).replace(before, after);
        };
        QTest::newRow("whole") << all << true;
        QTest::newRow("byte order mark") << "\xef\xbb\xbf" + all << true;
        QTest::newRow("without the optional member") << replaced(",\"minOSVersion\":\"12\"", "") << true;
        QTest::newRow("null for it") << replaced("\"12\"", "null") << true;
        for (const char *key : {"name", "version", "build", "releaseDate", "releaseNotes", "downloadUrl"})
            QTest::newRow(key) << replaced(key, "other") << false;
        QTest::newRow("number") << replaced("\"3\"", "3") << false;
        QTest::newRow("more behind") << all + '}' << false;
        QTest::newRow("invalid UTF-8") << replaced("D", "\xff") << false;
        QTest::newRow("deep") << QByteArray(all).replace("{", "{\"other\":" + QByteArray(100'000, '[') + ',')
                              << false;
    }

    void records() {
        QFETCH(const QByteArray, json);
        QFETCH(const bool, isRecord);
        const auto info = decodeRemoteUpdateInfo(json);
        QCOMPARE(info.has_value(), isRecord);
        if (!info)
            return;
        QCOMPARE(info->version, u"2"_s);
        QCOMPARE(info->releaseNotes, u"好\n\""_s);
        QCOMPARE(info->minOSVersion.has_value(), json.contains("\"12\""));
        QCOMPARE(decodeRemoteUpdateInfo(encodeRemoteUpdateInfo(*info)), info);
    }
};

QTEST_GUILESS_MAIN(UpdateScriptTest)
#include "update_script_test.moc"
