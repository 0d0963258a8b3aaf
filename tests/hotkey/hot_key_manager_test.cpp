#include "hotkey/hot_key_manager.h"
#include "hotkey/x_server.h"
#include "platform/linux/desktop/x11_hot_key_registrar.h"
#include "platform/process.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

using namespace lexiquill;

namespace {

/// Windows that write down what is done to them, by the names of their objects.
class RecordedWindows : public HotKeyWindows {
public:
    QObject *add(const char *name, double width = 800, bool canBecomeMain = true, bool isPanel = false) {
        auto *const window = new QObject(&m_owner);
        window->setObjectName(QString::fromLatin1(name));
        all += {.window = window, .canBecomeMain = canBecomeMain, .isPanel = isPanel, .width = width};
        return window;
    }

    void activateApplication(const HotKeyPress &press) override {
        steps += QStringLiteral("activate %1").arg(press.timestamp);
    }
    QList<Window> windows() const override { return all; }
    QObject *mainWindow() const override { return main; }
    void setMainWindow(QObject *window) override {
        main = window;
        note("adopt", window);
    }
    void disallowTabbing(QObject *window) override { note("no tabs", window); }
    void orderOut(QObject *window) override { note("out", window); }
    void close(QObject *window) override {
        note("close", window);
        delete window;
    }
    bool isMiniaturized(QObject *) const override { return isSmall; }
    void deminiaturize(QObject *window) override { note("deminiaturize", window); }
    void setAlpha(QObject *window, double alpha) override {
        note(qPrintable(QStringLiteral("alpha %1").arg(alpha)), window);
    }
    void setOpaque(QObject *window) override { note("opaque", window); }
    void setVisible(QObject *window) override { note("visible", window); }
    void makeKeyAndOrderFront(QObject *window) override { note("key", window); }
    void orderFrontRegardless(QObject *window) override { note("front", window); }
    void setContentNeedsDisplay(QObject *window) override { note("display", window); }
    void postFocusSearchInput() override { steps += QStringLiteral("FocusSearchInput"); }
    QObject *keyWindowContent() const override { return content; }
    QList<QObject *> subviews(QObject *view) const override { return view->children(); }
    bool isEditableTextField(QObject *view) const override {
        return view->objectName().startsWith(QLatin1StringView("field"));
    }
    void makeFirstResponder(QObject *view) override { note("focus", view); }

    QList<Window> all;
    QObject *main = nullptr;
    QObject *content = nullptr;
    bool isSmall = false;
    QStringList steps;

private:
    void note(const char *step, const QObject *object) {
        steps += QString::fromUtf8(step) + u' ' + object->objectName();
    }

