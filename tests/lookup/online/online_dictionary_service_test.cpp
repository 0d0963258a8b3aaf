#include "http_server.h"
#include "lookup/online/online_dictionary_service.h"

#include <QTemporaryDir>
#include <QTest>

using namespace lexiquill;
using namespace std::chrono_literals;
using Manner = ServedAnswer::Manner;

namespace {

const QByteArray youdaoAnswer = R"({"ec":{"word":[{"trs":[{"tr":[{"l":{"i":["n. 有道"]}}]}]}]}})";
const QByteArray unknownAnswer = R"({"simple":{"query":"q"},"ec":{"word":[{"trs":[]}]}})";
const QByteArray serverAnswer = R"({"success":true,"entry":{"word":"server","rawDefinition":"server"}})";

/// Plays both servers, records whom it is asked for, and keeps answers in a directory of its own.
struct Surroundings {
    Surroundings(const ServedAnswer &youdao, const ServedAnswer &own)
        : server([youdao, own](const ServedRequest &request) {
              return request.target.startsWith("/jsonapi") ? youdao : own;
          }) {}

    /// What a service of a new process finds: the raw text of the entry.
    QString find(const QString &word, const CancellationToken &cancellation = {}) const {
        HttpClient client(AnswerStore(directory.filePath(QStringLiteral("http"))));
        OnlineDictionaryService service(client, {.youdao = server.base(), .server = server.base()},
                                        {.idle = 300ms, .total = 1s});
        const auto entry = QCoro::waitFor(service.lookup(word, cancellation));
        return entry ? entry->rawText : QStringLiteral("nothing");
    }
    QString targets() const {
        QByteArrayList list;
        for (const ServedRequest &request : server.requests())
            list += request.target;
        return QString::fromUtf8(list.join(' '));
    }

    QTemporaryDir directory;
    HttpServer server;
};

} // namespace

class OnlineDictionaryServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void requests() {
        const Surroundings here({.body = unknownAnswer}, {.body = serverAnswer});
        QCOMPARE(here.find(QStringLiteral(" \tice cream&好?\n")), QStringLiteral("server"));
        const QList<ServedRequest> requests = here.server.requests();
        QCOMPARE(requests.size(), 2);
        QCOMPARE(requests[0].method + ' ' + requests[0].target,
                 QByteArray("GET /jsonapi?q=ice%20cream&%E5%A5%BD?"));
        QCOMPARE(requests[0].header("User-Agent"),
                 QByteArray("Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 (KHTML, like "
                            "Gecko) Chrome/120.0.0.0 Safari/537.36"));
        QCOMPARE(requests[0].header("Accept"), QByteArray("application/json, text/plain, */*"));
        QCOMPARE(requests[1].method + ' ' + requests[1].target,
                 QByteArray("GET /api/dict?w=ice%20cream&%E5%A5%BD?"));
        QCOMPARE(requests[1].header("User-Agent"), QByteArray("Lexiquill-macOS"));
        for (const ServedRequest &request : requests) {
            const bool isYoudao = request.target.startsWith("/jsonapi");
            QCOMPARE(request.headers.size(), isYoudao ? 6 : 5); // Host, Connection and two Accept-... besides
            QVERIFY(!request.header("Host").isNull() && !request.header("Connection").isNull());
            QCOMPARE(request.header("Accept-Encoding"), QByteArray("gzip"));
            QCOMPARE(request.header("Accept-Language"), QByteArray("*"));
        }
    }

    void noRequest() {
        const Surroundings here({.body = youdaoAnswer}, {.body = serverAnswer});
        for (const QString &word : {QString(), QStringLiteral(" \n\u3000"), QString(QChar(0xdc00))})
            QCOMPARE(here.find(word), QStringLiteral("nothing"));
        Cancellation cancellation;
        cancellation.cancel();
        QCOMPARE(here.find(QStringLiteral("q"), cancellation.token()), QStringLiteral("nothing"));
        QCOMPARE(here.server.connections(), 0);
    }

    void whoAnswers_data() {
        QTest::addColumn<ServedAnswer>("youdao");
        QTest::addColumn<ServedAnswer>("own");
        QTest::addColumn<QString>("found");
        const ServedAnswer good{.body = youdaoAnswer};
        const ServedAnswer own{.body = serverAnswer};
        const auto row = [](const char *name, const ServedAnswer &first, const ServedAnswer &second,
                            const char *found) {
            QTest::newRow(name) << first << second << QString::fromUtf8(found);
        };
        row("youdao", good, own, "n. 有道");
        row("gzip", {.body = gzipped(youdaoAnswer), .headers = {{"Content-Encoding", "gzip"}}}, own,
            "n. 有道");
        row("chunked", {.body = youdaoAnswer, .manner = Manner::Chunked}, own, "n. 有道");
        row("as text", {.body = youdaoAnswer, .headers = {{"Content-Type", "text/html"}}}, own, "n. 有道");
        row("unknown word", {.body = unknownAnswer}, own, "server");
        row("created", {.status = 201, .body = youdaoAnswer}, own, "server");
        row("partial", {.status = 206, .body = youdaoAnswer}, own, "server");
        row("not found", {.status = 404, .body = youdaoAnswer}, own, "server");
        row("broken server", {.status = 500, .body = youdaoAnswer}, own, "server");
        row("elsewhere", {.status = 302, .headers = {{"Location", "http://example.org/"}}}, own, "server");
        row("page", {.body = "<html></html>"}, own, "server");
        row("reset", {.body = youdaoAnswer, .manner = Manner::ResetInMiddle}, own, "server");
        row("cut", {.body = youdaoAnswer, .manner = Manner::Cut}, own, "server");
        row("silent", {.manner = Manner::Silent}, own, "server");
        row("trickle", {.body = youdaoAnswer, .manner = Manner::TrickleBody, .pause = 200}, own, "server");
        row("endless", {.body = QByteArray(100'000, ' '), .manner = Manner::Endless}, own, "server");
        row("bomb", {.body = gzippedBlanks(100), .headers = {{"Content-Encoding", "gzip"}}}, own, "server");
        row("deep", {.body = QByteArray(4'000'000, '[')}, own, "server");
        row("neither", {.body = unknownAnswer}, {.body = R"({"success":false})"}, "nothing");
        row("server without success", {.status = 500}, {.status = 404, .body = serverAnswer}, "nothing");
        row("server with a page", {.status = 500}, {.body = "<html></html>"}, "nothing");
        row("both silent", {.manner = Manner::Silent}, {.manner = Manner::Silent}, "nothing");
    }

    void whoAnswers() {
        QFETCH(const ServedAnswer, youdao);
        QFETCH(const ServedAnswer, own);
        QFETCH(const QString, found);
        const Surroundings here(youdao, own);
        QCOMPARE(here.find(QStringLiteral("q")), found);
        const bool isFirst = found == QStringLiteral("n. 有道");
        QCOMPARE(here.targets(),
                 isFirst ? QStringLiteral("/jsonapi?q=q") : QStringLiteral("/jsonapi?q=q /api/dict?w=q"));
    }

    void nobodyThere() {
        HttpClient client;
        OnlineDictionaryService service(
            client, {.youdao = refusingBase(), .server = QStringLiteral("https://server.invalid")}, {});
        QVERIFY(!QCoro::waitFor(service.lookup(QStringLiteral("q"), {})));
        OnlineDictionaryService nowhere(client, {.youdao = {}, .server = {}}, {});
        QVERIFY(nowhere.lookup(QStringLiteral("q"), {}).isReady());
    }

    /// Which of three lookups of a word, each by a new process, ask whom.
    void kept_data() {
        QTest::addColumn<ServedAnswer>("youdao");
        QTest::addColumn<ServedAnswer>("own");
        QTest::addColumn<QString>("targets");
        const ServedAnswer own{.body = serverAnswer, .headers = {{"Cache-Control", "no-store"}}};
        const QString youdaoOnce = QStringLiteral("/jsonapi?q=q");
        const QString bothOnce = QStringLiteral("/jsonapi?q=q /api/dict?w=q");
        const QString youdaoAlways = QStringLiteral("/jsonapi?q=q /api/dict?w=q /jsonapi?q=q /jsonapi?q=q");
        const QString serverAlways = QStringLiteral("/jsonapi?q=q /api/dict?w=q /api/dict?w=q /api/dict?w=q");
        QTest::newRow("plain") << ServedAnswer{.body = youdaoAnswer} << own << youdaoOnce;
        QTest::newRow("forbidden") << ServedAnswer{.body = youdaoAnswer,
                                                   .headers = {{"Cache-Control",
                                                                "no-store, private, max-age=0"},
                                                               {"Pragma", "no-cache"},
                                                               {"Expires", "Thu, 01 Jan 1970 00:00:00 GMT"},
                                                               {"Vary", "*"},
                                                               {"Set-Cookie", "a=b"}}}
                                   << own << youdaoOnce;
        QTest::newRow("unknown to youdao") << ServedAnswer{.body = unknownAnswer} << own << bothOnce;
        QTest::newRow("sign-in page") << ServedAnswer{.body = "<html></html>"} << own << youdaoAlways;
        QTest::newRow("error as JSON") << ServedAnswer{.body = R"({"code":429})"} << own << youdaoAlways;
        QTest::newRow("failure") << ServedAnswer{.status = 503, .body = youdaoAnswer} << own << youdaoAlways;
        QTest::newRow("cut") << ServedAnswer{.body = youdaoAnswer, .manner = Manner::Cut} << own
                             << youdaoAlways;
        QTest::newRow("unknown to both") << ServedAnswer{.body = unknownAnswer}
                                         << ServedAnswer{.body = R"({"success":false})"} << serverAlways;
    }

    void kept() {
        QFETCH(const ServedAnswer, youdao);
        QFETCH(const ServedAnswer, own);
        const Surroundings here(youdao, own);
        const QString found = here.find(QStringLiteral("q"));
        QCOMPARE(here.find(QStringLiteral("q ")), found);
        QCOMPARE(here.find(QStringLiteral("q")), found);
        QTEST(here.targets(), "targets");
        here.find(QStringLiteral("Q"));
        QVERIFY(here.targets().contains(QStringLiteral("/jsonapi?q=Q")));
    }

    /// Given up while the first request is under way, a lookup makes no second one.
    void abandoned() {
        const Surroundings here({.manner = Manner::Silent}, {.body = serverAnswer});
        HttpClient client;
        OnlineDictionaryService service(client, {.youdao = here.server.base(), .server = here.server.base()},
                                        {});
        Cancellation cancellation;
        auto task = service.lookup(QStringLiteral("q"), cancellation.token());
        QTRY_COMPARE(here.targets(), QStringLiteral("/jsonapi?q=q"));
        cancellation.cancel();
        QVERIFY(task.isReady() && !QCoro::waitFor(task));
        QTRY_COMPARE(here.server.openConnections(), 0);
        QCOMPARE(here.server.connections(), 1);
    }

    void severalAtOnce() {
        const Surroundings here({.body = youdaoAnswer}, {.body = serverAnswer});
        HttpClient client;
        OnlineDictionaryService service(client, {.youdao = here.server.base(), .server = here.server.base()},
                                        {});
        std::vector<QCoro::Task<std::optional<DictionaryEntry>>> tasks;
        tasks.reserve(30);
        for (int i = 0; i < 30; ++i)
            tasks.push_back(service.lookup(QString::number(i), {}));
        for (int i = 0; i < 30; ++i) {
            const auto entry = QCoro::waitFor(tasks[static_cast<std::size_t>(i)]);
            QVERIFY(entry && entry->headword == QString::number(i));
        }
    }
};

QTEST_GUILESS_MAIN(OnlineDictionaryServiceTest)
#include "online_dictionary_service_test.moc"
