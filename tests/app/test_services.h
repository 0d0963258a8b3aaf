#pragma once

#include "app/services.h"
#include "hotkey/hot_key_manager.h"
#include "lookup/dictionary_service.h"
#include "lookup/online_source.h"
#include "network/http_client.h"
#include "platform/linux/linux_dictionary_services.h"
#include "storage/spotlight_manager.h"
#include "storage/storage_manager.h"
#include "sync/sync_manager.h"
#include "update/update_manager.h"

#include <QTemporaryDir>

#include <memory>

namespace lexiquill {

/// Services of a test's own, in a temporary directory: an empty online source, the starter dictionary, no
/// search index, a hotkey that always registers. The wordbook starts with `wordbook`, or with the seeded
/// words without. Nothing answers at the server's base address unless the test gives one.
class TestServices : public Services {
public:
    explicit TestServices(const QByteArray &wordbook = {},
                          const QString &serverBase = QStringLiteral("http://127.0.0.1:9"));

    StorageManager &storage() override { return *m_storage; }
    DictionaryService &dictionary() override { return m_dictionary; }
    SystemDictionaryService &offlineDictionaries() override { return m_offline; }
    SpotlightManager &spotlight() override { return m_spotlight; }
    HotKeyManager &hotKeys() override { return m_hotKeys; }
    SyncManager &sync() override { return *m_sync; }
    UpdateManager &updater() override { return m_updater; }
    UserDefaults &defaults() override { return m_defaults; }

    QString path(const QString &fileName) const { return m_directory.filePath(fileName); }

private:
    struct NoOnlineSource : OnlineSource {
        QCoro::Task<std::optional<DictionaryEntry>> lookup(QString, CancellationToken) override {
            co_return std::nullopt;
        }
    };
    struct WillingRegistrar : HotKeyRegistrar {
        qint32 installHandler(PressHandler) override { return HotKeyStatus::ok; }
        void registerHotKey(quint32, quint32, StatusHandler report) override { report(HotKeyStatus::ok); }
        void unregisterHotKey() override {}
    };

    QTemporaryDir m_directory;
    UserDefaults m_defaults{path(QStringLiteral("settings.conf"))};
    LinuxDictionaryServices m_platformDictionaries{
        {}, {QStringLiteral(LEXIQUILL_STARTER_DIRECTORY)}, path(QStringLiteral("cache"))};
    SystemDictionaryService m_offline{m_platformDictionaries};
    NoOnlineSource m_online;
    DictionaryService m_dictionary{m_online, m_offline, m_defaults};
    SearchIndex m_index;
    SpotlightManager m_spotlight{m_index};
    WillingRegistrar m_registrar;
    HotKeyManager m_hotKeys{m_registrar, m_defaults};
    HttpClient m_http;
    UpdateManager m_updater;
    std::unique_ptr<StorageManager> m_storage;
    std::unique_ptr<SyncManager> m_sync;
};

} // namespace lexiquill
