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
    /// The form that was asked for, if the entry is that of its base form ("went" for the entry "go").
    std::optional<QString> askedForm = std::nullopt;
};

/// The single entry point for lookups: stores the user's choice of source and asks the sources accordingly.
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
    /// Stores the mode at once, even if it is unchanged.
    void setCurrentMode(DictionarySourceMode mode);

    /// Looks a word up in the current mode. Offline, the result is available at once. Online, the online
    /// source is asked first, and the offline one if that finds nothing. If nothing is found, `actualMode` is
    /// the current mode. A cancelled lookup asks no further source and finds nothing.
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
