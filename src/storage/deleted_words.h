#pragma once

#include "settings/user_defaults.h"
#include "storage/wordbook_change.h"

#include <QSet>
#include <QString>

namespace lexiquill {

/// The words that the user has deleted, so that neither an old file nor the server brings them back. They are
/// a setting, which all processes of the user share.
class DeletedWords {
public:
    explicit DeletedWords(UserDefaults &defaults) : m_defaults(defaults) {}

    /// Trimmed and lower-cased.
    QSet<QString> words() const;
    void set(const QSet<QString> &words);
    /// Takes in what other processes have written.
    void refresh() { m_defaults.refresh(); }
    /// Brings the list in step with a change of the wordbook, and returns it.
    QSet<QString> follow(const WordbookChange &change);

    static const QString key; ///< "lexiquill_deleted_words"

private:
    UserDefaults &m_defaults;
};

/// Takes the records of deleted words out of a list.
void removeDeleted(QList<WordRecord> &words, const QSet<QString> &deleted);

} // namespace lexiquill
