#include "main/core_services.h"

#include "desktop_search/index/background_search_index.h"
#include "desktop_search/spotlight_manager.h"
#include "desktop_search/wordbook_publisher.h"
#include "dictionaries/dictd/dictd_format.h"
#include "dictionaries/dictionary_shelf.h"
#include "dictionaries/mdict/mdict_format.h"
#include "dictionaries/stardict/stardict_format.h"
#include "dictionaries/system_dictionary_service.h"
#include "lookup/dictionary_service.h"
#include "main/loaded_online_source.h"
#include "main/modules.h"
#include "platform/process.h"
#include "settings/server_settings.h"
#include "settings/user_defaults.h"
#include "storage/first_run_words.h"
#include "storage/storage_manager.h"

#include <QDir>
#include <QStandardPaths>

namespace lexiquill {

namespace {

/// The directory of the dictionaries that ship with the program; the same for an installation and a build
/// tree.
QString bundledDictionaries() {
    return QDir::cleanPath(executableDirectory() + QStringLiteral("/../share/Lexiquill/dic"));
}

std::unique_ptr<SearchDatabase> openSearchDatabase() {
    auto *const module = loadModule<SearchIndexModule>();
    return module != nullptr ? module->open(SearchDatabase::standardFilePath()) : nullptr;
}

} // namespace

QString cacheDirectory() {
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return QDir(directory).filePath(QStringLiteral("Lexiquill"));
}

template <> UserDefaults &shared<UserDefaults>() {
    static auto *const instance = new UserDefaults(UserDefaults::standardFilePath());
    return *instance;
}

template <> ServerSettings &shared<ServerSettings>() {
    static auto *const instance = new ServerSettings(shared<UserDefaults>());
    return *instance;
}

template <> DictionaryShelf &shared<DictionaryShelf>() {
    static auto *const instance = new DictionaryShelf(
        {.installed = DictionaryShelf::standardPlaces(),
         .bundled = {bundledDictionaries()},
         .cache = cacheDirectory(),
         .settings = UserDefaults::standardFilePath(),
         .wordRanks = QDir(bundledDictionaries()).filePath(QStringLiteral("word-ranks.txt"))},
        {stardict::format(), mdict::format(), dictd::format()});
    return *instance;
}

template <> SystemDictionaryService &shared<SystemDictionaryService>() {
    static auto *const instance = new SystemDictionaryService(shared<DictionaryShelf>());
    return *instance;
}

template <> DictionaryService &shared<DictionaryService>() {
    static auto *const online = new LoadedOnlineSource;
    static auto *const instance =
        new DictionaryService(*online, shared<SystemDictionaryService>(), shared<UserDefaults>());
    return *instance;
}

template <> DeletedWords &shared<DeletedWords>() {
    static auto *const instance = new DeletedWords(shared<UserDefaults>());
    return *instance;
}

template <> SpotlightManager &shared<SpotlightManager>() {
    const bool isThere = hasLibrary(SearchIndexModule::library);
    static auto *const index =
        new BackgroundSearchIndex(SearchDatabase::standardFilePath(), isThere ? openSearchDatabase : nullptr);
    static auto *const instance = new SpotlightManager(*index);
    return *instance;
}

template <> StorageManager &shared<StorageManager>() {
    static auto *const instance = [] {
        const auto firstWords = [] {
            return firstRunWords(
                [](const QString &word) { return shared<SystemDictionaryService>().lookup(word); },
                Instant::now());
        };
        auto *const storage = new StorageManager({.storageFile = StorageManager::standardStorageFile(),
                                                  .deletedWords = shared<DeletedWords>(),
                                                  .firstWords = firstWords});
        new WordbookPublisher(*storage, shared<SpotlightManager>(), storage);
        return storage;
    }();
    return *instance;
}

} // namespace lexiquill
