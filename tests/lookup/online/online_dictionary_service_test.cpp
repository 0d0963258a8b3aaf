#include "http_server.h"
#include "lookup/online/online_dictionary_service.h"
#include "support/cancellation.h"
#include "support/test.h"

using namespace lexiquill;
using namespace std::chrono_literals;
using Manner = ServedAnswer::Manner;

namespace {

const QByteArray youdaoAnswer = R"({"ec":{"word":[{"trs":[{"tr":[{"l":{"i":["n. 有道"]}}]}]}]}})";
const QByteArray unknownAnswer = R"({"simple":{"query":"q"},"ec":{"word":[{"trs":[]}]}})";
const QByteArray serverAnswer = R"({"success":true,"entry":{"word":"server","rawDefinition":"server"}})";

/// Acts as both servers, records the requests, and stores answers in its own directory.
struct Surroundings {
    Surroundings(const ServedAnswer &youdao, const ServedAnswer &own)
        : server([youdao, own](const ServedRequest &request) {
              return request.target.startsWith("/jsonapi") ? youdao : own;
          }) {}

    /// The raw text of the entry that the service of a new process finds.
    QString find(const QString &word, const std::stop_token &stop = {}) const {
        HttpClient client(AnswerStore(directory.filePath(u"http"_s)));
        OnlineDictionaryService service(client, {.youdao = server.base(), .server = server.base()},
                                        {.idle = 1500ms, .total = 4s});
        const auto entry = QCoro::waitFor(service.lookup(word, stop));
        return entry ? entry->rawText : u"nothing"_s;
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
        QCOMPARE(here.find(u" \tice cream&好?\n"_s), u"server"_s);
        const QList<ServedRequest> requests = here.server.requests();
        QCOMPARE(requests.size(), 2);
        QCOMPARE(requests[0].method + ' ' + requests[0].target, "GET /jsonapi?q=ice%20cream&%E5%A5%BD?"_ba);
        QCOMPARE(requests[0].header("User-Agent"),
                 "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 (KHTML, like "
                 "Gecko) Chrome/120.0.0.0 Safari/537.36"_ba);
        QCOMPARE(requests[0].header("Accept"), "application/json, text/plain, */*"_ba);
        QCOMPARE(requests[1].method + ' ' + requests[1].target, "GET /api/dict?w=ice%20cream&%E5%A5%BD?"_ba);
        QCOMPARE(requests[1].header("User-Agent"), "Lexiquill-macOS"_ba);
    }

    void noRequest() {
        const Surroundings here({.body = youdaoAnswer}, {.body = serverAnswer});
        for (const QString &word : {QString(), u" \n\u3000"_s, QString(QChar(0xdc00))})
            QCOMPARE(here.find(word), u"nothing"_s);
        Cancellation cancellation;
        cancellation.cancel();
        QCOMPARE(here.find(u"q"_s, cancellation.token()), u"nothing"_s);
        QCOMPARE(here.server.connections(), 0);
    }

    void whoAnswers_data() {
        columns<ServedAnswer, ServedAnswer, QString>("youdao", "own", "found");
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
        row("unknown word", {.body = unknownAnswer}, own, "server");
        row("broken server", {.status = 500, .body = youdaoAnswer}, own, "server");
        row("page", {.body = "<html></html>"}, own, "server");
        row("reset", {.body = youdaoAnswer, .manner = Manner::ResetInMiddle}, own, "server");
        row("silent", {.manner = Manner::Silent}, own, "server");
        row("bomb", {.body = gzippedBlanks(100), .headers = {{"Content-Encoding", "gzip"}}}, own, "server");
        row("neither", {.body = unknownAnswer}, {.body = R"({"success":false})"}, "nothing");
        row("server without success", {.status = 500}, {.status = 404, .body = serverAnswer}, "nothing");
    }

    void whoAnswers() {
        QFETCH(const ServedAnswer, youdao);
        QFETCH(const ServedAnswer, own);
        QFETCH(const QString, found);
        const Surroundings here(youdao, own);
        QCOMPARE(here.find(u"q"_s), found);
        const bool isFirst = found == u"n. 有道"_s;
        QCOMPARE(here.server.targets(), isFirst ? u"/jsonapi?q=q"_s : u"/jsonapi?q=q /api/dict?w=q"_s);
    }

    /// Three lookups of a word, each by a new process, and the requests that they send.
    void kept_data() {
        columns<ServedAnswer, ServedAnswer, QString>("youdao", "own", "targets");
        const ServedAnswer own{.body = serverAnswer, .headers = {{"Cache-Control", "no-store"}}};
        const ServedAnswer forbidden{
            .body = youdaoAnswer,
            .headers = {{"Cache-Control", "no-store, max-age=0"}, {"Pragma", "no-cache"}, {"Vary", "*"}}};
        const QString youdaoAlways = u"/jsonapi?q=q /api/dict?w=q /jsonapi?q=q /jsonapi?q=q"_s;
        QTest::newRow("forbidden") << forbidden << own << u"/jsonapi?q=q"_s;
        QTest::newRow("unknown to youdao")
            << ServedAnswer{.body = unknownAnswer} << own << u"/jsonapi?q=q /api/dict?w=q"_s;
        QTest::newRow("error as JSON") << ServedAnswer{.body = R"({"code":429})"} << own << youdaoAlways;
        QTest::newRow("failure") << ServedAnswer{.status = 503, .body = youdaoAnswer} << own << youdaoAlways;
        QTest::newRow("unknown to both")
            << ServedAnswer{.body = unknownAnswer} << ServedAnswer{.body = R"({"success":false})"}
            << u"/jsonapi?q=q /api/dict?w=q /api/dict?w=q /api/dict?w=q"_s;
    }

    void kept() {
        QFETCH(const ServedAnswer, youdao);
        QFETCH(const ServedAnswer, own);
        const Surroundings here(youdao, own);
        const QString found = here.find(u"q"_s);
        QCOMPARE(here.find(u"q "_s), found);
        QCOMPARE(here.find(u"q"_s), found);
        QTEST(here.server.targets(), "targets");
        here.find(u"Q"_s);
        QVERIFY(here.server.targets().contains(u"/jsonapi?q=Q"_s));
    }

    /// A lookup that is cancelled during the first request sends no second one.
    void abandoned() {
        const Surroundings here({.manner = Manner::Silent}, {.body = serverAnswer});
        HttpClient client;
        OnlineDictionaryService service(client, {.youdao = here.server.base(), .server = here.server.base()},
                                        {});
        Cancellation cancellation;
        auto task = service.lookup(u"q"_s, cancellation.token());
        QTRY_COMPARE(here.server.targets(), u"/jsonapi?q=q"_s);
        cancellation.cancel();
        QVERIFY(task.isReady() && !QCoro::waitFor(task));
        QTRY_COMPARE(here.server.openConnections(), 0);
        QCOMPARE(here.server.connections(), 1);
    }
};

QTEST_GUILESS_MAIN(OnlineDictionaryServiceTest)
#include "online_dictionary_service_test.moc"
