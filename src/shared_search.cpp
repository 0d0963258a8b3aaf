// The process-wide publisher to the system's search.

#include "platform/linux/linux_search_index.h"
#include "platform/linux/search_database.h"
#include "storage/spotlight_manager.h"

namespace lexiquill {

SpotlightManager &SpotlightManager::shared() {
    static auto *const index = new LinuxSearchIndex(SearchDatabase::standardFilePath());
    static auto *const instance = new SpotlightManager(*index);
    return *instance;
}

} // namespace lexiquill
