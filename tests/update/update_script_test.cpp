#include "e2e/program.h"
#include "support/table.h"
#include "update/remote_update_info.h"
#include "update/update_script.h"
#include "update/version_order.h"

#include <unistd.h>

using namespace lexiquill;

namespace {

/// Of the process 4711 for "/Applications/Lexiquill.app".
constexpr const char *macOSScript =
    "#!/bin/bash\n"
    "exec > /tmp/lexiquill_updater.log 2>&1\n"
    "echo \"=== Lexiquill Auto-Updater started at $(date) ===\"\n"
    "echo \"Target App: /Applications/Lexiquill.app\"\n"
    "echo \"Process PID: 4711\"\n"
    "\n"
    "# 1. 监控旧进程，最多等待 3 秒；若未自行退出则强制 kill，杜绝卡死挂起\n"
    "for i in {1..15}; do\n"
    "    if ! kill -0 4711 2>/dev/null; then\n"
    "        echo \"Old process 4711 exited cleanly.\"\n"
    "        break\n"
    "    fi\n"
    "    sleep 0.2\n"
    "done\n"
    "kill -9 4711 2>/dev/null || true\n"
    "sleep 0.2\n"
    "\n"
    "# 2. 解压新版本到临时目录\n"
    "echo \"Extracting new version from /tmp/Lexiquill_update.zip...\"\n"
    "rm -rf \"/tmp/Lexiquill_update_extracted\"\n"
    "mkdir -p \"/tmp/Lexiquill_update_extracted\"\n"
    "/usr/bin/ditto -x -k \"/tmp/Lexiquill_update.zip\" \"/tmp/Lexiquill_update_extracted\"\n"
    "\n"
    "# 3. 寻找解压包内的 Lexiquill.app\n"
    "NEW_APP=$(find \"/tmp/Lexiquill_update_extracted\" -maxdepth 2 -name \"Lexiquill.app\" | head -n 1)\n"
    "echo \"Extracted App: $NEW_APP\"\n"
    "\n"
    "if [ -n \"$NEW_APP\" ] && [ -d \"$NEW_APP\" ]; then\n"
    "    echo \"Replacing old application at: /Applications/Lexiquill.app\"\n"
    "    rm -rf \"/Applications/Lexiquill.app\"\n"
    "    cp -R \"$NEW_APP\" \"/Applications/Lexiquill.app\"\n"
    "    \n"
    "    # 清除 macOS 隔离标记并赋予完全执行权限\n"
    "    /usr/bin/xattr -cr \"/Applications/Lexiquill.app\" 2>/dev/null || true\n"
    "    chmod -R +x \"/Applications/Lexiquill.app\"\n"
    "    \n"
    "    # 清理更新临时文件\n"
    "    rm -rf \"/tmp/Lexiquill_update.zip\" \"/tmp/Lexiquill_update_extracted\"\n"
    "    \n"
    "    echo \"Launching newly installed Lexiquill.app...\"\n"
    "    /usr/bin/open \"/Applications/Lexiquill.app\"\n"
    "    echo \"Auto-update and relaunch successful!\"\n"
    "else\n"
    "    echo \"Error: Could not locate Lexiquill.app in update package.\"\n"
    "fi";

const QString application = QStringLiteral("/Applications/Lexiquill.app");

} // namespace

class UpdateScriptTest : public QObject {
    Q_OBJECT

    static int runScript(const UpdatePaths &paths, const QString &bundle, qint64 pid) {
        writeFile(paths.script, updateScript(ScriptPlatform::Linux, paths, bundle, pid));
        return QProcess::execute(QStringLiteral("/bin/bash"), {paths.script});
    }

private Q_SLOTS:
    void macOSTextIsExact() {
        const UpdatePaths paths = UpdatePaths::in(QStringLiteral("/tmp"));
        QCOMPARE(updateScript(ScriptPlatform::MacOS, paths, application, 4711), QByteArray(macOSScript));
    }

    /// On Linux only the lines with commands of the platform differ.
    void linuxTextHasTheSameShape() {
        const UpdatePaths paths = UpdatePaths::in(QStringLiteral("/tmp"));
        const QByteArrayList macOS = QByteArray(macOSScript).split('\n');
        QByteArrayList lines = updateScript(ScriptPlatform::Linux, paths, application, 4711).split('\n');
        QByteArrayList missing;
        for (const QByteArray &line : macOS) {
            if (!lines.removeOne(line))
                missing += line;
        }
        const QByteArrayList replaced =
            macOS.mid(19, 3) + macOS.mid(24, 1) + macOS.mid(32, 2) + macOS.mid(40, 1);
        QCOMPARE(missing, replaced);
        for (const QByteArray &line : lines)
            QVERIFY(!line.contains("ditto") && !line.contains("xattr") && !line.contains("/open"));
    }

