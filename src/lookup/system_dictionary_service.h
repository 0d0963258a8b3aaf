#pragma once

#include "model/dictionary_entry.h"
#include "platform/dictionary_services.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <stop_token>

namespace lexiquill {

/// Answers lookups from the dictionaries that the operating system keeps on disk.
class SystemDictionaryService {
public:
    /// Switches the system's dictionaries on (see ensureDictionariesConfigured()). `services` must outlive
    /// the instance.
    explicit SystemDictionaryService(DictionaryServices &services);

    static SystemDictionaryService &shared();

    /// Activates every installed dictionary bundle, Chinese-English ones first; once per instance, whether
    /// or not any was found.
    void ensureDictionariesConfigured();

    /// The entry for a word, or nothing when it is blank or unknown.
    std::optional<DictionaryEntry> lookup(const QString &word);

    /// At most `limit` headwords of the dictionaries for what has been typed so far, the shorter first. This
    /// and the next may be called on any thread, and give up when asked to stop.
    QStringList completions(const QString &typed, qsizetype limit, const std::stop_token &stop = {});
    /// At most `limit` headwords that are spelled nearly like the word, the likeliest first.
    QStringList nearSpellings(const QString &word, qsizetype limit, const std::stop_token &stop = {});

    /// The dictionaries in the order in which they are asked. May take a moment; may be called on any thread.
    QList<DictionaryServices::ActiveDictionary> activeDictionaries() {
        return m_services.activeDictionaries();
    }

private:
    DictionaryServices &m_services;
    bool m_isInitialized = false;
};

} // namespace lexiquill
