// The process-wide instances of the network library and how they are wired. Each is created on first use and
// never destroyed.

#include "lookup/online/online_dictionary_service.h"
#include "network/http_client.h"
#include "platform/process.h"
#include "storage/storage_manager.h"
#include "support/server_addresses.h"
#include "support/user_defaults.h"
#include "sync/sync_manager.h"
#include "update/update_manager.h"

#include <QDir>
#include <QStandardPaths>

namespace lexiquill {

HttpClient &HttpClient::shared() {
    const QDir caches(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation));
    static auto *const instance =
        new HttpClient(AnswerStore(caches.filePath(QStringLiteral("Lexiquill/http"))));
    return *instance;
}

OnlineDictionaryService &OnlineDictionaryService::shared() {
    static auto *const instance =
        new OnlineDictionaryService(HttpClient::shared(), ServerAddresses::from(UserDefaults::shared()),
                                    OnlineDictionaryService::Limits());
    return *instance;
}

SyncManager &SyncManager::shared() {
    static auto *const instance = [] {
        UserDefaults &defaults = UserDefaults::shared();
        StorageManager &storage = StorageManager::shared();
        auto *const manager =
            new SyncManager({.apiBase = ServerAddresses::from(defaults).server + QStringLiteral("/api"),
                             .http = HttpClient::shared(),
                             .storage = storage,
                             .defaults = defaults});
        QObject::connect(&storage, &StorageManager::wordDeleted, manager, &SyncManager::syncDeletionToCloud);
        return manager;
    }();
    return *instance;
}

UpdateManager &UpdateManager::shared() {
    static auto *const instance =
        new UpdateManager({.http = HttpClient::shared(),
                           .updateCheckURL = QUrl(ServerAddresses::from(UserDefaults::shared()).server +
                                                  QStringLiteral("/version.json")),
                           .currentVersion = QStringLiteral(LEXIQUILL_VERSION),
                           .currentBuild = QStringLiteral(LEXIQUILL_BUILD),
                           .installation = Installation::of(executableDirectory(), QDir::homePath()),
                           .platform = ScriptPlatform::Linux,
                           .quit = [](int status) {
                               // The script waits for three seconds.
                               if (StorageManager::shared().hasUnsavedChanges())
                                   StorageManager::shared().saveData(std::chrono::seconds{2});
                               endProcess(status);
                           }});
    return *instance;
}

} // namespace lexiquill

/// What the core asks this library for when it has loaded it.
extern "C" Q_DECL_EXPORT lexiquill::OnlineSource *lexiquillOnlineSource() {
    return &lexiquill::OnlineDictionaryService::shared();
}
