#include "desktop_search/index/sqlite_search_database.h"
#include "main/modules.h"

namespace lexiquill {

namespace {

class Module final : public SearchIndexModule {
public:
    std::unique_ptr<SearchDatabase> open(const QString &path) override {
        return std::make_unique<SqliteSearchDatabase>(path);
    }
};

} // namespace

} // namespace lexiquill

LEXIQUILL_MODULE(SearchIndexModule, lexiquill::Module)
