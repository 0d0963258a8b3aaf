#include "hotkey/hot_key_manager.h"
#include "hotkey/x_server.h"
#include "platform/linux/desktop/x11_hot_key_registrar.h"
#include "platform/process.h"
#include "support/test.h"

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
        steps += u"activate %1"_s.arg(press.timestamp);
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
        note(qPrintable(u"alpha %1"_s.arg(alpha)), window);
    }
    void setOpaque(QObject *window) override { note("opaque", window); }
    void setVisible(QObject *window) override { note("visible", window); }
    void makeKeyAndOrderFront(QObject *window) override { note("key", window); }
    void orderFrontRegardless(QObject *window) override { note("front", window); }
    void setContentNeedsDisplay(QObject *window) override { note("display", window); }
    void postFocusSearchInput() override { steps += u"FocusSearchInput"_s; }
    QObject *keyWindowContent() const override { return content; }
    QList<QObject *> subviews(QObject *view) const override { return view->children(); }
    bool isEditableTextField(QObject *view) const override {
        return view->objectName().startsWith("field"_L1);
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

    void choosing() {
        QCOMPARE(m_manager->registerStatusDescription(), u"正常运行"_s);
        m_manager->setup();
        QCOMPARE(m_manager->currentShortcut().id, u"opt_space"_s);
        QVERIFY(!QFile::exists(settingsFile()));
        m_manager->updateShortcut(HotKeyShortcut::presets().at(1));
        m_manager->resetToDefault();
        QCOMPARE(m_seen,
                 u"已监听 [⌥ Space]/cmd_shift_d/已监听 [⌘ ⇧ D]/opt_space/已监听 [⌥ Space]"_s.split(u'/'));
        QCOMPARE(saved(), HotKeyShortcut::defaultShortcut()); // stored like any other choice

        const auto custom = HotKeyShortcut::custom({.control = true, .shift = true}, *findVirtualKey(40));
        m_manager->updateShortcut(custom);
        QCOMPARE(saved(), custom);
        start(m_server.display());
        m_manager->setup();
        QCOMPARE(m_seen, u"custom_4608_40/已监听 [⌃ ⇧ K]"_s.split(u'/'));
        m_manager->setWindows(&*m_windows);
        m_server.press(u"37+50+45"_s);
        QTRY_VERIFY(m_windows->steps.contains(u"FocusSearchInput"_s));
        QVERIFY(!m_windows->steps.contains(u"activate 0"_s));
    }

    void damagedChoice() {
        const QByteArray content = "[General]\nlexiquill_custom_global_hotkey=@ByteArray({)\n";
        QVERIFY(writeFile(settingsFile(), content));
        start(m_server.display());
        m_manager->setup();
        QCOMPARE(m_seen, QStringList{u"已监听 [⌥ Space]"_s});
        QCOMPARE(readFile(settingsFile()), content);
    }

    void takenCombination() {
        X11HotKeyRegistrar other(m_server.display().toLatin1());
        QCOMPARE(other.installHandler([](const HotKeyPress &) {}), HotKeyStatus::ok);
        other.registerHotKey(2, CarbonModifier::option, [](qint32) {});
        m_manager->setup();
        m_manager->updateShortcut(HotKeyShortcut::presets().at(2));
        QCOMPARE(m_seen.mid(1), u"opt_d/注册失败 (错误码: 10)"_s.split(u'/'));
        QCOMPARE(saved(), HotKeyShortcut::presets().at(2));
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
        QTRY_VERIFY(m_windows->steps.contains(u"focus field in a box"_s));
        QCOMPARE(m_windows->steps,
                 u"activate 7/no tabs first/out first/close first/no tabs main/deminiaturize main/"
                 "alpha 1 main/opaque main/visible main/key main/front main/activate 7/"
                 "display main/FocusSearchInput/focus field in a box"_s.split(u'/'));
    }

    void reopening() {
        m_manager->setWindows(&*m_windows);
        m_windows->add("narrow", 300);
        m_manager->reopenMainWindow();
        QCOMPARE(m_windows->steps, QStringList{u"activate 0"_s});
        m_windows->add("first", 301);
        m_windows->add("second");
        m_windows->steps.clear();
        m_manager->reopenMainWindow();
        QCOMPARE(m_windows->steps,
                 u"no tabs first/adopt first/no tabs second/out second/close second/alpha 1 first/"
                 "opaque first/visible first/key first/front first/activate 0/display first"_s.split(u'/'));
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
    }
    QString settingsFile() const { return m_directory->filePath(u"settings.conf"_s); }
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
