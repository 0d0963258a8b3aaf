#pragma once

#include "dictionaries/system_dictionary_service.h"
#include "lookup/dictionary_source_mode.h"
#include "lookup/online_source.h"
#include "settings/user_defaults.h"

#include <QObject>

#include <optional>

namespace lexiquill {

/// What a lookup found, and the source that it came from.
struct LookupResult {
    std::optional<DictionaryEntry> entry;
    DictionarySourceMode actualMode = DictionarySourceMode::YoudaoOnline;
    /// The form that was asked for, when the entry is that of its base form ("went": go).
    std::optional<QString> askedForm = std::nullopt;
};

/// The one door for lookups: holds the user's choice of source and asks the sources accordingly.
class DictionaryService : public QObject {
    Q_OBJECT
    Q_PROPERTY(lexiquill::DictionarySourceMode currentMode READ currentMode WRITE setCurrentMode NOTIFY
                   currentModeChanged)

public:
    /// Starts in the mode stored in `defaults`; a missing or unknown one means online. The arguments must
    /// outlive the instance.
    DictionaryService(OnlineSource &online, SystemDictionaryService &offline, UserDefaults &defaults,
                      QObject *parent = nullptr);

    DictionarySourceMode currentMode() const { return m_currentMode; }
    /// Stores the mode at once, also when it is the same.
    void setCurrentMode(DictionarySourceMode mode);

    /// Looks a word up in the current mode: offline, the result is there at once; online, the online source
    /// is asked, and the offline one if that gives nothing. Without an answer `actualMode` is the mode. A
    /// cancelled lookup asks nobody any more and finds nothing.
    QCoro::Task<LookupResult> lookup(QString word, std::stop_token stop = {});

    static const QString userDefaultsKey; ///< "dictionarySourceMode"

Q_SIGNALS:
    void currentModeChanged();

private:
    OnlineSource &m_online;
    SystemDictionaryService &m_offline;
    UserDefaults &m_defaults;
    DictionarySourceMode m_currentMode;
};

} // namespace lexiquill
