#include "app/services.h"

#include "hotkey/hot_key_manager.h"
#include "lookup/dictionary_service.h"
#include "storage/spotlight_manager.h"
#include "storage/storage_manager.h"
#include "sync/sync_manager.h"
#include "update/update_manager.h"

namespace lexiquill {

namespace {

Services *replacement = nullptr;

} // namespace

Services &Services::current() {
    static Services processWide;
    return replacement != nullptr ? *replacement : processWide;
}

void Services::setCurrent(Services *services) {
    replacement = services;
}

StorageManager &Services::storage() {
    return StorageManager::shared();
}

DictionaryService &Services::dictionary() {
    return DictionaryService::shared();
}

SystemDictionaryService &Services::offlineDictionaries() {
    return SystemDictionaryService::shared();
}

SpotlightManager &Services::spotlight() {
    return SpotlightManager::shared();
}

HotKeyManager &Services::hotKeys() {
    return HotKeyManager::shared();
}

SyncManager &Services::sync() {
    return SyncManager::shared();
}

UpdateManager &Services::updater() {
    return UpdateManager::shared();
}

UserDefaults &Services::defaults() {
    return UserDefaults::shared();
}

} // namespace lexiquill
