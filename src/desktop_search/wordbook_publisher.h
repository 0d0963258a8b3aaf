#pragma once

#include <QObject>

namespace lexiquill {

class SpotlightManager;
class StorageManager;

/// Keeps the desktop search in sync with the wordbook. It is notified before a change is saved, so indexing
/// and saving run in parallel.
class WordbookPublisher : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the instance.
    WordbookPublisher(StorageManager &storage, const SpotlightManager &spotlight, QObject *parent = nullptr);
};

} // namespace lexiquill
