#include "app/dictionaries/removed_dictionaries.h"

#include "dictionaries/dictionary_shelf.h"

#include <QDir>
#include <QFileInfo>

namespace lexiquill {

namespace {

const QString scratchPrefix = QStringLiteral(".removed-");

} // namespace

/// Their indexes go with them.
RemovedDictionaries::~RemovedDictionaries() {
    for (const Removal &removal : m_removals) {
        if (!QFileInfo::exists(removal.mainFile))
            m_shelf.dropIndex(removal.mainFile);
    }
}

QStringList RemovedDictionaries::partsOf(const QString &mainFile) const {
    const QDir imported(DictionaryShelf::importedDirectory());
    const QString inside = imported.relativeFilePath(mainFile);
    if (!inside.contains(u'/') || inside.startsWith(QLatin1StringView("../")))
        return m_shelf.files(mainFile);
    const QString directory = imported.filePath(inside.section(u'/', 0, 0));
    return m_shelf.mainFiles(directory).size() > 1 ? m_shelf.files(mainFile) : QStringList(directory);
}

bool RemovedDictionaries::remove(const QString &mainFile, const QString &name) {
    Removal removal{.name = name,
                    .mainFile = mainFile,
                    .moved = {},
                    .scratch = ScratchDirectory::create(DictionaryShelf::importedDirectory(), scratchPrefix)};
    if (!removal.scratch)
        return false;
    for (const QString &part : partsOf(mainFile)) {
        const QString hidden = QString::number(removal.moved.size());
        if (removal.scratch->moveIn(part, hidden) == ScratchDirectory::Problem::None)
            removal.moved += {hidden, part};
    }
    if (removal.moved.isEmpty())
        return false;
    m_removals.push_back(std::move(removal));
    return true;
}

QString RemovedDictionaries::undo() {
    if (m_removals.empty())
        return {};
    Removal removal = std::move(m_removals.back());
    m_removals.pop_back();
    bool isBack = true;
    for (const auto &[hidden, path] : std::as_const(removal.moved)) {
        const QString kept = removal.scratch->path() + u'/' + hidden;
        isBack =
            QDir().rename(kept, QFileInfo(kept).isDir() ? ScratchDirectory::freePath(path) : path) && isBack;
    }
    return isBack ? removal.name : QString();
}

void RemovedDictionaries::deleteLeftOvers() {
    ScratchDirectory::removeAbandoned(DictionaryShelf::importedDirectory(), scratchPrefix);
}

} // namespace lexiquill
