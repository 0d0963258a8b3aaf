#include "desktop_search/index/background_search_index.h"

#include <utility>

namespace lexiquill {

namespace {

/// Longer than the database itself waits for other processes.
constexpr int longestWaitMilliseconds = SearchDatabase::patienceMilliseconds + 1000;

} // namespace

BackgroundSearchIndex::BackgroundSearchIndex(QString path, Open open)
    : m_path(std::move(path)),
      m_isAvailable(open != nullptr),
      m_open(std::move(open)) {}

BackgroundSearchIndex::~BackgroundSearchIndex() {
    m_queue.finish();
}

void BackgroundSearchIndex::indexItems(const ItemSource &makeItems, const Completion &completion) {
    enqueue([makeItems](SearchDatabase &database) { return database.put(makeItems()); }, completion);
}

void BackgroundSearchIndex::deleteItems(const QStringList &identifiers, const Completion &completion) {
    enqueue([identifiers](SearchDatabase &database) { return database.removeItems(identifiers); },
            completion);
}

void BackgroundSearchIndex::deleteDomain(const QString &domain, const Completion &completion) {
    enqueue([domain](SearchDatabase &database) { return database.removeDomain(domain); }, completion);
}

void BackgroundSearchIndex::enqueue(const Work &work, const Completion &completion) {
    m_queue.add([this, work, completion] {
        if (const Open open = std::exchange(m_open, nullptr))
            m_database = open();
        const Error error =
            m_database ? work(*m_database) : Error(SearchIndexError{SearchIndexError::Kind::Unavailable});
        if (completion)
            completion(error);
    });
}

void BackgroundSearchIndex::finish() {
    if (!m_queue.finish(longestWaitMilliseconds))
        SearchDatabase::noteGap(m_path);
}

} // namespace lexiquill
