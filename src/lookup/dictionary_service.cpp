#include "lookup/dictionary_service.h"

namespace lexiquill {

const QString DictionaryService::userDefaultsKey = QStringLiteral("dictionarySourceMode");

DictionaryService::DictionaryService(SystemDictionaryService &offline, UserDefaults &defaults,
                                     QObject *parent)
    : QObject(parent),
      m_offline(offline),
      m_defaults(defaults),
      m_currentMode(dictionarySourceModeFromRawValue(defaults.string(userDefaultsKey))
                        .value_or(DictionarySourceMode::YoudaoOnline)) {}

void DictionaryService::setCurrentMode(DictionarySourceMode mode) {
    m_currentMode = mode;
    m_defaults.set(userDefaultsKey, rawValue(mode));
    Q_EMIT currentModeChanged();
}

LookupResult DictionaryService::lookup(const QString &word) {
    const DictionarySourceMode mode = m_currentMode;
    const QString trimmed = word.trimmed();
    if (trimmed.isEmpty())
        return {.entry = std::nullopt, .actualMode = mode};
    auto entry = m_offline.lookup(trimmed);
    const DictionarySourceMode actualMode = entry ? DictionarySourceMode::AppleOffline : mode;
    return {.entry = std::move(entry), .actualMode = actualMode};
}

} // namespace lexiquill
