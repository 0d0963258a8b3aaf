#pragma once

#include "dictionaries/import/dictionary_importer.h"

#include <memory>
#include <mutex>

namespace lexiquill {

class DictionaryShelf;

/// The importer of the import library, for the shelf's own directory. The library is loaded at the first
/// import; if it is missing or broken, nothing is imported.
class LoadedDictionaryImporter final : public DictionaryImporter {
public:
    /// `shelf` must outlive the instance.
    explicit LoadedDictionaryImporter(DictionaryShelf &shelf) : m_shelf(shelf) {}

    QList<ImportResult> import(const QStringList &paths, const std::stop_token &stop,
                               const ImportProgress &progress) override;

private:
    DictionaryShelf &m_shelf;
    std::once_flag m_once;
    std::unique_ptr<DictionaryImporter> m_importer;
};

} // namespace lexiquill
