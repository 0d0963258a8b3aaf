#include "e2e/program.h"
#include "platform/linux/search_database.h"
#include "support/user_defaults.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QTest>

using namespace lexiquill;

namespace {

const QString providerName = QStringLiteral("com.lexiquill.Lexiquill.SearchProvider");
const QString gnome = QStringLiteral("org.gnome.Shell.SearchProvider2");
const QString krunner = QStringLiteral("org.kde.krunner1");

/// What stands behind a key in one of the files that are installed for the desktops.
QString entry(const char *file, const char *key) {
    const QByteArray content =
        readFile(QStringLiteral(LEXIQUILL_DATA_DIRECTORY "/search/") + QString::fromLatin1(file));
    for (const QByteArray &line : content.split('\n')) {
        if (line.startsWith(QByteArray(key) + '='))
            return QString::fromUtf8(line.mid(line.indexOf('=') + 1));
    }
    return {};
}

/// A session bus of its own that starts the search provider on demand, in a home of its own.
class Session {
public:
    explicit Session(int quietMilliseconds = 60'000) {
        const QString services = home.path(QStringLiteral("services"));
        writeFile(services + QStringLiteral("/provider.service"),
                  QStringLiteral("[D-BUS Service]\nName=%1\nExec=\"%2\" --quiet-milliseconds %3\n")
                      .arg(providerName, QStringLiteral(LEXIQUILL_SEARCH_PROVIDER))
                      .arg(quietMilliseconds)
                      .toUtf8());
        const QString configuration = home.path(QStringLiteral("bus.conf"));
        writeFile(configuration,
                  QStringLiteral("<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
                                 "<servicedir>%1</servicedir><policy context=\"default\">"
                                 "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/><allow "
                                 "own=\"*\"/></policy></busconfig>")
                      .arg(services)
                      .toUtf8());
        m_daemon = home.start({QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                               QStringLiteral("--config-file=") + configuration},
                              QStringLiteral("dbus-daemon"));
        m_daemon->waitForReadyRead();
        m_address = QString::fromUtf8(m_daemon->readLine()).trimmed();
        m_connection = std::make_unique<QDBusConnection>(connect(QStringLiteral("desktop")));
    }
    ~Session() {
        m_connection.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
        m_daemon->kill();
        m_daemon->waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Session)

    QDBusConnection connect(const QString &name) const {
        return QDBusConnection::connectToBus(m_address, name);
    }

    /// Calls the provider as the desktops do, by what their files say of it.
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
    /// The identifiers that GNOME is given, without their prefix.
    QString results(const QString &terms) const {
        const QDBusMessage reply = call(gnome, "GetInitialResultSet", {terms.split(u' ')});
        return reply.arguments().value(0).toStringList().join(u' ').remove(QStringLiteral("word:"));
    }
    bool isRunning() const { return m_connection->interface()->isServiceRegistered(providerName); }
    QString indexPath() const {
        return home.path(QStringLiteral("XDG_DATA_HOME/Lexiquill/search-index.sqlite"));
    }

    Home home;

private:
    std::unique_ptr<QProcess> m_daemon;
    QString m_address;
    std::unique_ptr<QDBusConnection> m_connection;
};

QByteArray record(const char *word, const char *summary) {
    return QByteArray("{\"word\": \"") + word + "\", \"conciseSummary\": \"" + summary + "\"}";
}

QByteArray sampleWordbook() {
    return '[' + record("pineapple", "n. 菠萝") + ',' + record("Apple", "n. 苹果") + ',' +
           record("apply", "v. 申请") + ',' + record("gone", "苹果") + ']';
}

/// Plays the application that search results are handed to.
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
    /// GNOME passes over a provider whose program it does not show in its menus.
    void programIsShown() {
        const QString id = entry("com.lexiquill.Lexiquill.search-provider.ini", "DesktopId");
        const QByteArray file =
            readFile(QStringLiteral(LEXIQUILL_DATA_DIRECTORY "/applications/") + id).prepend('\n');
        QVERIFY(file.contains("\nExec="));
        for (const char *const key : {"NoDisplay", "Hidden", "OnlyShowIn", "NotShowIn", "TryExec"})
            QVERIFY2(!file.contains(QByteArray("\n") + key + '='), key);
    }

