#include "main/network_services.h"

#include "lookup/online/online_dictionary_service.h"
#include "main/modules.h"
#include "network/http_client.h"
#include "platform/process.h"
#include "settings/server_addresses.h"
#include "settings/user_defaults.h"
#include "storage/storage_manager.h"
#include "sync/sync_manager.h"
#include "update/update_manager.h"

#include <QDir>

namespace lexiquill {

template <> HttpClient &shared<HttpClient>() {
    static auto *const instance =
        new HttpClient(AnswerStore(QDir(cacheDirectory()).filePath(QStringLiteral("http"))));
    return *instance;
}

template <> OnlineDictionaryService &shared<OnlineDictionaryService>() {
    static auto *const instance =
        new OnlineDictionaryService(shared<HttpClient>(), ServerAddresses::from(shared<UserDefaults>()),
                                    OnlineDictionaryService::Limits());
    return *instance;
}

template <> SyncManager &shared<SyncManager>() {
    static auto *const instance = [] {
        UserDefaults &defaults = shared<UserDefaults>();
        StorageManager &storage = shared<StorageManager>();
        auto *const manager =
            new SyncManager({.apiBase = ServerAddresses::from(defaults).server + QStringLiteral("/api"),
                             .http = shared<HttpClient>(),
                             .storage = storage,
                             .defaults = defaults});
        QObject::connect(&storage, &StorageManager::wordDeleted, manager, &SyncManager::syncDeletionToCloud);
        return manager;
    }();
    return *instance;
}

template <> UpdateManager &shared<UpdateManager>() {
    const auto quit = [](int status) {
        // The script waits for three seconds.
        if (shared<StorageManager>().hasUnsavedChanges())
            shared<StorageManager>().saveData(std::chrono::seconds{2});
        endProcess(status);
    };
    static auto *const instance =
        new UpdateManager({.http = shared<HttpClient>(),
                           .updateCheckURL = QUrl(ServerAddresses::from(shared<UserDefaults>()).server +
                                                  QStringLiteral("/version.json")),
                           .currentVersion = QStringLiteral(LEXIQUILL_VERSION),
                           .currentBuild = QStringLiteral(LEXIQUILL_BUILD),
                           .installation = Installation::of(executableDirectory(), QDir::homePath()),
                           .platform = ScriptPlatform::Linux,
                           .quit = quit});
    return *instance;
}

namespace {

class Module final : public NetworkModule {
public:
    OnlineSource &onlineSource() override { return shared<OnlineDictionaryService>(); }
};

} // namespace

} // namespace lexiquill

LEXIQUILL_MODULE(NetworkModule, lexiquill::Module)
