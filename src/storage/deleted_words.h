#pragma once

#include "settings/user_defaults.h"
#include "storage/wordbook_change.h"

#include <QSet>
#include <QString>

namespace lexiquill {

/// The words that the user has deleted. With this list, neither an old file nor the server can restore them.
/// It is a setting, which all processes of the user share.
class DeletedWords {
public:
    explicit DeletedWords(UserDefaults &defaults) : m_defaults(defaults) {}

    /// Trimmed and lower-cased.
    QSet<QString> words() const;
    void set(const QSet<QString> &words);
    /// Reads what other processes have written.
    void refresh() { m_defaults.refresh(); }
    /// Updates the list for a change of the wordbook, and returns it.
    QSet<QString> follow(const WordbookChange &change);

    static const QString key; ///< "lexiquill_deleted_words"

private:
    UserDefaults &m_defaults;
};

/// Removes the records of deleted words from a list.
void removeDeleted(QList<WordRecord> &words, const QSet<QString> &deleted);

} // namespace lexiquill
