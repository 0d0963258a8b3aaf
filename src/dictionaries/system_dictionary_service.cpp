#include "dictionaries/system_dictionary_service.h"

#include "dictionaries/article/definition_parser.h"
#include "dictionaries/system_configuration.h"
#include "platform/dictionary_services.h"

namespace lexiquill {

SystemDictionaryService::SystemDictionaryService(DictionaryShelf &shelf, DictionaryServices *system)
    : m_shelf(shelf),
      m_system(system) {
    ensureDictionariesConfigured();
}

void SystemDictionaryService::ensureDictionariesConfigured() {
    if (m_isInitialized)
        return;
    m_isInitialized = true;
    if (m_system == nullptr)
        return;
    const QStringList bundles =
        dictionaryBundles([this](const QString &path) { return m_system->directoryContents(path); });
    if (!bundles.isEmpty())
        m_system->setPersistentDomain(QStringLiteral("com.apple.DictionaryServices"),
                                      QStringLiteral("DCSActiveDictionaries"), activationOrder(bundles));
}

std::optional<DictionaryEntry> SystemDictionaryService::lookup(const QString &word) {
    if (auto found = find(word))
        return std::move(found->entry);
    return std::nullopt;
}

std::optional<FoundEntry> SystemDictionaryService::find(const QString &word) {
    const QString trimmed = word.trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;
    if (const auto definition = m_system != nullptr ? m_system->copyTextDefinition(trimmed) : std::nullopt)
        return FoundEntry{parseDefinition(*definition, trimmed)};
    return m_shelf.find(trimmed);
}

QStringList SystemDictionaryService::completions(const QString &typed, qsizetype limit,
                                                 const std::stop_token &stop) {
    return m_shelf.headwordsStartingWith(typed, limit, stop);
}

QStringList SystemDictionaryService::summaries(const QStringList &words, const std::stop_token &stop) {
    return m_shelf.summariesOf(words, stop);
}

QStringList SystemDictionaryService::nearSpellings(const QString &word, qsizetype limit,
                                                   const std::stop_token &stop) {
    return m_shelf.headwordsSimilarTo(word, limit, stop);
}

} // namespace lexiquill
