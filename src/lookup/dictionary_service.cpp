#include "lookup/dictionary_service.h"

namespace lexiquill {

const QString DictionaryService::userDefaultsKey = QStringLiteral("dictionarySourceMode");

DictionaryService::DictionaryService(OnlineSource &online, SystemDictionaryService &offline,
                                     UserDefaults &defaults, QObject *parent)
    : QObject(parent),
      m_online(online),
      m_offline(offline),
      m_defaults(defaults),
      m_currentMode(dictionarySourceModeFromRawValue(defaults.string(userDefaultsKey))
                        .value_or(DictionarySourceMode::YoudaoOnline)) {}

void DictionaryService::setCurrentMode(DictionarySourceMode mode) {
    m_currentMode = mode;
    m_defaults.set(userDefaultsKey, rawValue(mode));
    Q_EMIT currentModeChanged();
}

QCoro::Task<LookupResult> DictionaryService::lookup(QString word, std::stop_token stop) {
    const DictionarySourceMode mode = m_currentMode;
    const QString trimmed = word.trimmed();
    LookupResult result{.entry = std::nullopt, .actualMode = mode};
    if (trimmed.isEmpty())
        co_return result;
    if (mode == DictionarySourceMode::YoudaoOnline)
        result.entry = co_await m_online.lookup(trimmed, stop);
    if (result.entry || stop.stop_requested())
        co_return result;
    if (auto found = m_offline.find(trimmed)) {
        result = {.entry = std::move(found->entry),
                  .actualMode = DictionarySourceMode::AppleOffline,
                  .askedForm = found->askedForm};
    }
    co_return result;
}

} // namespace lexiquill
