#include "dictionaries/dictionary_finder.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace lexiquill {

const DictionaryFormat *formatOf(const QString &path, const std::vector<DictionaryFormat> &formats) {
    const auto matches = [&path](const DictionaryFormat &format) {
        return path.endsWith(format.suffix, Qt::CaseInsensitive) &&
               (!format.isMainFile || format.isMainFile(path));
    };
    const auto found = std::find_if(formats.begin(), formats.end(), matches);
    return found == formats.end() ? nullptr : &*found;
}

std::vector<FoundDictionary> findDictionaries(const QString &directory,
                                              const std::vector<DictionaryFormat> &formats,
                                              std::vector<SearchedDirectory> &searched) {
    constexpr int maxLevels = 8;
    constexpr int maxEntries = 10'000;
    std::vector<FoundDictionary> found;
    QSet<QString> visited;
    std::vector<std::pair<QString, int>> pending{{directory, 0}};
    for (int entries = 0; !pending.empty();) {
        const auto [path, level] = pending.back();
        pending.pop_back();
        // Before it is read, so that later changes are noticed.
        searched.emplace_back(path, stampOfDirectory(path));
        // A link may lead back to a directory that has been searched.
        const QString real = QFileInfo(path).canonicalFilePath();
        if (real.isEmpty() || visited.contains(real))
            continue;
        visited.insert(real);
        QDirIterator iterator(path, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot);
        while (iterator.hasNext() && entries < maxEntries) {
            ++entries;
            const QString entry = iterator.next();
            if (iterator.fileInfo().isDir()) {
                // A folder of pictures and sounds may hold thousands.
                const bool isSearched = iterator.fileName() != QStringLiteral("res");
                if (isSearched && level < maxLevels)
                    pending.emplace_back(entry, level + 1);
            } else if (const DictionaryFormat *format = formatOf(entry, formats)) {
                found.push_back({entry, format});
            }
        }
    }
    std::sort(found.begin(), found.end(), [](const FoundDictionary &left, const FoundDictionary &right) {
        return left.path < right.path;
    });
    QSet<QString> files;
    std::erase_if(found, [&files](const FoundDictionary &each) {
        const QString real = QFileInfo(each.path).canonicalFilePath();
        const bool isRepeated = files.contains(real);
        files.insert(real);
        return isRepeated;
    });
    return found;
}

} // namespace lexiquill
