#include "dictionaries/import/file_importer.h"
#include "main/modules.h"

namespace lexiquill {

namespace {

class Module final : public DictionaryImportModule {
public:
    std::unique_ptr<DictionaryImporter> importerInto(const QString &directory,
                                                     PrepareDictionary prepare) override {
        return std::make_unique<FileImporter>(directory, std::move(prepare));
    }
};

} // namespace

} // namespace lexiquill

LEXIQUILL_MODULE(DictionaryImportModule, lexiquill::Module)
