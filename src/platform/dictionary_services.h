#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace lexiquill {

/// An operating system's own dictionary service. Linux has none.
class DictionaryServices {
public:
    virtual ~DictionaryServices() = default;

    /// The plain-text definition of `word` from the active dictionaries, as fields separated by "|":
    /// headword, phonetic (left out when unknown), body. No value when no dictionary knows the word.
    virtual std::optional<QString> copyTextDefinition(const QString &word) = 0;

    /// Names of the entries of a directory; an unreadable or missing one counts as empty.
    virtual QStringList directoryContents(const QString &path) = 0;

    /// Replaces the preference domain `domain` with the single entry `key` = `values` and saves it.
    virtual void setPersistentDomain(const QString &domain, const QString &key,
                                     const QStringList &values) = 0;
};

} // namespace lexiquill
