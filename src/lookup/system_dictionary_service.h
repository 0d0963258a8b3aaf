#pragma once

#include "model/dictionary_entry.h"
#include "platform/dictionary_services.h"

#include <QString>

#include <optional>

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

private:
    DictionaryServices &m_services;
    bool m_isInitialized = false;
};

} // namespace lexiquill
