#pragma once

#include "platform/search_index.h"

#include <QString>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace lexiquill {

class SearchDatabase;

/// The search index that the desktop's own search reads through lexiquill-search-provider. One thread,
/// started by the first submission, does all the work. All members may be called from several threads;
/// finish() not from a completion.
class LinuxSearchIndex final : public SearchIndex {
public:
    /// `path`: the SQLite file.
    explicit LinuxSearchIndex(QString path) : m_path(std::move(path)) {}
    /// Does what has been submitted first.
    ~LinuxSearchIndex() override;
    Q_DISABLE_COPY_MOVE(LinuxSearchIndex)

    bool isIndexingAvailable() const override;
    void indexItems(const ItemSource &makeItems, const Completion &completion) override;
    void deleteItems(const QStringList &identifiers, const Completion &completion) override;
    void deleteDomain(const QString &domain, const Completion &completion) override;
    void finish() override;

private:
    struct Job {
        std::function<Error(SearchDatabase &database)> work;
        Completion completion;
    };

    void enqueue(Job job);
    void run();

    QString m_path;
    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_changed;
    std::deque<Job> m_jobs; ///< the first one is being done
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace lexiquill
