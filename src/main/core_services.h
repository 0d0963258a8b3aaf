#pragma once

#include "main/shared.h"

namespace lexiquill {

class DeletedWords;
class DictionaryService;
class DictionaryShelf;
class SpotlightManager;
class ServerSettings;
class StorageManager;
class SystemDictionaryService;
class UserDefaults;

template <> UserDefaults &shared<UserDefaults>();
template <> ServerSettings &shared<ServerSettings>();
template <> DictionaryShelf &shared<DictionaryShelf>();
template <> SystemDictionaryService &shared<SystemDictionaryService>();
template <> DictionaryService &shared<DictionaryService>();
template <> DeletedWords &shared<DeletedWords>();
template <> StorageManager &shared<StorageManager>();
template <> SpotlightManager &shared<SpotlightManager>();

} // namespace lexiquill
