#pragma once

namespace lexiquill {

class DictionaryService;
class HotKeyManager;
class SpotlightManager;
class StorageManager;
class SyncManager;
class SystemDictionaryService;
class UpdateManager;
class UserDefaults;

/// The services that the window works with. They are the process-wide ones, each created when it is first
/// asked for, unless others have been put in their place.
class Services {
public:
    virtual ~Services() = default;

    /// What the screens use.
    static Services &current();
    /// `services` must outlive every use; to be called before the first screen is made.
    static void setCurrent(Services *services);

    virtual StorageManager &storage();
    virtual DictionaryService &dictionary();
    virtual SystemDictionaryService &offlineDictionaries();
    virtual SpotlightManager &spotlight();
    virtual HotKeyManager &hotKeys();
    virtual SyncManager &sync();
    virtual UpdateManager &updater();
    virtual UserDefaults &defaults();
};

} // namespace lexiquill