    /// Started by the first call, without an index: the words come from the wordbook.
    void gnomeSearch() {
        const Session session;
        session.home.setWordbook(sampleWordbook());
        UserDefaults(session.home.settingsPath())
            .set(QStringLiteral("lexiquill_deleted_words"), QStringList{QStringLiteral("gone")});
        QVERIFY(!session.isRunning());
        QCOMPARE(session.results(QStringLiteral("app")), QStringLiteral("apple apply"));
        QVERIFY(session.isRunning());
        QCOMPARE(session.results(QStringLiteral("apple")), QStringLiteral("apple"));
        QCOMPARE(session.results(QStringLiteral("苹果")), QStringLiteral("apple"));
        QCOMPARE(session.results(QStringLiteral("生词本")), QStringLiteral("pineapple apple apply"));
        QCOMPARE(session.results(QStringLiteral("单词 app 申")), QStringLiteral("apply"));
        QCOMPARE(session.results(QString()), QString());
        const QStringList previous{QStringLiteral("word:pineapple")};
        const QDBusMessage narrowed =
            session.call(gnome, "GetSubsearchResultSet", {previous, QStringList{QStringLiteral("pine")}});
        QCOMPARE(narrowed.arguments().value(0).toStringList(), previous);

        const QStringList wanted{QStringLiteral("word:x"), QStringLiteral("word:apple"),
                                 QStringLiteral("'--")};
        const QDBusMessage metas = session.call(gnome, "GetResultMetas", {wanted});
        QCOMPARE(metas.signature(), QStringLiteral("aa{sv}"));
        const QVariantMap expected{{QStringLiteral("id"), QStringLiteral("word:apple")},
                                   {QStringLiteral("name"), QStringLiteral("Apple")},
                                   {QStringLiteral("description"), QStringLiteral("n. 苹果")},
                                   {QStringLiteral("gicon"), QStringLiteral("accessories-dictionary")}};
        QCOMPARE(qdbus_cast<QList<QVariantMap>>(metas.arguments().value(0)), QList<QVariantMap>{expected});
    }

    void krunnerSearch() {
        const Session session;
        session.home.setWordbook(sampleWordbook());
        const QDBusMessage reply = session.call(krunner, "Match", {QStringLiteral("apple")});
        QCOMPARE(reply.signature(), QStringLiteral("a(sssida{sv})"));
        const auto argument = reply.arguments().value(0).value<QDBusArgument>();
        argument.beginArray();
        QString identifier;
        QString text;
        QString icon;
        int type = 0;
        double relevance = 0;
        QVariantMap properties;
        argument.beginStructure();
        argument >> identifier >> text >> icon >> type >> relevance >> properties;
        argument.endStructure();
        QVERIFY(argument.atEnd());
        QCOMPARE(identifier, QStringLiteral("word:apple"));
        QCOMPARE(text, QStringLiteral("Apple"));
        QVERIFY(type == 100 && relevance == 1.0 && !icon.isEmpty());
        QCOMPARE(properties.value(QStringLiteral("subtext")), QStringLiteral("n. 苹果"));
        QCOMPARE(session.call(krunner, "Actions", {}).signature(), QStringLiteral("a(sss)"));
        QCOMPARE(session.call(krunner, "Teardown", {}).type(), QDBusMessage::ReplyMessage);
    }

    /// The words that a terminal has just published or a damaged index has lost.
    void changesOfTheIndex() {
        const Session session;
        session.home.setWordbook(sampleWordbook());
        QCOMPARE(session.results(QStringLiteral("abandon")), QString());
        QCOMPARE(session.home.run("search|abandon").status, 0);
        QCOMPARE(session.results(QStringLiteral("抛弃")), QStringLiteral("abandon"));
        for (const QByteArray &content : {QByteArray(), QByteArray("junk").repeated(5000)}) {
            QVERIFY(writeFile(session.indexPath(), content));
            QFile::remove(session.indexPath() + QStringLiteral("-wal"));
            QCOMPARE(session.results(QStringLiteral("抛弃")), QStringLiteral("abandon"));
            QCOMPARE(session.results(QStringLiteral("菠萝")), QStringLiteral("pineapple"));
        }
        // Nothing can be found then, but the provider goes on.
        QVERIFY(QFile::remove(session.indexPath()) && QDir().mkpath(session.indexPath()));
        QCOMPARE(session.results(QStringLiteral("app")), QString());
        QVERIFY(QDir().rmdir(session.indexPath()));
        QCOMPARE(session.home.run("search|abandon").status, 0);
        QCOMPARE(session.results(QStringLiteral("abandon")), QStringLiteral("abandon"));
    }

