#include "dictionaries/import/dictionary_files.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <utility>
#include <vector>

namespace lexiquill {

namespace {

/// A kind of dictionary: the suffix of its main file, and those of the files beside it with the same name.
struct Kind {
    QLatin1StringView mainSuffix;
    QRegularExpression others;
    QRegularExpression index;  ///< of `others`, those that hold the headwords
    bool needsOthers = false;  ///< the main file's suffix alone says little
    bool hasResources = false; ///< in a directory beside the main file
};

const std::vector<Kind> &kinds() {
    const auto suffixes = [](const char *pattern) {
        return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromLatin1(pattern)),
                                  QRegularExpression::CaseInsensitiveOption);
    };
    static const std::vector<Kind> all{
        {.mainSuffix = QLatin1StringView(".ifo"),
         .others = suffixes("\\.(idx(\\.gz)?|dict(\\.dz)?|syn(\\.dz)?)"),
         .index = suffixes("\\.idx(\\.gz)?"),
         .hasResources = true},
        {.mainSuffix = QLatin1StringView(".mdx"),
         .others = suffixes("(\\.[0-9]{1,3})?\\.mdd"),
         .index = suffixes("(?!)")},
        {.mainSuffix = QLatin1StringView(".index"),
         .others = suffixes("\\.dict(\\.dz)?"),
         .index = suffixes("(?!)"),
         .needsOthers = true},
    };
    return all;
}

/// The directory with the pictures and sounds of StarDict dictionaries.
const QString resourceDirectory = QStringLiteral("res");
constexpr QDir::Filters plainFiles = QDir::Files | QDir::NoSymLinks;
/// Larger ones are no licences.
constexpr qint64 largestNotice = qint64{1} << 20;

bool isNotice(const QFileInfo &file) {
    static const QRegularExpression form(
        QStringLiteral("\\A(licen[cs]e|copying|copyright|readme)(\\..*)?\\z"),
        QRegularExpression::CaseInsensitiveOption);
    return file.size() <= largestNotice && form.match(file.fileName()).hasMatch();
}

bool isMainFile(const QString &name, const Kind &kind) {
    return name.size() > kind.mainSuffix.size() && name.endsWith(kind.mainSuffix, Qt::CaseInsensitive);
}

/// The files of one directory, sorted by name.
struct Directory {
    QDir path;
    QFileInfoList files;
    QStringList notices;
    QStringList resources; ///< relative to the directory

    Directory(const QDir &directory, QFileInfoList content) : path(directory), files(std::move(content)) {
        std::ranges::sort(files, {}, &QFileInfo::fileName);
        for (const QFileInfo &file : std::as_const(files)) {
            if (isNotice(file))
                notices += file.fileName();
        }
    }

    /// The files whose names begin with `base`.
    QFileInfoList beginningWith(const QString &base) const {
        const auto first = std::ranges::lower_bound(files, base, {}, &QFileInfo::fileName);
        const auto last = std::find_if_not(
            first, files.end(), [&base](const QFileInfo &file) { return file.fileName().startsWith(base); });
        return files.sliced(first - files.begin(), last - first);
    }
};

/// The files in the directory of resources, relative to its parent; at most `most`.
QStringList resourcesIn(const QDir &directory, int most) {
    QStringList found;
    const QFileInfo place(directory.filePath(resourceDirectory));
    if (!place.isDir() || place.isSymLink())
        return found;
    QDirIterator iterator(place.filePath(), plainFiles, QDirIterator::Subdirectories);
    while (iterator.hasNext() && found.size() < most)
        found += directory.relativeFilePath(iterator.next());
    return found;
}

/// The dictionary of a main file; no main file when a needed file is missing.
DictionaryFiles gather(const QFileInfo &mainFile, const Kind &kind, const Directory &directory) {
    const QString base = mainFile.fileName().chopped(kind.mainSuffix.size());
    DictionaryFiles found{.mainFile = mainFile.absoluteFilePath(),
                          .indexFiles = {},
                          .files = QStringList(mainFile.fileName()) + directory.notices};
    bool hasOthers = false;
    for (const QFileInfo &file : directory.beginningWith(base)) {
        const QString rest = file.fileName().mid(base.size());
        if (!kind.others.match(rest).hasMatch())
            continue;
        hasOthers = true;
        found.files += file.fileName();
        if (kind.index.match(rest).hasMatch())
            found.indexFiles += file.absoluteFilePath();
    }
    if (kind.needsOthers && !hasOthers)
        return {};
    if (kind.hasResources)
        found.files += directory.resources;
    return found;
}

} // namespace

QString DictionaryFiles::name() const {
    const QString file = QFileInfo(mainFile).fileName();
    return file.left(file.lastIndexOf(u'.'));
}

FoundDictionaries dictionariesBelow(const QString &path, int depth, int most) {
    FoundDictionaries found;
    std::vector<std::pair<QString, int>> pending{{path, 0}};
    while (!pending.empty()) {
        const auto [place, level] = pending.back();
        pending.pop_back();
        QFileInfoList files;
        QDirIterator iterator(place, QDir::Dirs | plainFiles | QDir::NoDotAndDotDot);
        while (iterator.hasNext()) {
            iterator.next();
            const QFileInfo entry = iterator.fileInfo();
            if (--most < 0) {
                found.isComplete = false;
                return found;
            }
            if (!entry.isDir())
                files += entry;
            else if (level < depth)
                pending.emplace_back(entry.filePath(), level + 1);
        }
        Directory directory(QDir(place), std::move(files));
        directory.resources = resourcesIn(directory.path, most);
        for (const Kind &kind : kinds()) {
            for (const QFileInfo &file : std::as_const(directory.files)) {
                if (!isMainFile(file.fileName(), kind))
                    continue;
                DictionaryFiles dictionary = gather(file, kind, directory);
                if (dictionary.mainFile.isEmpty())
                    continue;
                most -= static_cast<int>(dictionary.files.size());
                found.dictionaries += std::move(dictionary);
            }
        }
    }
    std::ranges::sort(found.dictionaries, {}, &DictionaryFiles::mainFile);
    return found;
}

DictionaryFiles dictionaryOfFile(const QString &path, int most) {
    const QFileInfo given(path);
    Directory directory(given.absoluteDir(), given.absoluteDir().entryInfoList(plainFiles));
    const QString name = given.fileName();
    for (const Kind &kind : kinds()) {
        for (const QFileInfo &candidate : std::as_const(directory.files)) {
            if (!isMainFile(candidate.fileName(), kind))
                continue;
            const QString base = candidate.fileName().chopped(kind.mainSuffix.size());
            const bool isPart = name.startsWith(base) && kind.others.match(name.mid(base.size())).hasMatch();
            if (name != candidate.fileName() && !isPart)
                continue;
            directory.resources = resourcesIn(directory.path, most);
            if (DictionaryFiles found = gather(candidate, kind, directory); !found.mainFile.isEmpty())
                return found;
        }
    }
    return {};
}

} // namespace lexiquill
