#pragma once

#include "dictionaries/dictionary_shelf.h"
#include "model/dictionary_entry.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <stop_token>

namespace lexiquill {

class DictionaryServices;

/// Looks up words offline: in the operating system's dictionary service, if there is one, and on the
/// dictionary shelf.
class SystemDictionaryService {
public:
    /// Activates the system's dictionaries (see ensureDictionariesConfigured()). `shelf` and `system`, which
    /// may be null, must outlive the instance.
    explicit SystemDictionaryService(DictionaryShelf &shelf, DictionaryServices *system = nullptr);

    /// Makes the system use every installed dictionary bundle, Chinese-English ones first. Done once per
    /// instance, even if none was found. Does nothing without a system service.
    void ensureDictionariesConfigured();

    /// The entry for a word, or no value when it is blank or unknown.
    std::optional<DictionaryEntry> lookup(const QString &word);
    /// The same, with the form that was asked for if it differs.
    std::optional<FoundEntry> find(const QString &word);

    /// At most `limit` headwords that start with `typed`, most likely ones first. This function and the next
    /// one may be called on any thread and stop early on request.
    QStringList completions(const QString &typed, qsizetype limit, const std::stop_token &stop = {});
    /// At most `limit` headwords with a spelling similar to the word, most likely ones first.
    QStringList nearSpellings(const QString &word, qsizetype limit, const std::stop_token &stop = {});
    /// One line on the meaning of each word; empty for an unknown word. May be called on any thread.
    QStringList summaries(const QStringList &words, const std::stop_token &stop = {});

    /// The dictionaries in the order in which they are asked. May take a moment; may be called on any thread.
    QList<DictionaryShelf::Item> dictionaries() { return m_shelf.items(); }

private:
    DictionaryShelf &m_shelf;
    DictionaryServices *m_system;
    bool m_isInitialized = false;
};

} // namespace lexiquill