    void openedResults() {
        const Session session;
        const QString apple = QStringLiteral("word:apple");
        const QStringList terms{QStringLiteral("ice"), QStringLiteral("cream")};
        // Without the application, that leads nowhere.
        QCOMPARE(session.call(gnome, "ActivateResult", {apple, terms, 7U}).type(),
                 QDBusMessage::ReplyMessage);

        QDBusConnection bus = session.connect(QStringLiteral("application"));
        QObject object;
        QList<QVariantList> calls;
        const Application application(&object, calls);
        QVERIFY(bus.registerObject(QStringLiteral("/com/lexiquill/Lexiquill"), &object));
        QVERIFY(bus.registerService(QStringLiteral("com.lexiquill.Lexiquill")));
        session.call(gnome, "ActivateResult", {apple, terms, 7U});
        session.call(gnome, "LaunchSearch", {terms, 8U});
        session.call(krunner, "Run", {apple, QString()});
        session.call(krunner, "SetActivationToken", {QStringLiteral("token")});
        session.call(krunner, "Run", {apple, QString()});
        session.call(gnome, "ActivateResult", {QString(100'000, u'x'), QStringList(), 9U});
        QTRY_COMPARE(calls.size(), 5);
        const auto expected = [](const char *action, const QString &parameter, const char *key,
                                 const char *value) {
            QVariantMap data;
            if (key != nullptr)
                data = {{QString::fromLatin1(key), QString::fromLatin1(value)}};
            return QVariantList{QString::fromLatin1(action), QVariantList{parameter}, data};
        };
        QCOMPARE(calls.at(0), expected("open-search-result", apple, "desktop-startup-id", "_TIME7"));
        QCOMPARE(calls.at(1),
                 expected("search", QStringLiteral("ice cream"), "desktop-startup-id", "_TIME8"));
        QCOMPARE(calls.at(2), expected("open-search-result", apple, nullptr, nullptr));
        QCOMPARE(calls.at(3), expected("open-search-result", apple, "activation-token", "token"));
        QVERIFY(calls.at(4).at(1).toList().value(0).toString().size() < 2000);
        QDBusConnection::disconnectFromBus(QStringLiteral("application"));
    }

    void hostileCalls() {
        const Session session;
        session.home.setWordbook(sampleWordbook());
        QCOMPARE(session.results(QStringLiteral("pineapple")), QStringLiteral("pineapple"));
        const auto fails = [&session](const QString &interface, const char *method,
                                      const QVariantList &arguments) {
            return session.call(interface, method, arguments).type() == QDBusMessage::ErrorMessage;
        };
        QVERIFY(fails(gnome, "GetInitialResultSet", {QStringLiteral("text")}));
        QVERIFY(fails(gnome, "GetInitialResultSet", {}));
        QVERIFY(fails(gnome, "GetResultMetas", {1}));
        QVERIFY(fails(krunner, "Match", {QStringList()}));
        QVERIFY(fails(krunner, "used", {}));
        QCOMPARE(session.results(QString(1'000'000, u'"')), QString());
        QCOMPARE(session.results(QStringLiteral("x ").repeated(100'000)), QString());
        const QStringList identifiers(100'000, QStringLiteral("word:apple"));
        const QDBusMessage metas = session.call(gnome, "GetResultMetas", {identifiers});
        QVERIFY(qdbus_cast<QList<QVariantMap>>(metas.arguments().value(0)).size() < 100);
        QCOMPARE(session.results(QStringLiteral("pineapple")), QStringLiteral("pineapple"));
    }

    /// Ends by itself, leaves a short log, and starts again when it is asked.
    void quietEnd() {
        const Session session(200);
        session.home.setWordbook(sampleWordbook());
        for (int round = 0; round < 2; ++round) {
            QCOMPARE(session.results(QStringLiteral("apply")), QStringLiteral("apply"));
            QTRY_VERIFY(!session.isRunning());
        }
        QTRY_COMPARE(QFileInfo(session.indexPath() + QStringLiteral("-wal")).size(), 0);
    }
};

QTEST_GUILESS_MAIN(SearchProviderTest)
#include "search_provider_test.moc"
