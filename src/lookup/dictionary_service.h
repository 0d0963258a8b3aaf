#pragma once

#include "lookup/dictionary_source_mode.h"
#include "lookup/system_dictionary_service.h"
#include "support/user_defaults.h"

#include <QObject>

#include <optional>

namespace lexiquill {

/// What a lookup found, and the source that it came from.
struct LookupResult {
    std::optional<DictionaryEntry> entry;
    DictionarySourceMode actualMode = DictionarySourceMode::YoudaoOnline;
};

/// The one door for lookups: holds the user's choice of source and asks the sources accordingly.
class DictionaryService : public QObject {
    Q_OBJECT
    Q_PROPERTY(lexiquill::DictionarySourceMode currentMode READ currentMode WRITE setCurrentMode NOTIFY
                   currentModeChanged)

public:
    /// Starts in the mode stored in `defaults`; a missing or unknown one means online. The arguments must
    /// outlive the instance.
    DictionaryService(SystemDictionaryService &offline, UserDefaults &defaults, QObject *parent = nullptr);

    static DictionaryService &shared();

    DictionarySourceMode currentMode() const { return m_currentMode; }
    /// Stores the mode at once, also when it is the same.
    void setCurrentMode(DictionarySourceMode mode);

    /// Looks a word up. Without an answer `actualMode` is the current mode. This build has no online source,
    /// so the online mode goes straight to its fallback.
    LookupResult lookup(const QString &word);

    static const QString userDefaultsKey; ///< "dictionarySourceMode"

Q_SIGNALS:
    void currentModeChanged();

private:
    SystemDictionaryService &m_offline;
    UserDefaults &m_defaults;
    DictionarySourceMode m_currentMode;
};

} // namespace lexiquill
