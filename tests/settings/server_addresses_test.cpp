#include "settings/server_addresses.h"
#include "support/test.h"
#include "support/web_address.h"

using namespace lexiquill;

class ServerAddressesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void settings_data() {
        addRows("                              |\n"
                "https://example.org/          | https://example.org\n"
                " HTTPS://Example.Org:8443/a// | https://example.org:8443/a\n"
                "http://127.0.0.1:8000         | http://127.0.0.1:8000\n"
                "http://[::1]:8000/            | http://[::1]:8000\n"
                "http://localhost              | http://localhost\n"
                "http://example.org            |\n"
                "http://127.0.0.1.example.org  |\n"
                "http://128.0.0.1              |\n"
                "ftp://127.0.0.1               |\n"
                "example.org                   |\n"
                "https://                      |\n"
                "https://user@example.org      |\n"
                "https://example.org?q=1       |\n"
                "https://example.org#part      |\n"
                "https://exa mple.org          |\n"
                "https://example.org:99999     |\n");
    }

    void settings() {
        QFETCH(const QStringList, cells);
        const QTemporaryDir directory;
        UserDefaults defaults(directory.filePath(u"settings.conf"_s));
        const ServerAddresses compiledIn = ServerAddresses::from(defaults);
        QVERIFY(isReservedHost(QUrl(compiledIn.server)));
        QCOMPARE(compiledIn.youdao, u"https://dict.youdao.com"_s);
        defaults.set(u"lexiquill_youdao_base"_s, cells[0]);
        defaults.set(u"lexiquill_server_base"_s, cells[0]);
        const ServerAddresses addresses = ServerAddresses::from(defaults);
        QCOMPARE(addresses.youdao, cells[1].isEmpty() ? compiledIn.youdao : cells[1]);
        QCOMPARE(addresses.server, cells[1].isEmpty() ? compiledIn.server : cells[1]);
    }
};

QTEST_GUILESS_MAIN(ServerAddressesTest)
#include "server_addresses_test.moc"
