#pragma once

#include "dictionaries/dictionary.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace lexiquill {

/// Finds and opens the dictionaries of one format.
struct DictionaryFinder {
    /// The main files of the dictionaries below a directory, sorted by path.
    std::function<QStringList(const QString &directory)> find;
    /// Opens a dictionary by its main file. Lookup tables are stored in `cacheDirectory`. Null when the file
    /// does not describe a usable dictionary.
    std::function<std::unique_ptr<Dictionary>(const QString &path, const QString &cacheDirectory)> open;
};

} // namespace lexiquill
