#pragma once

#include "dictionaries/import/dictionary_importer.h"
#include "dictionaries/import/import_limits.h"

namespace lexiquill {

/// Copies every dictionary into a directory of its own and tries it there. What is not complete has a hidden
/// name and is removed after a failure, by the next import at the latest.
class FileImporter final : public DictionaryImporter {
public:
    /// `directory`: for the imported dictionaries; created when needed.
    FileImporter(QString directory, PrepareDictionary prepare, const ImportLimits &limits = {});

    QList<ImportResult> import(const QStringList &paths, const std::stop_token &stop = {},
                               const ImportProgress &progress = {}) override;

private:
    QString m_directory;
    PrepareDictionary m_prepare;
    ImportLimits m_limits;
};

} // namespace lexiquill
