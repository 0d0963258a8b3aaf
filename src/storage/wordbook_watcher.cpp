#include "storage/wordbook_watcher.h"

#include "storage/storage_manager.h"

#include <QDir>
#include <QFileInfo>

#include <chrono>

namespace lexiquill {

using namespace std::chrono_literals;

WordbookWatcher::WordbookWatcher(StorageManager &storage, const QString &storageFile, QObject *parent)
    : QObject(parent),
      m_storage(storage) {
    m_pause.setSingleShot(true);
    m_pause.setInterval(100ms);
    connect(&m_pause, &QTimer::timeout, this, [this] { m_storage.followFile(); });
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        // Do not restart the timer: endless changes would delay it forever.
        if (!m_pause.isActive())
            m_pause.start();
    });
    // Watch the directory, because a save replaces the file.
    const QString directory = QFileInfo(storageFile).absolutePath();
    QDir().mkpath(directory);
    m_watcher.addPath(directory);
}

} // namespace lexiquill
