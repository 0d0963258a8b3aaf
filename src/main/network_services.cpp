#include "main/network_services.h"

#include "lookup/online/online_dictionary_service.h"
#include "main/modules.h"
#include "network/http_client.h"
#include "platform/process.h"
#include "settings/server_settings.h"
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
    static auto *const instance = [] {
        const ServerSettings &servers = shared<ServerSettings>();
        auto *const service = new OnlineDictionaryService(shared<HttpClient>(), servers.addresses(),
                                                          OnlineDictionaryService::Limits());
        QObject::connect(&servers, &ServerSettings::changed, &servers,
                         [service, &servers] { service->setAddresses(servers.addresses()); });
        return service;
    }();
    return *instance;
}

template <> SyncManager &shared<SyncManager>() {
    static auto *const instance = [] {
        const ServerSettings &servers = shared<ServerSettings>();
        StorageManager &storage = shared<StorageManager>();
        auto *const manager = new SyncManager({.apiBase = servers.addresses().accountApi(),
                                               .http = shared<HttpClient>(),
                                               .storage = storage,
                                               .defaults = shared<UserDefaults>()});
        QObject::connect(&servers, &ServerSettings::changed, manager,
                         [manager, &servers] { manager->setApiBase(servers.addresses().accountApi()); });
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
    static auto *const instance = [quit] {
        const ServerSettings &servers = shared<ServerSettings>();
        auto *const manager =
            new UpdateManager({.http = shared<HttpClient>(),
                               .updateCheckURL = QUrl(servers.addresses().versionRecord()),
                               .currentVersion = QStringLiteral(LEXIQUILL_VERSION),
                               .currentBuild = QStringLiteral(LEXIQUILL_BUILD),
                               .installation = Installation::of(executableDirectory(), QDir::homePath()),
                               .platform = ScriptPlatform::Linux,
                               .quit = quit});
        QObject::connect(&servers, &ServerSettings::changed, manager, [manager, &servers] {
            manager->setUpdateCheckURL(QUrl(servers.addresses().versionRecord()));
        });
        return manager;
    }();
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
