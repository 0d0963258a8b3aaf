#include "main/loaded_dictionary_importer.h"

#include "dictionaries/dictionary_shelf.h"
#include "main/modules.h"

#include <QFileInfo>

namespace lexiquill {

QList<ImportResult> LoadedDictionaryImporter::import(const QStringList &paths, const std::stop_token &stop,
                                                     const ImportProgress &progress) {
    std::call_once(m_once, [this] {
        auto *const module = loadModule<DictionaryImportModule>();
        const auto prepare = [this](const QString &mainFile, const std::stop_token &cancelled) {
            const DictionaryProblem problem = m_shelf.prepare(mainFile);
            // It will not stay.
            if (problem != DictionaryProblem::None || cancelled.stop_requested())
                m_shelf.dropIndex(mainFile);
            return problem;
        };
        if (module != nullptr)
            m_importer = module->importerInto(DictionaryShelf::importedDirectory(), prepare);
    });
    if (m_importer)
        return m_importer->import(paths, stop, progress);
    QList<ImportResult> results;
    for (const QString &path : paths)
        results += {.source = path,
                    .name = QFileInfo(path).fileName(),
                    .mainFile = {},
                    .problem = ImportProblem::NoLibrary};
    return results;
}

} // namespace lexiquill
