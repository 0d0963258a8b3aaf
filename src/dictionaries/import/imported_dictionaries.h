#pragma once

#include "dictionaries/import/dictionary_files.h"

#include <QList>
#include <QString>

#include <optional>
#include <stop_token>

namespace lexiquill {

/// The directory of the imported dictionaries, as it was when this object was made.
class ImportedDictionaries {
public:
    explicit ImportedDictionaries(QString directory);

    const QString &path() const { return m_directory; }
    /// Whether a path without links lies in the directory; what is in hidden directories does not count.
    bool holds(const QString &path) const;
    /// Whether a dictionary with the same main file and index is there. Compares their content if the sizes
    /// are equal.
    bool hasSame(const DictionaryFiles &dictionary, const std::stop_token &stop) const;
    void add(DictionaryFiles dictionary) { m_dictionaries += std::move(dictionary); }
    /// A path in the directory that is free now, for a directory with a name like this.
    QString freePath(const QString &name) const;

private:
    QString m_directory;
    QList<DictionaryFiles> m_dictionaries;
};

/// The dictionary after its files have been moved to another directory.
DictionaryFiles movedTo(const QString &directory, const DictionaryFiles &dictionary);

} // namespace lexiquill
