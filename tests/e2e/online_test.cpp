#include "http_server.h"
#include "program.h"

#include <QTest>

using namespace lexiquill;
using Manner = ServedAnswer::Manner;

namespace {

const QString onlineLabel = QStringLiteral(" [数据源: 有道在线词典]\n");
const QString offlineLabel = QStringLiteral(" [数据源: 苹果本地离线词典]\n");

/// An answer that nobody could take for that of the starter dictionary.
ServedAnswer youdaoAnswer() {
    return {.body = R"({"simple":{"word":[{"usphone":"ˈæpl"}]},"ec":{"word":[{"return-phrase":"Apple",
                        "trs":[{"tr":[{"l":{"i":["n. 在线苹果；\u001b[31m苹果树"]}}]}]}]}})"};
}

QString targets(const HttpServer &server) {
    QByteArrayList list;
    for (const ServedRequest &request : server.requests())
        list += request.target;
    return QString::fromUtf8(list.join(' '));
}

QString serverBase(const QString &base) {
    return QStringLiteral("lexiquill_server_base=%1\n").arg(base);
}

} // namespace

class OnlineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void searchIsAnsweredOnlineOnce() {
        HttpServer server(youdaoAnswer());
        const Home home;
        home.setOnlineBase(server.base() + u'/');
        const QString output =
            QStringLiteral("\n"
                           "==========================================\n"
                           "📖 单词: Apple [数据源: 有道在线词典]\n"
                           "🔊 音标: ˈæpl\n"
                           "------------------------------------------\n"
                           "【n. · 名词】\n"
                           "  1. 在线苹果\n"
                           "  2. \ufffd[31m苹果树\n"
                           "------------------------------------------\n"
                           "🧠 遗忘曲线: 间隔 0 天 | 下次复习: 今天待复习 | 查词 %1 次\n"
                           "==========================================\n\n");
        const Outcome outcome = home.run("search| apple ");
        QCOMPARE(outcome.output, output.arg(1));
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(targets(server), QStringLiteral("/jsonapi?q=apple"));
        server.stop();
        QCOMPARE(home.run("s|apple").output, output.arg(3));
        QCOMPARE(home.words()->first().word, QStringLiteral("Apple"));
    }

    void ownServerIsAskedSecond() {
        const HttpServer server([](const ServedRequest &request) {
            if (request.target.startsWith("/jsonapi"))
                return ServedAnswer{.status = 503};
            return ServedAnswer{.body = R"({"success":true,"entry":{"word":"ice cream","posGroups":[
                                            {"pos":"n.","meanings":["冰淇淋"]}]}})"};
        });
        const Home home;
        home.setOnlineBase(server.base(), serverBase(server.base()));
        const Outcome outcome = home.run("search|ice|cream");
        QVERIFY(outcome.output.contains(QStringLiteral("单词: ice cream") + onlineLabel));
        QVERIFY(outcome.output.contains(QStringLiteral("  1. 冰淇淋\n")));
        QCOMPARE(targets(server), QStringLiteral("/jsonapi?q=ice%20cream /api/dict?w=ice%20cream"));
    }

    void fallback_data() {
        QTest::addColumn<ServedAnswer>("answer");
        QTest::addColumn<QString>("label");
        QTest::newRow("unknown word") << ServedAnswer{.body = "{}"} << offlineLabel;
        QTest::newRow("reset") << ServedAnswer{.body = "{}", .manner = Manner::ResetInMiddle} << offlineLabel;
        // What is still on its way after five seconds comes too late; the mode is then named as the source.
        const QByteArray body = youdaoAnswer().body;
        QTest::newRow("a byte a second")
            << ServedAnswer{.body = body, .manner = Manner::TrickleBody} << onlineLabel;
        QTest::newRow("silent") << ServedAnswer{.manner = Manner::Silent} << onlineLabel;
    }

    void fallback() {
        QFETCH(const ServedAnswer, answer);
        QFETCH(const QString, label);
        const HttpServer server(answer);
        const Home home;
        home.setOnlineBase(server.base(), serverBase(server.base()));
        const auto unknown = home.start({QStringLiteral("search"), QStringLiteral("zzqx")});
        const Outcome outcome = home.run("search|apple");
        QVERIFY(outcome.output.contains(QStringLiteral("单词: apple") + label));
        QVERIFY(outcome.output.contains(QStringLiteral("苹果")) &&
                !outcome.output.contains(QStringLiteral("在线苹果")));
        QCOMPARE(Home::finish(*unknown).output,
                 QStringLiteral("❌ 未在有道在线词典与系统离线词典中找到 “zzqx”\n"));
        QTRY_COMPARE(server.openConnections(), 0);
    }

    void nobodyThere() {
        const Home home;
        home.setOnlineBase(refusingBase());
        QVERIFY(home.run("search|apple").output.contains(offlineLabel));
    }

    /// The system says at once that there is no network, so nobody waits for the deadline.
    void noNetwork() {
        const Home home;
        if (home.shell(QStringLiteral("unshare -rn true")).status != 0)
            QSKIP("no network namespaces here");
        for (const char *const settings : {"", "lexiquill_youdao_base=https://192.0.2.1\n"}) {
            QVERIFY(writeFile(home.settingsPath(), QByteArray("[General]\n") + settings));
            const Outcome outcome = home.shell(QStringLiteral("unshare -rn \"$PROGRAM\" search apple"));
            QVERIFY(outcome.output.contains(offlineLabel));
            QCOMPARE(outcome.errors, QByteArray());
        }
    }

    /// On a system that trusts the server's certificate.
    void overHttps() {
        const HttpServer plain(youdaoAnswer());
        const QByteArray elsewhere = plain.base().toUtf8() + "/jsonapi?q=x";
        const HttpServer server(
            [elsewhere](const ServedRequest &request) {
                if (request.target.endsWith("away"))
                    return ServedAnswer{.status = 302, .headers = {{"Location", elsewhere}}};
                return youdaoAnswer();
            },
            HttpServer::Protocol::SelfSigned);
        const Home home;
        home.setOnlineBase(server.base());
        QVERIFY(writeFile(home.path(QStringLiteral("certificates/own.pem")), server.certificate()));
        const QString trusting = QStringLiteral("openssl rehash certificates && unshare -rm sh -c '"
                                                "mount --bind certificates /etc/ssl/certs && "
                                                "exec \"$PROGRAM\" search \"$1\"' - ");
        if (home.shell(QStringLiteral("unshare -rm mount --bind . /etc/ssl/certs")).status != 0)
            QSKIP("no mount namespaces here");
        QVERIFY(home.run("search|apple").output.contains(offlineLabel));
        QVERIFY(server.requests().isEmpty());
        QVERIFY(home.shell(trusting + QStringLiteral("apple")).output.contains(onlineLabel));
        QVERIFY(home.shell(trusting + QStringLiteral("away")).output.contains(offlineLabel));
        QCOMPARE(targets(server), QStringLiteral("/jsonapi?q=apple /jsonapi?q=away"));
        QCOMPARE(plain.connections(), 0);
    }

    void networkLibraryIsLoadedOnlyWhenAsked_data() {
        QTest::addColumn<QByteArray>("arguments");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("isLoaded");
        const QString online = QStringLiteral("youdaoOnline");
        const QString offline = QStringLiteral("appleOffline");
        QTest::newRow("online search") << QByteArray("search|apple") << online << true;
        QTest::newRow("blank search") << QByteArray("search| ") << online << false;
        QTest::newRow("offline search") << QByteArray("search|apple") << offline << false;
        for (const char *const arguments : {"help", "list", "plan", "review|concise", "export"})
            QTest::newRow(arguments) << QByteArray(arguments) << online << false;
    }

    void networkLibraryIsLoadedOnlyWhenAsked() {
        QFETCH(const QByteArray, arguments);
        QFETCH(const QString, mode);
        QFETCH(const bool, isLoaded);
        const HttpServer server(youdaoAnswer());
        Home home;
        home.setOnlineBase(server.base(), QStringLiteral("dictionarySourceMode=%1\n").arg(mode));
        home.environment.insert(QStringLiteral("LD_DEBUG"), QStringLiteral("files"));
        const Outcome outcome = home.run(arguments.constData());
        QVERIFY(outcome.errors.contains("libQt6Core"));
        QCOMPARE(outcome.errors.contains("libQt6Network"), isLoaded);
        QCOMPARE(server.connections(), isLoaded ? 1 : 0);
    }

    /// An installation of which only the terminal half is there.
    void withoutNetworkLibrary() {
        const HttpServer server(youdaoAnswer());
        const Home home;
        home.setOnlineBase(server.base());
        const Outcome outcome =
            home.shell(QStringLiteral("mkdir copy && cp -r \"${PROGRAM%/*}/..\"/bin copy && "
                                      "cp -r \"${PROGRAM%/*}/..\"/lib copy && "
                                      "cp -r \"${PROGRAM%/*}/..\"/share copy && "
                                      "rm copy/lib/liblexiquill_network.so && "
                                      "copy/bin/Lexiquill search apple"));
        QVERIFY(outcome.output.contains(offlineLabel));
        QCOMPARE(server.connections(), 0);
    }
};

QTEST_GUILESS_MAIN(OnlineTest)
#include "online_test.moc"
