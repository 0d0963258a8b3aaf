#pragma once

#include "desktop_search/index/search_database.h"
#include "desktop_search/search_index.h"
#include "support/background_task.h"

#include <QString>

#include <functional>
#include <memory>

namespace lexiquill {

/// Does all work on the search database on its own thread, which the first submission starts. All members may
/// be called from several threads, but finish() must not be called from a completion.
class BackgroundSearchIndex final : public SearchIndex {
public:
    /// Returns the database, or null if that is impossible. Called once, on the index's thread.
    using Open = std::function<std::unique_ptr<SearchDatabase>()>;

    /// `path`: the file of the database. Without `open` there is no index.
    BackgroundSearchIndex(QString path, Open open);
    /// Waits until all submitted work is done.
    ~BackgroundSearchIndex() override;
    Q_DISABLE_COPY_MOVE(BackgroundSearchIndex)

    bool isIndexingAvailable() const override { return m_isAvailable; }
    void indexItems(const ItemSource &makeItems, const Completion &completion) override;
    void deleteItems(const QStringList &identifiers, const Completion &completion) override;
    void deleteDomain(const QString &domain, const Completion &completion) override;
    /// Work that is not done in time is recorded as a gap, which the next reader fills.
    void finish() override;

private:
    using Work = std::function<Error(SearchDatabase &database)>;

    void enqueue(const Work &work, const Completion &completion);

    QString m_path;
    bool m_isAvailable;
    Open m_open;
    std::unique_ptr<SearchDatabase> m_database; ///< used only by the thread
    BackgroundQueue m_queue;
};

} // namespace lexiquill
