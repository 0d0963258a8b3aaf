#include "desktop_search/index/search_database.h"
#include "e2e/program.h"
#include "settings/user_defaults.h"
#include "support/session_bus.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <optional>

using namespace lexiquill;

namespace {

const QString providerName = u"com.lexiquill.Lexiquill.SearchProvider"_s;
const QString gnome = u"org.gnome.Shell.SearchProvider2"_s;
const QString krunner = u"org.kde.krunner1"_s;

/// The value of a key in one of the files that are installed for the desktops.
QString entry(const char *file, const char *key) {
    const QByteArray content =
        readFile(QStringLiteral(LEXIQUILL_DATA_DIRECTORY "/search/") + QString::fromLatin1(file));
    for (const QByteArray &line : content.split('\n')) {
        if (line.startsWith(QByteArray(key) + '='))
            return QString::fromUtf8(line.mid(line.indexOf('=') + 1));
    }
    return {};
}

/// A separate session bus that starts the search provider on demand, with its own home.
class Session {
public:
    explicit Session(int quietMilliseconds = 60'000) {
        const QString services = home.path(u"services"_s);
        writeFile(services + u"/provider.service"_s,
                  u"[D-BUS Service]\nName=%1\nExec=\"%2\" --quiet-milliseconds %3\n"_s
                      .arg(providerName, QStringLiteral(LEXIQUILL_SEARCH_PROVIDER))
                      .arg(quietMilliseconds)
                      .toUtf8());
        m_bus.emplace(home.environment, QStringList{services});
        m_connection.emplace(connect(u"desktop"_s));
    }
    ~Session() {
        m_connection.reset();
        QDBusConnection::disconnectFromBus(u"desktop"_s);
    }
    Q_DISABLE_COPY_MOVE(Session)

    QDBusConnection connect(const QString &name) const { return m_bus->connect(name); }

    /// Calls the provider as the desktops do, with the names from the installed files.
    QDBusMessage call(const QString &interface, const char *method, const QVariantList &arguments) const {
        const bool isGnome = interface == gnome;
        const char *const file = isGnome ? "com.lexiquill.Lexiquill.search-provider.ini"
                                         : "com.lexiquill.Lexiquill.runner.desktop";
        auto message =
            QDBusMessage::createMethodCall(entry(file, isGnome ? "BusName" : "X-Plasma-DBusRunner-Service"),
                                           entry(file, isGnome ? "ObjectPath" : "X-Plasma-DBusRunner-Path"),
                                           interface, QString::fromLatin1(method));
        message.setArguments(arguments);
        return m_connection->call(message);
    }
    /// The identifiers that GNOME receives, without their prefix.
    QString results(const QString &terms) const {
        const QDBusMessage reply = call(gnome, "GetInitialResultSet", {terms.split(u' ')});
        return reply.arguments().value(0).toStringList().join(u' ').remove(u"word:"_s);
    }
    bool isRunning() const { return m_connection->interface()->isServiceRegistered(providerName); }
    QString indexPath() const { return home.path(u"XDG_DATA_HOME/Lexiquill/search-index.sqlite"_s); }

    Home home;

private:
    std::optional<SessionBus> m_bus;
    std::optional<QDBusConnection> m_connection;
};

QByteArray record(const char *word, const char *summary) {
    return "{\"word\": \""_ba + word + "\", \"conciseSummary\": \"" + summary + "\"}";
}

QByteArray sampleWordbook() {
    return '[' + record("pineapple", "n. 菠萝") + ',' + record("Apple", "n. 苹果") + ',' +
           record("apply", "v. 申请") + ',' + record("gone", "苹果") + ']';
}

/// A fake application that receives the opened search results.
class Application final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    Application(QObject *parent, QList<QVariantList> &calls) : QDBusAbstractAdaptor(parent), m_calls(calls) {}

private:
    QList<QVariantList> &m_calls;

public Q_SLOTS:
    void ActivateAction(const QString &name, const QVariantList &parameter, const QVariantMap &platformData) {
        m_calls += QVariantList{name, parameter, platformData};
    }
};

} // namespace

class SearchProviderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// GNOME ignores a provider whose program is not shown in its menus.
    void programIsShown() {
        const QString id = entry("com.lexiquill.Lexiquill.search-provider.ini", "DesktopId");
        const QByteArray file =
            readFile(QStringLiteral(LEXIQUILL_DATA_DIRECTORY "/applications/") + id).prepend('\n');
        QVERIFY(file.contains("\nExec="));
        for (const char *const key : {"NoDisplay", "Hidden", "OnlyShowIn", "NotShowIn", "TryExec"})
            QVERIFY2(!file.contains("\n"_ba + key + '='), key);
    }

    /// The first call starts the provider. There is no index, so the words come from the wordbook.
    void gnomeSearch() {
        const Session session;
        session.home.setWordbook(sampleWordbook());
        UserDefaults(session.home.settingsPath()).set(u"lexiquill_deleted_words"_s, QStringList{u"gone"_s});
        QVERIFY(!session.isRunning());
        QCOMPARE(session.results(u"app"_s), u"apple apply"_s);
        QVERIFY(session.isRunning());
        QCOMPARE(session.results(u"apple"_s), u"apple"_s);
        QCOMPARE(session.results(u"苹果"_s), u"apple"_s);
        QCOMPARE(session.results(u"生词本"_s), u"pineapple apple apply"_s);
        QCOMPARE(session.results(u"单词 app 申"_s), u"apply"_s);
        QCOMPARE(session.results(QString()), QString());
        const QStringList previous{u"word:pineapple"_s};
        const QDBusMessage narrowed =
            session.call(gnome, "GetSubsearchResultSet", {previous, QStringList{u"pine"_s}});
        QCOMPARE(narrowed.arguments().value(0).toStringList(), previous);

        const QStringList wanted{u"word:x"_s, u"word:apple"_s, u"'--"_s};
        const QDBusMessage metas = session.call(gnome, "GetResultMetas", {wanted});
        QCOMPARE(metas.signature(), u"aa{sv}"_s);
        const QVariantMap expected{{u"id"_s, u"word:apple"_s},
                                   {u"name"_s, u"Apple"_s},
                                   {u"description"_s, u"n. 苹果"_s},
                                   {u"gicon"_s, u"com.lexiquill.Lexiquill"_s}};
        QCOMPARE(qdbus_cast<QList<QVariantMap>>(metas.arguments().value(0)), QList<QVariantMap>{expected});
    }

    void krunnerSearch() {
        const Session session;
        session.home.setWordbook(sampleWordbook());
        const QDBusMessage reply = session.call(krunner, "Match", {u"apple"_s});
        QCOMPARE(reply.signature(), u"a(sssida{sv})"_s);
        const auto argument = reply.arguments().value(0).value<QDBusArgument>();
        QString identifier, text, icon;
        int type = 0;
        double relevance = 0;
        QVariantMap properties;
        argument.beginArray();
        argument.beginStructure();
        argument >> identifier >> text >> icon >> type >> relevance >> properties;
        argument.endStructure();
        QVERIFY(argument.atEnd());
        QCOMPARE(identifier, u"word:apple"_s);
        QCOMPARE(text, u"Apple"_s);
        QVERIFY(type == 100 && relevance == 1.0 && !icon.isEmpty());
        QCOMPARE(properties.value(u"subtext"_s), u"n. 苹果"_s);
        QCOMPARE(session.call(krunner, "Actions", {}).signature(), u"a(sss)"_s);
        QCOMPARE(session.call(krunner, "Teardown", {}).type(), QDBusMessage::ReplyMessage);
    }

    /// Words that a terminal command has just published, or that a damaged index has lost, are found.
    void changesOfTheIndex() {
        const Session session;
        session.home.setWordbook(sampleWordbook());
        QCOMPARE(session.results(u"abandon"_s), QString());
        QCOMPARE(session.home.run("search|abandon").status, 0);
        QCOMPARE(session.results(u"抛弃"_s), u"abandon"_s);
        QVERIFY(writeFile(session.indexPath(), "junk"_ba.repeated(5000)));
        QFile::remove(session.indexPath() + u"-wal"_s);
        QCOMPARE(session.results(u"抛弃"_s), u"abandon"_s);
        // Without an index nothing is found, but the provider keeps running.
        QVERIFY(QFile::remove(session.indexPath()) && QDir().mkpath(session.indexPath()));
        QCOMPARE(session.results(u"app"_s), QString());
    }

    void openedResults() {
        const Session session;
        const QString apple = u"word:apple"_s;
        const QStringList terms{u"ice"_s, u"cream"_s};
        // Without the application, the call has no effect.
        QCOMPARE(session.call(gnome, "ActivateResult", {apple, terms, 7U}).type(),
                 QDBusMessage::ReplyMessage);

        QDBusConnection bus = session.connect(u"application"_s);
        QObject object;
        QList<QVariantList> calls;
        const Application application(&object, calls);
        QVERIFY(bus.registerObject(u"/com/lexiquill/Lexiquill"_s, &object));
        QVERIFY(bus.registerService(u"com.lexiquill.Lexiquill"_s));
        session.call(gnome, "ActivateResult", {apple, terms, 7U});
        session.call(gnome, "LaunchSearch", {terms, 8U});
        session.call(krunner, "Run", {apple, QString()});
        session.call(krunner, "SetActivationToken", {u"token"_s});
        session.call(krunner, "Run", {apple, QString()});
        session.call(gnome, "ActivateResult", {QString(100'000, u'x'), QStringList(), 9U});
        QTRY_COMPARE(calls.size(), 5);
        const auto expected = [](const QString &action, const QString &parameter, const QVariantMap &data) {
            return QVariantList{action, QVariantList{parameter}, data};
        };
        const QString open = u"open-search-result"_s;
        const QString time = u"desktop-startup-id"_s;
        QCOMPARE(calls.at(0), expected(open, apple, {{time, u"_TIME7"_s}}));
        QCOMPARE(calls.at(1), expected(u"search"_s, u"ice cream"_s, {{time, u"_TIME8"_s}}));
        QCOMPARE(calls.at(2), expected(open, apple, {}));
        QCOMPARE(calls.at(3), expected(open, apple, {{u"activation-token"_s, u"token"_s}}));
        QVERIFY(calls.at(4).at(1).toList().value(0).toString().size() < 2000);
        QDBusConnection::disconnectFromBus(u"application"_s);
    }

    void hostileCalls() {
        const Session session;
        session.home.setWordbook(sampleWordbook());
        QCOMPARE(session.results(u"pineapple"_s), u"pineapple"_s);
        const auto fails = [&session](const QString &interface, const char *method,
                                      const QVariantList &arguments) {
            return session.call(interface, method, arguments).type() == QDBusMessage::ErrorMessage;
        };
        QVERIFY(fails(gnome, "GetInitialResultSet", {u"text"_s}));
        QVERIFY(fails(gnome, "GetResultMetas", {1}));
        QVERIFY(fails(krunner, "Match", {QStringList()}));
        QCOMPARE(session.results(QString(1'000'000, u'"')), QString());
        QCOMPARE(session.results(u"x "_s.repeated(100'000)), QString());
        const QStringList identifiers(100'000, u"word:apple"_s);
        const QDBusMessage metas = session.call(gnome, "GetResultMetas", {identifiers});
        QVERIFY(qdbus_cast<QList<QVariantMap>>(metas.arguments().value(0)).size() < 100);
        QCOMPARE(session.results(u"pineapple"_s), u"pineapple"_s);
    }

    /// The provider ends by itself, leaves an empty log, and starts again at the next call.
    void quietEnd() {
        const Session session(200);
        session.home.setWordbook(sampleWordbook());
        for (int round = 0; round < 2; ++round) {
            QCOMPARE(session.results(u"apply"_s), u"apply"_s);
            QTRY_VERIFY(!session.isRunning());
        }
        QTRY_COMPARE(QFileInfo(session.indexPath() + u"-wal"_s).size(), 0);
    }
};

QTEST_GUILESS_MAIN(SearchProviderTest)
#include "search_provider_test.moc"
