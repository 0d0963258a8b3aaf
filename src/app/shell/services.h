#pragma once

namespace lexiquill {

class CurrentWeeklyPlan;
class DictionaryImporter;
class DictionaryService;
class DictionaryShelf;
class HotKeyManager;
class HttpClient;
class Notifier;
class ServerSettings;
class SpotlightManager;
class StorageManager;
class SyncManager;
class SystemDictionaryService;
class Tray;
class UpdateManager;
class UserDefaults;

/// The services that the window uses.
struct Services {
    StorageManager &storage;
    CurrentWeeklyPlan &plan;
    DictionaryService &dictionary;
    SystemDictionaryService &offlineDictionaries;
    DictionaryShelf &shelf;
    DictionaryImporter &importer;
    SpotlightManager &spotlight;
    HotKeyManager &hotKeys;
    HttpClient &http;
    SyncManager &sync;
    UpdateManager &updater;
    UserDefaults &defaults;
    ServerSettings &servers;
    Notifier &notifier;
    Tray &tray;

    /// The services for the objects of the screens. QML creates those without arguments, so they get them
    /// here.
    static Services &current();
    /// `services` must outlive every use; to be called before the first screen is created.
    static void setCurrent(Services *services);
};

} // namespace lexiquill
