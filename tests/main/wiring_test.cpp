#include "desktop_search/spotlight_manager.h"
#include "e2e/program.h"
#include "http_server.h"
#include "main/network_services.h"
#include "support/test.h"
#include "sync/sync_manager.h"

using namespace lexiquill;

/// Tests that the process-wide instances are connected.
class WiringTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// A deletion is sent automatically, and nothing waits for the reply.
    void deletionsAreTold() {
        const HttpServer server(ServedAnswer{.manner = ServedAnswer::Manner::Silent});
        const Home home;
        for (const char *name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
            qputenv(name, home.environment.value(QString::fromLatin1(name)).toUtf8());
        home.setWordbook(R"([{"word": "apple"}])");
        UserDefaults settings(home.settingsPath());
        settings.set(u"lexiquill_server_base"_s, server.base());
        settings.set(SyncManager::userDefaultsKey, u"Ann"_s);
        QCOMPARE(shared<SyncManager>().apiBase(), server.base() + u"/api"_s);

        shared<StorageManager>().deleteWord(u" Apple "_s);
        QCOMPARE(home.words()->size(), 0);
        QTRY_COMPARE(server.requests().size(), 1);
        QCOMPARE(server.requests().first().target, "/api/sync/delete"_ba);
        QCOMPARE(server.requests().first().body, R"({"username":"Ann","word":"Apple"})"_ba);
        shared<SpotlightManager>().finish();
    }
};

QTEST_GUILESS_MAIN(WiringTest)
#include "wiring_test.moc"
