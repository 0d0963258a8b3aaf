#pragma once

#include "desktop_search/index/search_database.h"
#include "desktop_search/search_index.h"
#include "support/background_task.h"

#include <QString>

#include <functional>
#include <memory>

namespace lexiquill {

/// Works on the search database on a thread of its own, which the first submission starts. All members may be
/// called from several threads; finish() not from a completion.
class BackgroundSearchIndex final : public SearchIndex {
public:
    /// Gives access to the database, or null where that is impossible. Called once, on the index's thread.
    using Open = std::function<std::unique_ptr<SearchDatabase>()>;

    /// `path`: the file of the database. Without `open` there is no index.
    BackgroundSearchIndex(QString path, Open open);
    /// Does what has been submitted first.
    ~BackgroundSearchIndex() override;
    Q_DISABLE_COPY_MOVE(BackgroundSearchIndex)

    bool isIndexingAvailable() const override { return m_isAvailable; }
    void indexItems(const ItemSource &makeItems, const Completion &completion) override;
    void deleteItems(const QStringList &identifiers, const Completion &completion) override;
    void deleteDomain(const QString &domain, const Completion &completion) override;
    /// What is not done in time is noted as a gap, which the next reader fills.
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
