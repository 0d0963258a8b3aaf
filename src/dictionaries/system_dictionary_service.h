#pragma once

#include "dictionaries/dictionary_shelf.h"
#include "model/dictionary_entry.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <stop_token>

namespace lexiquill {

class DictionaryServices;

/// Answers lookups without a network: from the operating system's dictionary service, where there is one, and
/// from the shelf of dictionaries.
class SystemDictionaryService {
public:
    /// Switches the system's dictionaries on (see ensureDictionariesConfigured()). `shelf` and `system`,
    /// which may be null, must outlive the instance.
    explicit SystemDictionaryService(DictionaryShelf &shelf, DictionaryServices *system = nullptr);

    /// Has the system use every dictionary bundle that is installed, Chinese-English ones first; once per
    /// instance, whether or not any was found. Does nothing without a system service.
    void ensureDictionariesConfigured();

    /// The entry for a word, or nothing when it is blank or unknown.
    std::optional<DictionaryEntry> lookup(const QString &word);
    /// The same, and the form that was asked for if it is another one.
    std::optional<FoundEntry> find(const QString &word);

    /// At most `limit` headwords of the dictionaries for what has been typed so far, the shorter first. This
    /// and the next may be called on any thread, and give up when asked to stop.
    QStringList completions(const QString &typed, qsizetype limit, const std::stop_token &stop = {});
    /// At most `limit` headwords that are spelled nearly like the word, the likeliest first.
    QStringList nearSpellings(const QString &word, qsizetype limit, const std::stop_token &stop = {});

    /// The dictionaries in the order in which they are asked. May take a moment; may be called on any thread.
    QList<DictionaryShelf::Item> dictionaries() { return m_shelf.items(); }

private:
    DictionaryShelf &m_shelf;
    DictionaryServices *m_system;
    bool m_isInitialized = false;
};

} // namespace lexiquill
