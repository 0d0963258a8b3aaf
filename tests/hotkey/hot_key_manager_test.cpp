#include "hotkey/hot_key_manager.h"
#include "hotkey/x_server.h"
#include "platform/linux/desktop/x11_hot_key_registrar.h"
#include "platform/process.h"
#include "support/test.h"

#include <memory>
#include <optional>

using namespace lexiquill;

namespace {

class HotKeyManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        prepareProcess();
        QVERIFY(m_server.isRunning());
    }
    void init() {
        m_directory.emplace();
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

private:
    /// Starts again, with the settings that are on disk.
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
    std::optional<QTemporaryDir> m_directory;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<X11HotKeyRegistrar> m_registrar;
    std::unique_ptr<HotKeyManager> m_manager;
    QStringList m_seen; ///< the changes that a screen would see, in order
};

} // namespace

QTEST_GUILESS_MAIN(HotKeyManagerTest)
#include "hot_key_manager_test.moc"