    void words_data() {
        QTest::addColumn<QString>("word");
        for (const char *word : {"/tmp/plain-1.0_a+b.sh",
                                 "a b",
                                 "\"",
                                 "'",
                                 "$HOME",
                                 "${HOME}",
                                 "`id`",
                                 "$(id)",
                                 "\\",
                                 "\\\\",
                                 "\\\"",
                                 "a\nb",
                                 "a\r\tb",
                                 "!",
                                 "*",
                                 "~",
                                 "#",
                                 "好",
                                 "",
                                 "{APP}",
                                 "\\1"})
            QTest::newRow(word) << QString::fromUtf8(word);
    }

    void words() {
        QFETCH(const QString, word);
        QProcess bash;
        bash.start(QStringLiteral("/bin/bash"),
                   {QStringLiteral("-c"), QStringLiteral("printf %s ") + shellWord(word)});
        QVERIFY(bash.waitForFinished());
        QCOMPARE(QString::fromUtf8(bash.readAllStandardOutput()), word);
    }

    /// Files that belong to somebody else when the script gets to them are neither unpacked nor installed.
    void foreignFiles_data() { addRows("Lexiquill_update_extracted\nLexiquill_update.zip\nlink\n"); }

    void foreignFiles() {
        QFETCH(const QStringList, cells);
        if (::geteuid() != 0)
            QSKIP("only root can make files of others");
        const QTemporaryDir root;
        const UpdatePaths paths = UpdatePaths::in(root.path());
        const QString bundle = root.filePath(QStringLiteral("installed/Lexiquill.app"));
        writeFile(bundle + QStringLiteral("/old"), {});
        writeFile(paths.unpackDirectory + QStringLiteral("/Lexiquill.app/AppRun"), "#!/bin/sh\n");
        writeFile(paths.archive, "no archive");
        constexpr uid_t other = 65534;
        if (cells[0] == QLatin1StringView("link")) {
            const QString elsewhere = root.filePath(QStringLiteral("elsewhere"));
            QVERIFY(QFile::rename(paths.unpackDirectory, elsewhere));
            QVERIFY(QFile::link(elsewhere, paths.unpackDirectory));
        } else {
            QCOMPARE(::chown(QFile::encodeName(root.filePath(cells[0])).constData(), other, other), 0);
        }
        QProcess ended;
        ended.start(QStringLiteral("/bin/true"), QStringList());
        const qint64 pid = ended.processId();
        QVERIFY(ended.waitForFinished());
        QCOMPARE(runScript(paths, bundle, pid), 1);
        QVERIFY(readFile(paths.log).endsWith("Error: The update files belong to somebody else.\n"));
        QVERIFY(QFile::exists(bundle + QStringLiteral("/old")));
        QVERIFY(QFile::exists(paths.unpackDirectory + QStringLiteral("/Lexiquill.app/AppRun")));
    }

    void versions_data() {
        addRows("1.10.0 | > | 1.9.0\n"
                "1.10.0 | > | 1.9.2\n"
                "2.0    | > | 1.99\n"
                "1.2    | = | 1.2\n"
                "1.2.0  | > | 1.2\n"
                "1.02   | = | 1.2\n"
                "1.0    | = | 1.00\n"
                "1.0.1  | > | 1.0.0\n"
                "0      | < | 1\n"
                "1      | > |\n"
                "       | = |\n"
                "1a     | < | 1b\n"
                "1.0    | > | 1-0\n"
                "a10    | > | a9\n"
                "v2     | > | 10\n"
                "1.0b2  | < | 1.0b10\n"
                "1.0b   | > | 1.0\n"
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
        QCOMPARE(std::is_lt(compareVersions(cells[2], cells[0])), cells[1] == QLatin1StringView(">"));
    }

    void records_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<bool>("isRecord");
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
        QTest::newRow("number for it") << replaced("\"12\"", "12") << false;
        QTest::newRow("unknown member") << replaced("{", "{\"other\":[{}],") << true;
        for (const char *key : {"name", "version", "build", "releaseDate", "releaseNotes", "downloadUrl"})
            QTest::newRow(key) << replaced(key, "other") << false;
        QTest::newRow("number") << replaced("\"3\"", "3") << false;
        QTest::newRow("null") << replaced("\"3\"", "null") << false;
        QTest::newRow("array") << '[' + all + ']' << false;
        QTest::newRow("cut off") << all.chopped(1) << false;
        QTest::newRow("more behind") << all + '}' << false;
        QTest::newRow("invalid UTF-8") << replaced("D", "\xff") << false;
        QTest::newRow("deep") << QByteArray(all).replace("{", "{\"other\":" + QByteArray(100'000, '[') + ',')
                              << false;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("page") << QByteArray("<html>") << false;
    }

    void records() {
        QFETCH(const QByteArray, json);
        QFETCH(const bool, isRecord);
        const auto info = decodeRemoteUpdateInfo(json);
        QCOMPARE(info.has_value(), isRecord);
        if (!info)
            return;
        QCOMPARE(info->version, QStringLiteral("2"));
        QCOMPARE(info->releaseNotes, QStringLiteral("好\n\""));
        QCOMPARE(info->minOSVersion.has_value(), json.contains("\"12\""));
        QCOMPARE(decodeRemoteUpdateInfo(encodeRemoteUpdateInfo(*info)), info);
    }
};

QTEST_GUILESS_MAIN(UpdateScriptTest)
#include "update_script_test.moc"
