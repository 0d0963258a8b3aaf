#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace lexiquill {

class StorageManager;

/// Loads what other processes write to the wordbook, shortly after they have written it.
class WordbookWatcher : public QObject {
    Q_OBJECT

public:
    /// `storage` must outlive the instance. `storageFile` is its file; its directory is created if it is
    /// missing.
    WordbookWatcher(StorageManager &storage, const QString &storageFile, QObject *parent = nullptr);

private:
    StorageManager &m_storage;
    QFileSystemWatcher m_watcher;
    QTimer m_pause; ///< several changes in a row count as one
};

} // namespace lexiquill
