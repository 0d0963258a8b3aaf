#pragma once

#include "dictionaries/import/import_result.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <stop_token>

namespace lexiquill {

/// The bytes that an import has read, of those in all its paths. When all are read, the dictionary is still
/// being prepared.
using ImportProgress = std::function<void(qint64 done, qint64 total)>;

/// Opens and indexes the dictionary with this main file.
using PrepareDictionary =
    std::function<DictionaryProblem(const QString &mainFile, const std::stop_token &stop)>;

/// Copies dictionaries into the program's own directory.
class DictionaryImporter {
public:
    virtual ~DictionaryImporter() = default;

    /// Imports from files of a dictionary (its other files lie beside it), directories and archives (.tar
    /// with any of the usual compressions, .zip, .7z). Files of one dictionary are one dictionary. The
    /// results are in the order of the paths. May be called on any thread; `progress` is called often, on
    /// that thread.
    virtual QList<ImportResult> import(const QStringList &paths, const std::stop_token &stop,
                                       const ImportProgress &progress) = 0;
};

} // namespace lexiquill
