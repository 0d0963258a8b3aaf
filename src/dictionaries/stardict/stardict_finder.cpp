#include "dictionaries/stardict/stardict_finder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include <utility>
#include <vector>

namespace lexiquill::stardict {

QStringList findDictionaries(const QString &directory) {
    constexpr int maxLevels = 8;
    constexpr int maxEntries = 10'000;
    QStringList found;
    QSet<QString> visited;
    std::vector<std::pair<QString, int>> pending{{directory, 0}};
    for (int entries = 0; !pending.empty();) {
        const auto [path, level] = pending.back();
        pending.pop_back();
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
                if (level < maxLevels)
                    pending.emplace_back(entry, level + 1);
            } else if (entry.endsWith(QStringLiteral(".ifo"))) {
                found.append(entry);
            }
        }
    }
    found.sort();
    QSet<QString> files;
    found.removeIf([&files](const QString &path) {
        const QString real = QFileInfo(path).canonicalFilePath();
        const bool repeated = files.contains(real);
        files.insert(real);
        return repeated;
    });
    return found;
}

} // namespace lexiquill::stardict
