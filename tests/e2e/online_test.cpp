#include "http_server.h"
#include "program.h"
#include "support/test.h"

using namespace lexiquill;
using Manner = ServedAnswer::Manner;

namespace {

const QString onlineLabel = u" [数据源: 有道在线词典]\n"_s;
const QString offlineLabel = u" [数据源: 苹果本地离线词典]\n"_s;

/// An answer that differs clearly from that of the starter dictionary.
ServedAnswer youdaoAnswer() {
    return {.body = R"({"simple":{"word":[{"usphone":"ˈæpl"}]},"ec":{"word":[{"return-phrase":"Apple",
                        "trs":[{"tr":[{"l":{"i":["n. 在线苹果；\u001b[31m苹果树"]}}]}]}]}})"};
}

QString serverBase(const QString &base) {
    return u"lexiquill_server_base=%1\n"_s.arg(base);
}

} // namespace

class OnlineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void searchIsAnsweredOnlineOnce() {
        HttpServer server(youdaoAnswer());
        const Home home;
        home.setOnlineBase(server.base() + u'/');
        const Outcome outcome = home.run("search| apple ");
        QVERIFY(outcome.output.contains(u"单词: Apple"_s + onlineLabel + u"🔊 音标: ˈæpl\n"_s));
        QVERIFY(outcome.output.contains(u"【n. · 名词】\n  1. 在线苹果\n  2. \ufffd[31m苹果树\n"_s));
        QVERIFY(outcome.output.contains(u"查词 1 次\n"_s));
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(server.targets(), u"/jsonapi?q=apple"_s);
        server.stop();
        QVERIFY(home.run("s|apple").output.contains(u"查词 3 次\n"_s));
        QCOMPARE(home.words()->first().word, u"Apple"_s);
    }

    void fallback_data() {
        columns<ServedAnswer, QString>("answer", "label");
        QTest::newRow("unknown word") << ServedAnswer{.body = "{}"} << offlineLabel;
        QTest::newRow("reset") << ServedAnswer{.body = "{}", .manner = Manner::ResetInMiddle} << offlineLabel;
        // An answer that takes longer than five seconds is too late. The current mode is then shown as the
        // source.
        const QByteArray body = youdaoAnswer().body;
        QTest::newRow("a byte a second")
            << ServedAnswer{.body = body, .manner = Manner::Trickle} << onlineLabel;
        QTest::newRow("silent") << ServedAnswer{.manner = Manner::Silent} << onlineLabel;
    }

    void fallback() {
        QFETCH(const ServedAnswer, answer);
        QFETCH(const QString, label);
        const HttpServer server(answer);
        const Home home;
        home.setOnlineBase(server.base(), serverBase(server.base()));
        const auto unknown = home.start({u"search"_s, u"zzqx"_s});
        const Outcome outcome = home.run("search|apple");
        QVERIFY(outcome.output.contains(u"单词: apple"_s + label));
        QVERIFY(outcome.output.contains(u"苹果"_s) && !outcome.output.contains(u"在线苹果"_s));
        QCOMPARE(Home::finish(*unknown).output, u"❌ 未在有道在线词典与系统离线词典中找到 “zzqx”\n"_s);
        QTRY_COMPARE(server.openConnections(), 0);
    }

    /// The system reports at once that there is no network, so the program does not wait for the deadline.
    void noNetwork() {
        const Home home;
        if (home.shell(u"unshare -rn true"_s).status != 0)
            QSKIP("no network namespaces here");
        for (const char *const settings : {"", "lexiquill_youdao_base=https://192.0.2.1\n"}) {
            QVERIFY(writeFile(home.settingsPath(), "[General]\n"_ba + settings));
            const Outcome outcome = home.shell(u"unshare -rn \"$PROGRAM\" search apple"_s);
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
        QVERIFY(writeFile(home.path(u"certificates/own.pem"_s), server.certificate()));
        const QString trusting = u"openssl rehash certificates && unshare -rm sh -c '"
                                 "mount --bind certificates /etc/ssl/certs && "
                                 "exec \"$PROGRAM\" search \"$1\"' - "_s;
        if (home.shell(u"unshare -rm mount --bind . /etc/ssl/certs"_s).status != 0)
            QSKIP("no mount namespaces here");
        QVERIFY(home.run("search|apple").output.contains(offlineLabel));
        QVERIFY(server.requests().isEmpty());
        QVERIFY(home.shell(trusting + u"apple"_s).output.contains(onlineLabel));
        QVERIFY(home.shell(trusting + u"away"_s).output.contains(offlineLabel));
        QCOMPARE(server.targets(), u"/jsonapi?q=apple /jsonapi?q=away"_s);
        QCOMPARE(plain.connections(), 0);
    }

    void offlineModeLoadsNoNetworkLibrary() {
        const HttpServer server(youdaoAnswer());
        Home home;
        home.setOnlineBase(server.base(), u"dictionarySourceMode=appleOffline\n"_s);
        home.environment.insert(u"LD_DEBUG"_s, u"files"_s);
        for (const char *command : {"search|apple", "list"}) {
            const Outcome outcome = home.run(command);
            QVERIFY(outcome.errors.contains("libQt6Core") && !outcome.errors.contains("libQt6Network"));
        }
        QCOMPARE(server.connections(), 0);
    }
};

QTEST_GUILESS_MAIN(OnlineTest)
#include "online_test.moc"
