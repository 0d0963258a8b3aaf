#include "dictionaries/system_configuration.h"

namespace lexiquill {

namespace {

const QString assetDirectory =
    QStringLiteral("/System/Library/AssetsV2/com_apple_MobileAsset_DictionaryServices_dictionaryOSX");
const QString localDirectory = QStringLiteral("/Library/Dictionaries");

QStringList bundlesIn(const DirectoryContents &contentsOf, const QString &directory) {
    QStringList paths;
    for (const QString &name : contentsOf(directory)) {
        if (name.endsWith(QLatin1StringView(".dictionary")))
            paths += directory + u'/' + name;
    }
    return paths;
}

} // namespace

QStringList dictionaryBundles(const DirectoryContents &contentsOf) {
    QStringList bundles;
    for (const QString &asset : contentsOf(assetDirectory))
        bundles += bundlesIn(contentsOf, assetDirectory + u'/' + asset + QLatin1StringView("/AssetData"));
    return bundles + bundlesIn(contentsOf, localDirectory);
}

QStringList activationOrder(const QStringList &bundles) {
    QStringList ordered;
    for (const QString &path : bundles) {
        // Covers "simplified chinese - english" too.
        if (path.toLower().contains(QLatin1StringView("chinese - english")))
            ordered.prepend(path);
        else
            ordered.append(path);
    }
    return ordered;
}

} // namespace lexiquill
