#pragma once

#include "support/calendar.h"
#include "support/instant.h"

#include <functional>

namespace lexiquill {

class DictionaryService;
class SpotlightManager;
class StorageManager;
class SystemDictionaryService;

/// The services of the terminal commands. A service is created when a command first asks for it, so that no
/// command loads what it does not use.
struct CommandServices {
    std::function<StorageManager &()> storage;
    std::function<DictionaryService &()> dictionary;
    std::function<SystemDictionaryService &()> offlineDictionaries;
    std::function<SpotlightManager &()> spotlight;
    Clock clock = Instant::now;
    std::function<Calendar()> calendar = Calendar::current;
};

} // namespace lexiquill
