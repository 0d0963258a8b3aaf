#pragma once

namespace lexiquill {

class CurrentWeeklyPlan;
class DictionaryService;
class HotKeyManager;
class HttpClient;
class SpotlightManager;
class StorageManager;
class SyncManager;
class SystemDictionaryService;
class UpdateManager;
class UserDefaults;

/// The services that the window works with.
struct Services {
    StorageManager &storage;
    CurrentWeeklyPlan &plan;
    DictionaryService &dictionary;
    SystemDictionaryService &offlineDictionaries;
    SpotlightManager &spotlight;
    HotKeyManager &hotKeys;
    HttpClient &http;
    SyncManager &sync;
    UpdateManager &updater;
    UserDefaults &defaults;

    /// Those of the screens: QML makes its objects without arguments, so they look here.
    static Services &current();
    /// `services` must outlive every use; to be called before the first screen is made.
    static void setCurrent(Services *services);
};

} // namespace lexiquill
