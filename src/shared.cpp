// The process-wide instances and how they are wired. Each is created on first use and never destroyed.

#include "lookup/dictionary_service.h"
#include "lookup/loaded_online_source.h"
#include "lookup/system_dictionary_service.h"
#include "platform/linux/linux_dictionary_services.h"
#include "platform/process.h"
#include "review/spaced_repetition_engine.h"
#include "review/weekly_review_scheduler.h"
#include "storage/spotlight_manager.h"
#include "storage/storage_manager.h"
#include "support/user_defaults.h"

#include <QDir>
#include <QStandardPaths>

namespace lexiquill {

namespace {

QString cacheDirectory() {
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return QDir(directory).filePath(QStringLiteral("Lexiquill"));
}

/// The dictionaries that ship with the program, in an installation as in a build tree.
QString bundledDictionaryDirectory() {
    return QDir::cleanPath(executableDirectory() + QStringLiteral("/../share/Lexiquill/dic"));
}

} // namespace

UserDefaults &UserDefaults::shared() {
    static auto *const instance = new UserDefaults(UserDefaults::standardFilePath());
    return *instance;
}

const SpacedRepetitionEngine &SpacedRepetitionEngine::shared() {
    static const SpacedRepetitionEngine instance;
    return instance;
}

const WeeklyReviewScheduler &WeeklyReviewScheduler::shared() {
    static const WeeklyReviewScheduler instance;
    return instance;
}

SystemDictionaryService &SystemDictionaryService::shared() {
    static auto *const services = new LinuxDictionaryServices(
        LinuxDictionaryServices::standardDirectories(), {bundledDictionaryDirectory()}, cacheDirectory());
    static auto *const instance = new SystemDictionaryService(*services);
    return *instance;
}

DictionaryService &DictionaryService::shared() {
    static auto *const online =
        new LoadedOnlineSource(libraryDirectory() + QStringLiteral("/liblexiquill_network.so"));
    static auto *const instance =
        new DictionaryService(*online, SystemDictionaryService::shared(), UserDefaults::shared());
    return *instance;
}

StorageManager &StorageManager::shared() {
    static auto *const instance = new StorageManager({.storageFile = StorageManager::standardStorageFile(),
                                                      .defaults = UserDefaults::shared(),
                                                      .dictionary = SystemDictionaryService::shared(),
                                                      .spotlight = SpotlightManager::shared()});
    return *instance;
}

} // namespace lexiquill
