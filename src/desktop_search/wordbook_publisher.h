#pragma once

#include <QObject>

namespace lexiquill {

class SpotlightManager;
class StorageManager;

/// Keeps the system's search in step with the wordbook. It is told of a change before that is saved, so the
/// index works beside the save.
class WordbookPublisher : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the instance.
    WordbookPublisher(StorageManager &storage, const SpotlightManager &spotlight, QObject *parent = nullptr);
};

} // namespace lexiquill
