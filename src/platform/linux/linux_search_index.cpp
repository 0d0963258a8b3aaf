#include "platform/linux/linux_search_index.h"

#include "platform/linux/search_database.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace lexiquill {

namespace {

/// SQLite itself may wait ten seconds for a process that has stopped at the worst moment.
constexpr std::chrono::seconds longestWait{2};

} // namespace

LinuxSearchIndex::~LinuxSearchIndex() {
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
        m_changed.notify_all();
    }
    if (m_thread.joinable())
        m_thread.join();
}

bool LinuxSearchIndex::isIndexingAvailable() const {
    return SearchDatabase::isAvailable();
}

void LinuxSearchIndex::indexItems(const ItemSource &makeItems, const Completion &completion) {
    enqueue({.work = [makeItems](SearchDatabase &database) { return database.put(makeItems()); },
             .completion = completion});
}

void LinuxSearchIndex::deleteItems(const QStringList &identifiers, const Completion &completion) {
    enqueue({.work = [identifiers](SearchDatabase &database) { return database.removeItems(identifiers); },
             .completion = completion});
}

void LinuxSearchIndex::deleteDomain(const QString &domain, const Completion &completion) {
    enqueue({.work = [domain](SearchDatabase &database) { return database.removeDomain(domain); },
             .completion = completion});
}

void LinuxSearchIndex::enqueue(Job job) {
    try {
        const std::lock_guard lock(m_mutex);
        if (!m_thread.joinable())
            m_thread = std::thread(&LinuxSearchIndex::run, this);
    } catch (const std::system_error &) {
        if (job.completion)
            job.completion(QStringLiteral("系统资源不足，无法启动线程"));
        return;
    }
    const std::lock_guard lock(m_mutex);
    m_jobs.push_back(std::move(job));
    m_changed.notify_all();
}

void LinuxSearchIndex::run() {
    const auto database = SearchDatabase::load(m_path);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_isEnding || !m_jobs.empty(); });
        if (m_jobs.empty())
            return;
        // References to the elements of a deque outlive additions.
        const Job &job = m_jobs.front();
        lock.unlock();
        const Error error = database ? job.work(*database) : QStringLiteral("无法加载搜索索引组件");
        if (job.completion)
            job.completion(error);
        lock.lock();
        m_jobs.pop_front();
        m_changed.notify_all();
    }
}

void LinuxSearchIndex::finish() {
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, longestWait, [this] { return m_jobs.empty(); });
}

} // namespace lexiquill