    QObject m_owner;
};

class HotKeyManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        prepareProcess();
        QVERIFY(m_server.isRunning());
    }
    void init() {
        m_directory.emplace();
        m_windows.emplace();
        start(m_server.display());
    }
    void cleanup() {
        m_manager.reset();
        m_registrar.reset();
    }

    void firstStart() {
        QCOMPARE(m_manager->registerStatusDescription(), QStringLiteral("正常运行"));
        m_manager->setup();
        QCOMPARE(m_seen, QStringList{QStringLiteral("已监听 [⌥ Space]")});
        QCOMPARE(m_manager->currentShortcut().id, QStringLiteral("opt_space"));
        QVERIFY(!QFile::exists(settingsFile()));
    }

    void choosing() {
        m_manager->setup();
        m_manager->updateShortcut(HotKeyShortcut::presets().at(1));
        m_manager->resetToDefault();
        QCOMPARE(m_seen,
                 QStringLiteral("已监听 [⌥ Space]/cmd_shift_d/已监听 [⌘ ⇧ D]/opt_space/已监听 [⌥ Space]")
                     .split(u'/'));
        QCOMPARE(saved(), HotKeyShortcut::defaultShortcut()); // stored like any other choice

        const auto custom = HotKeyShortcut::custom({.control = true, .shift = true}, *findVirtualKey(40));
        m_manager->updateShortcut(custom);
        QCOMPARE(saved(), custom);
        start(m_server.display());
        m_manager->setup();
        QCOMPARE(m_seen, QStringLiteral("custom_4608_40/已监听 [⌃ ⇧ K]").split(u'/'));
        m_manager->setWindows(&*m_windows);
        m_server.press(QStringLiteral("37+50+45"));
        QTRY_VERIFY(m_windows->steps.contains(QStringLiteral("FocusSearchInput")));
        QVERIFY(!m_windows->steps.contains(QStringLiteral("activate 0")));
    }

    void damagedChoice_data() {
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("text") << QByteArray("lexiquill_custom_global_hotkey=cmd_shift_d\n");
        QTest::newRow("not JSON") << QByteArray("lexiquill_custom_global_hotkey=@ByteArray({)\n");
        QTest::newRow("fields missing") << QByteArray("lexiquill_custom_global_hotkey=@ByteArray({})\n");
    }

    void damagedChoice() {
        QFETCH(const QByteArray, line);
        const QByteArray content = "[General]\n" + line;
        QFile file(settingsFile());
        QVERIFY(file.open(QIODevice::ReadWrite) && file.write(content) == content.size() && file.flush());
        start(m_server.display());
        m_manager->setup();
        QCOMPARE(m_seen, QStringList{QStringLiteral("已监听 [⌥ Space]")});
        file.seek(0);
        QCOMPARE(file.readAll(), content);
    }

    void takenCombination() {
        X11HotKeyRegistrar other(m_server.display().toLatin1());
        QCOMPARE(other.installHandler([](const HotKeyPress &) {}), HotKeyStatus::ok);
        other.registerHotKey(2, CarbonModifier::option, [](qint32) {});
        m_manager->setup();
        m_manager->updateShortcut(HotKeyShortcut::presets().at(2));
        QCOMPARE(m_seen.mid(1), QStringLiteral("opt_d/注册失败 (错误码: 10)").split(u'/'));
        QCOMPARE(saved(), HotKeyShortcut::presets().at(2));
        // The one before is not held either.
        other.registerHotKey(49, CarbonModifier::option,
                             [](qint32 status) { QCOMPARE(status, HotKeyStatus::ok); });
    }

    /// The handler is installed by the next set-up.
    void serverThatComesLate() {
        auto server = std::make_unique<XServer>();
        const QString display = server->display();
        server->stop();
        start(display);
        m_manager->setup();
        server = std::make_unique<XServer>(display);
        m_manager->setup();
        QCOMPARE(m_seen, QStringLiteral("注册失败 (错误码: -1)/已监听 [⌥ Space]").split(u'/'));
    }

    void sessionWithoutAServer() {
        qunsetenv("DISPLAY");
        qunsetenv("WAYLAND_DISPLAY");
        const auto registrar = makeHotKeyRegistrar();
        UserDefaults defaults(settingsFile());
        HotKeyManager manager(*registrar, defaults);
        manager.setup();
        QCOMPARE(manager.registerStatusDescription(), QStringLiteral("注册失败 (错误码: -1)"));
    }

    void settingsSheet() {
        m_manager->setShowSettingsSheet(true);
        m_manager->setShowSettingsSheet(true);
        m_manager->setShowSettingsSheet(false);
        QCOMPARE(m_seen, QStringLiteral("sheet/no sheet").split(u'/'));
    }

    void press() {
        m_windows->add("narrow", 300);
        m_windows->add("panel", 800, true, true);
        m_windows->add("popup", 800, false);
        m_windows->add("first");
        m_windows->main = m_windows->add("main");
        m_windows->isSmall = true;
        m_windows->content = new QObject(m_windows->main);
        const auto view = [](const char *name, QObject *parent) {
            auto *const child = new QObject(parent);
            child->setObjectName(QString::fromLatin1(name));
            return child;
        };
        view("label", view("box", view("box", m_windows->content)));
        view("field in a box", view("box", m_windows->content));
        view("field", m_windows->content);
        m_manager->setWindows(&*m_windows);

        m_manager->handleHotKeyPressed({.timestamp = 7, .activationToken = {}});
        QCOMPARE(m_windows->steps, QStringList()); // after the current event
        QTRY_VERIFY(m_windows->steps.contains(QStringLiteral("focus field in a box")));
        QCOMPARE(
            m_windows->steps,
            QStringLiteral("activate 7/no tabs first/out first/close first/no tabs main/deminiaturize main/"
                           "alpha 1 main/opaque main/visible main/key main/front main/activate 7/"
                           "display main/FocusSearchInput/focus field in a box")
                .split(u'/'));
    }

    void reopening() {
        m_manager->setWindows(&*m_windows);
        m_windows->add("narrow", 300);
        m_manager->reopenMainWindow();
        QCOMPARE(m_windows->steps, QStringList{QStringLiteral("activate 0")});
        m_windows->add("first", 301);
        m_windows->add("second");
        m_windows->steps.clear();
        m_manager->reopenMainWindow();
        QCOMPARE(
            m_windows->steps,
            QStringLiteral("no tabs first/adopt first/no tabs second/out second/close second/alpha 1 first/"
                           "opaque first/visible first/key first/front first/activate 0/display first")
                .split(u'/'));
    }

private:
    /// Starts anew, with the settings as they are on disk.
    void start(const QString &display) {
        m_manager.reset();
        m_seen.clear();
        m_defaults = std::make_unique<UserDefaults>(settingsFile());
        m_registrar = std::make_unique<X11HotKeyRegistrar>(display.toLatin1());
        m_manager = std::make_unique<HotKeyManager>(*m_registrar, *m_defaults);
        const HotKeyManager &manager = *m_manager;
        connect(&manager, &HotKeyManager::currentShortcutChanged, this,
                [&] { m_seen += manager.currentShortcut().id; });
        connect(&manager, &HotKeyManager::registerStatusDescriptionChanged, this,
                [&] { m_seen += manager.registerStatusDescription(); });
        connect(&manager, &HotKeyManager::showSettingsSheetChanged, this, [&] {
            m_seen += manager.showSettingsSheet() ? QStringLiteral("sheet") : QStringLiteral("no sheet");
        });
    }
    QString settingsFile() const { return m_directory->filePath(QStringLiteral("settings.conf")); }
    std::optional<HotKeyShortcut> saved() const {
        return decodeHotKeyShortcut(UserDefaults(settingsFile()).byteArray(HotKeyManager::userDefaultsKey));
    }

    XServer m_server;
    std::optional<RecordedWindows> m_windows;
    std::optional<QTemporaryDir> m_directory;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<X11HotKeyRegistrar> m_registrar;
    std::unique_ptr<HotKeyManager> m_manager;
    QStringList m_seen; ///< what a screen is told, in order
};

} // namespace

QTEST_GUILESS_MAIN(HotKeyManagerTest)
#include "hot_key_manager_test.moc"
