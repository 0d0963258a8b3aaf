#pragma once

#include "app/shell/services.h"
#include "desktop_search/spotlight_manager.h"
#include "dictionaries/dictionary_shelf.h"
#include "dictionaries/import/file_importer.h"
#include "dictionaries/stardict/stardict_format.h"
#include "hotkey/hot_key_manager.h"
#include "lookup/dictionary_service.h"
#include "lookup/online_source.h"
#include "network/http_client.h"
#include "platform/notifier.h"
#include "platform/tray.h"
#include "settings/server_settings.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"
#include "sync/sync_manager.h"
#include "update/update_manager.h"

#include <QTemporaryDir>

#include <memory>
#include <optional>
#include <utility>

namespace lexiquill {

/// The services of one test, in a temporary directory: an empty online source, the starter dictionary, no
/// search index, and a hotkey whose registration succeeds. The wordbook starts with `wordbook`, or
/// with the seeded words if that is null. By default no server answers at `serverBase`. `online` replaces the
/// empty online source and must outlive the instance.
class TestServices {
public:
    explicit TestServices(const QByteArray &wordbook = {},
                          const QString &serverBase = QStringLiteral("http://127.0.0.1:9"),
                          OnlineSource *online = nullptr, const Clock &clock = Instant::now,
                          const std::function<Calendar()> &calendar = Calendar::current);
    /// Waits for work on other threads that uses the services.
    ~TestServices();
    Q_DISABLE_COPY_MOVE(TestServices)

    StorageManager &storage() { return *m_storage; }
    CurrentWeeklyPlan &plan() { return *m_plan; }
    SystemDictionaryService &offlineDictionaries() { return m_offline; }
    HotKeyManager &hotKeys() { return m_hotKeys; }
    SyncManager &sync() { return *m_sync; }
    UpdateManager &updater() { return m_updater; }
    UserDefaults &defaults() { return m_defaults; }
    ServerSettings &servers() { return *m_servers; }
    DictionaryService &dictionary() { return m_dictionary; }
    /// The notifications that the window has asked for.
    struct RecordingNotifier : Notifier {
        void show(const DesktopNotification &notification, const ActionHandler &chosen) override {
            shown += notification;
            handler = chosen;
        }
        QList<DesktopNotification> shown;
        ActionHandler handler; ///< of the last one
    };
    /// A tray that is there, or not.
    struct RecordingTray : Tray {
        void watch(const std::function<void()> &changed, const CommandHandler &chosen) override {
            change = changed;
            choose = chosen;
        }
        bool isThere() const override { return hasPlace; }
        void show(const TrayContent &content) override { shown = content; }
        void hide() override { shown.reset(); }

        bool hasPlace = false;
        std::function<void()> change;
        CommandHandler choose;
        std::optional<TrayContent> shown;
    };
    RecordingNotifier &notifier() { return m_notifier; }
    RecordingTray &tray() { return m_tray; }
    /// The status of the hotkey's registration, and the presets that are free.
    struct TestRegistrar : HotKeyRegistrar {
        qint32 installHandler(PressHandler) override { return HotKeyStatus::ok; }
        void registerHotKey(quint32, quint32, StatusHandler report) override { report(status); }
        bool isFree(quint32 keyCode, quint32 modifiers) override {
            return free == std::pair(keyCode, modifiers);
        }
        void unregisterHotKey() override {}

        qint32 status = HotKeyStatus::ok;
        std::pair<quint32, quint32> free;
    };
    TestRegistrar &registrar() { return m_registrar; }
    /// All services, in the form that the window uses.
    operator Services &() { return *m_services; }
    /// Makes them the services of the screens that QML creates.
    void makeCurrent() { Services::setCurrent(m_services.get()); }

    QString path(const QString &fileName) const { return m_directory.filePath(fileName); }

private:
    struct NoOnlineSource : OnlineSource {
        QCoro::Task<std::optional<DictionaryEntry>> lookup(QString, std::stop_token) override {
            co_return std::nullopt;
        }
    };
    QTemporaryDir m_directory;
    /// The imported dictionaries lie below the data directory of the environment.
    const bool m_hasDataDirectory = qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("data"))));
    UserDefaults m_defaults{path(QStringLiteral("settings.conf"))};
    DictionaryShelf m_shelf{{.installed = {DictionaryShelf::importedDirectory()},
                             .bundled = {QStringLiteral(LEXIQUILL_STARTER_DIRECTORY)},
                             .cache = path(QStringLiteral("cache")),
                             .settings = path(QStringLiteral("settings.conf")),
                             .wordRanks = QStringLiteral(LEXIQUILL_STARTER_DIRECTORY "/word-ranks.txt")},
                            {stardict::format()}};
    FileImporter m_importer{DictionaryShelf::importedDirectory(),
                            [this](const QString &mainFile, const std::stop_token &) {
                                return m_shelf.prepare(mainFile);
                            }};
    SystemDictionaryService m_offline{m_shelf};
    NoOnlineSource m_online;
    DictionaryService m_dictionary;
    SearchIndex m_index;
    SpotlightManager m_spotlight{m_index};
    TestRegistrar m_registrar;
    HotKeyManager m_hotKeys{m_registrar, m_defaults};
    RecordingNotifier m_notifier;
    RecordingTray m_tray;
    HttpClient m_http;
    UpdateManager m_updater;
    DeletedWords m_deletedWords{m_defaults};
    std::unique_ptr<StorageManager> m_storage;
    std::unique_ptr<CurrentWeeklyPlan> m_plan;
    std::unique_ptr<SyncManager> m_sync;
    std::unique_ptr<ServerSettings> m_servers;
    std::unique_ptr<Services> m_services;
};

} // namespace lexiquill
