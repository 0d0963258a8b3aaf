#pragma once

#include "platform/scratch_directory.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

namespace lexiquill {

class DictionaryShelf;

/// Imported dictionaries that the user has removed. They lie in hidden directories until this object is
/// destroyed, so that every removal can be undone until then, the last one first.
class RemovedDictionaries {
public:
    /// `shelf` must outlive the instance.
    explicit RemovedDictionaries(DictionaryShelf &shelf) : m_shelf(shelf) {}
    ~RemovedDictionaries();
    Q_DISABLE_COPY_MOVE(RemovedDictionaries)

    /// Removes the dictionary with this main file; false when that is not possible.
    bool remove(const QString &mainFile, const QString &name);
    /// Puts the last removed dictionary back and returns its name; null when that is not possible. It is then
    /// no longer undoable. If another dictionary has taken its place, it gets a new one.
    QString undo();
    /// The name of the dictionary that undo() would put back; null if there is none.
    QString last() const { return m_removals.empty() ? QString() : m_removals.back().name; }

    /// Deletes what an earlier process could not delete at its end.
    static void deleteLeftOvers();

private:
    struct Removal {
        QString name;
        QString mainFile;                         ///< where it was
        QList<std::pair<QString, QString>> moved; ///< the name in the hidden directory, and the path before
        std::unique_ptr<ScratchDirectory> scratch;
    };

    /// What belongs to the dictionary only: its own directory, or else its files.
    QStringList partsOf(const QString &mainFile) const;

    DictionaryShelf &m_shelf;
    std::vector<Removal> m_removals;
};

} // namespace lexiquill
