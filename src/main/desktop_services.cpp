#include "main/desktop_services.h"

#include "hotkey/hot_key_manager.h"
#include "main/desktop_application.h"
#include "main/loaded_dictionary_importer.h"
#include "main/modules.h"
#include "platform/notifier.h"
#include "platform/process.h"
#include "platform/tray.h"
#include "settings/user_defaults.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"

namespace lexiquill {

template <> CurrentWeeklyPlan &shared<CurrentWeeklyPlan>() {
    static auto *const instance = new CurrentWeeklyPlan(shared<StorageManager>());
    return *instance;
}

template <> HotKeyManager &shared<HotKeyManager>() {
    static auto *const registrar = makeHotKeyRegistrar().release();
    static auto *const instance = new HotKeyManager(*registrar, shared<UserDefaults>());
    return *instance;
}

template <> DictionaryImporter &shared<DictionaryImporter>() {
    static auto *const instance = new LoadedDictionaryImporter(shared<DictionaryShelf>());
    return *instance;
}

template <> Notifier &shared<Notifier>() {
    static auto *const instance = makeNotifier().release();
    return *instance;
}

template <> Tray &shared<Tray>() {
    static auto *const instance = makeTray().release();
    return *instance;
}

template <> Services &shared<Services>() {
    static auto *const instance = new Services{.storage = shared<StorageManager>(),
                                               .plan = shared<CurrentWeeklyPlan>(),
                                               .dictionary = shared<DictionaryService>(),
                                               .offlineDictionaries = shared<SystemDictionaryService>(),
                                               .shelf = shared<DictionaryShelf>(),
                                               .importer = shared<DictionaryImporter>(),
                                               .spotlight = shared<SpotlightManager>(),
                                               .hotKeys = shared<HotKeyManager>(),
                                               .http = shared<HttpClient>(),
                                               .sync = shared<SyncManager>(),
                                               .updater = shared<UpdateManager>(),
                                               .defaults = shared<UserDefaults>(),
                                               .servers = shared<ServerSettings>(),
                                               .notifier = shared<Notifier>(),
                                               .tray = shared<Tray>()};
    return *instance;
}

namespace {

class Module final : public DesktopModule {
public:
    int run(int argc, char **argv) override {
        // End the process without waiting for other threads.
        endProcess(runDesktopApplication(argc, argv));
    }
};

} // namespace

} // namespace lexiquill

LEXIQUILL_MODULE(DesktopModule, lexiquill::Module)
