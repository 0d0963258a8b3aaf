#pragma once

#include "desktop_search/index/search_database.h"
#include "main/modules.h"

namespace lexiquill {

/// The search index in a file, as the program opens it.
inline std::unique_ptr<SearchDatabase> openSearchFile(const QString &path) {
    auto *const module = loadModule<SearchIndexModule>();
    return module != nullptr ? module->open(path) : nullptr;
}

} // namespace lexiquill
