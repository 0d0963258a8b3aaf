#include "lookup/system_dictionary_service.h"

#include "lookup/definition_parser.h"

namespace lexiquill {

namespace {

const QString assetDirectory =
    QStringLiteral("/System/Library/AssetsV2/com_apple_MobileAsset_DictionaryServices_dictionaryOSX");
const QString localDirectory = QStringLiteral("/Library/Dictionaries");

QStringList bundlesIn(DictionaryServices &services, const QString &directory) {
    QStringList paths;
    for (const QString &name : services.directoryContents(directory)) {
        if (name.endsWith(QLatin1StringView(".dictionary")))
            paths += directory + u'/' + name;
    }
    return paths;
}

bool isChineseEnglish(const QString &path) {
    // Covers "simplified chinese - english" too.
    return path.toLower().contains(QLatin1StringView("chinese - english"));
}

} // namespace

SystemDictionaryService::SystemDictionaryService(DictionaryServices &services) : m_services(services) {
    ensureDictionariesConfigured();
}

void SystemDictionaryService::ensureDictionariesConfigured() {
    if (m_isInitialized)
        return;
    m_isInitialized = true;

    QStringList candidates;
    for (const QString &asset : m_services.directoryContents(assetDirectory))
        candidates += bundlesIn(m_services, assetDirectory + u'/' + asset + QLatin1StringView("/AssetData"));
    candidates += bundlesIn(m_services, localDirectory);
    if (candidates.isEmpty())
        return;

    QStringList ordered;
    for (const QString &path : std::as_const(candidates)) {
        if (isChineseEnglish(path))
            ordered.prepend(path);
        else
            ordered.append(path);
    }
    m_services.setPersistentDomain(QStringLiteral("com.apple.DictionaryServices"),
                                   QStringLiteral("DCSActiveDictionaries"), ordered);
}

std::optional<DictionaryEntry> SystemDictionaryService::lookup(const QString &word) {
    const QString trimmed = word.trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;
    const auto definition = m_services.copyTextDefinition(trimmed);
    if (!definition)
        return std::nullopt;
    return parseDefinition(*definition, trimmed);
}

QStringList SystemDictionaryService::completions(const QString &typed, qsizetype limit,
                                                 const std::stop_token &stop) {
    return m_services.headwordsStartingWith(typed, limit, stop);
}

QStringList SystemDictionaryService::nearSpellings(const QString &word, qsizetype limit,
                                                   const std::stop_token &stop) {
    return m_services.headwordsSimilarTo(word, limit, stop);
}

} // namespace lexiquill
