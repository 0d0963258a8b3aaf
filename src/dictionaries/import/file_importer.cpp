#include "dictionaries/import/file_importer.h"

#include "dictionaries/import/archive.h"
#include "dictionaries/import/import_problems.h"
#include "dictionaries/import/imported_dictionaries.h"
#include "platform/scratch_directory.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStorageInfo>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace lexiquill {

namespace {

using Problem = DurableFile::Problem;

const QString scratchPrefix = QStringLiteral(".import-");

/// One path of an import.
struct Source {
    QString path; ///< as given
    QString file; ///< without links
    QList<DictionaryFiles> dictionaries = {};
    bool isArchive = false;
    bool isRepeated = false; ///< part of what an earlier path has given
    qint64 size = 0;         ///< bytes to be read
    ImportProblem problem = ImportProblem::None;
};

QString directoryOf(const DictionaryFiles &dictionary) {
    return QFileInfo(dictionary.mainFile).path();
}

qint64 sizeOf(const DictionaryFiles &dictionary) {
    const QDir directory(directoryOf(dictionary));
    qint64 size = 0;
    for (const QString &file : dictionary.files)
        size += QFileInfo(directory.filePath(file)).size();
    return size;
}

/// One run of an import.
class Import {
public:
    Import(const QString &directory, const PrepareDictionary &prepare, const ImportLimits &limits,
           const std::stop_token &stop, const ImportProgress &progress)
        : m_imported(directory),
          m_prepare(prepare),
          m_limits(limits),
          m_stop(stop),
          m_progress(progress) {}

    QList<ImportResult> run(const QStringList &paths) {
        ScratchDirectory::removeAbandoned(m_imported.path(), scratchPrefix);
        std::vector<Source> sources;
        for (const QString &path : paths) {
            sources.push_back(examine(path));
            m_total += sources.back().size;
        }
        for (const Source &source : sources) {
            m_sourceEnd += source.size;
            if (source.isRepeated)
                continue;
            const ImportProblem problem = take(source);
            m_scratch.reset();
            if (problem != ImportProblem::None)
                report(source, QFileInfo(source.path).fileName(), problem);
            // Not all of an archive must be read.
            advance(m_sourceEnd - m_done);
        }
        return m_results;
    }

private:
    Source examine(const QString &path) {
        Source source{.path = path, .file = QFileInfo(path).canonicalFilePath()};
        const QFileInfo info(source.file);
        if (source.file.isEmpty() || !info.isReadable() || !(info.isFile() || info.isDir())) {
            source.problem = ImportProblem::Unreadable;
        } else if (m_imported.holds(source.file)) {
            source.problem = ImportProblem::AlreadyThere;
        } else if (info.isDir()) {
            FoundDictionaries found = dictionariesBelow(source.file, m_limits.depth, m_limits.files);
            addNew(source, std::move(found.dictionaries));
            if (!found.isComplete)
                source.problem = ImportProblem::TooLarge;
        } else if (DictionaryFiles found = dictionaryOfFile(source.file, m_limits.files);
                   !found.mainFile.isEmpty()) {
            addNew(source, {std::move(found)});
        } else {
            source.isArchive = true;
            source.size = info.size();
        }
        return source;
    }

    /// Several of the paths may belong to one dictionary.
    void addNew(Source &source, QList<DictionaryFiles> found) {
        for (DictionaryFiles &dictionary : found) {
            if (m_mainFiles.contains(dictionary.mainFile))
                continue;
            m_mainFiles.insert(dictionary.mainFile);
            source.size += sizeOf(dictionary);
            source.dictionaries += std::move(dictionary);
        }
        if (source.size > m_limits.size)
            source.problem = ImportProblem::TooLarge;
        else if (found.isEmpty())
            source.problem = ImportProblem::NoDictionary;
        source.isRepeated = !found.isEmpty() && source.dictionaries.isEmpty();
    }

    /// Returns a problem with the whole path.
    ImportProblem take(const Source &source) {
        if (m_stop.stop_requested())
            return ImportProblem::Cancelled;
        if (source.problem != ImportProblem::None)
            return source.problem;
        Problem problem = Problem::None;
        m_scratch = ScratchDirectory::create(m_imported.path(), scratchPrefix, &problem);
        if (!m_scratch)
            return importProblem(problem);
        const QStorageInfo storage(m_imported.path());
        if (storage.isValid() && storage.bytesAvailable() < source.size)
            return ImportProblem::NoSpace;
        if (source.isArchive)
            return takeArchive(source);
        for (const DictionaryFiles &dictionary : source.dictionaries)
            takeDictionary(source, dictionary, [&](const QString &name) { return copy(dictionary, name); });
        return ImportProblem::None;
    }

    ImportProblem takeArchive(const Source &source) {
        static const QString unpacked = QStringLiteral("unpacked");
        CountedFile file(source.file, m_stop, [this](qint64 size) { advance(size); });
        if (!file.isOpen())
            return ImportProblem::Unreadable;
        const ImportProblem problem = unpack(file, *m_scratch, unpacked, m_limits);
        // Files that are dropped on the window need not even claim to be archives.
        if (problem == ImportProblem::Damaged && !hasArchiveName(source.file))
            return ImportProblem::NoDictionary;
        if (problem != ImportProblem::None)
            return problem;
        // Dictionaries may share files.
        const FoundDictionaries found =
            dictionariesBelow(m_scratch->path() + u'/' + unpacked, m_limits.depth, 2 * m_limits.files);
        if (!found.isComplete)
            return ImportProblem::TooLarge;
        const bool isOnly = found.dictionaries.size() == 1;
        for (const DictionaryFiles &dictionary : found.dictionaries)
            takeDictionary(source, dictionary,
                           [&](const QString &name) { return place(dictionary, name, isOnly); });
        return found.dictionaries.isEmpty() ? ImportProblem::NoDictionary : ImportProblem::None;
    }

    /// Imports one dictionary; `collect` brings its files into a directory of that name in the scratch
    /// directory.
    template <typename Collect>
    void takeDictionary(const Source &source, const DictionaryFiles &dictionary, Collect collect) {
        if (m_stop.stop_requested())
            return report(source, dictionary.name(), ImportProblem::Cancelled);
        if (m_imported.hasSame(dictionary, m_stop))
            return report(source, dictionary.name(), ImportProblem::AlreadyThere);
        const QString name = QString::number(m_results.size());
        if (const ImportProblem problem = collect(name); problem != ImportProblem::None)
            return report(source, dictionary.name(), problem);
        publish(source, dictionary, name);
    }

    /// Gives the collected files their final place, tries them there, and takes them back if they are broken.
    void publish(const Source &source, const DictionaryFiles &dictionary, const QString &name) {
        QString place;
        Problem problem = Problem::Other;
        // Another process may take the free name first.
        constexpr int mostAttempts = 8;
        for (int i = 0; i < mostAttempts && problem == Problem::Other; ++i) {
            place = m_imported.freePath(dictionary.name());
            problem = m_scratch->moveOut(name, place);
        }
        if (problem != Problem::None)
            return report(source, dictionary.name(), importProblem(problem));
        const DictionaryFiles imported = movedTo(place, dictionary);
        const DictionaryProblem broken = m_prepare(imported.mainFile, m_stop);
        if (broken == DictionaryProblem::None && !m_stop.stop_requested()) {
            m_results += {.source = source.path, .name = dictionary.name(), .mainFile = imported.mainFile};
            m_imported.add(imported);
            return;
        }
        m_scratch->moveIn(place, name);
        report(source, dictionary.name(),
               m_stop.stop_requested() ? ImportProblem::Cancelled : ImportProblem::Broken, broken);
    }

    /// Copies the files of a dictionary.
    ImportProblem copy(const DictionaryFiles &dictionary, const QString &name) {
        const QDir directory(directoryOf(dictionary));
        for (const QString &path : dictionary.files) {
            CountedFile file(directory.filePath(path), m_stop, [this](qint64 size) { advance(size); });
            if (!file.isOpen())
                return ImportProblem::Unreadable;
            Problem problem = m_scratch->startFile(name + u'/' + path, file.size());
            qint64 end = 0;
            while (problem == Problem::None) {
                const QByteArrayView bytes = file.read();
                if (bytes.isEmpty())
                    break;
                problem = m_scratch->write(end, bytes);
                end += bytes.size();
            }
            if (m_stop.stop_requested())
                return ImportProblem::Cancelled;
            if (file.hasFailed())
                return ImportProblem::Unreadable;
            if (problem == Problem::None)
                problem = m_scratch->finishFile(end);
            if (problem != Problem::None)
                return importProblem(problem);
        }
        return ImportProblem::None;
    }

    /// Moves unpacked files, or gives them a second name if other dictionaries may need them, too.
    ImportProblem place(const DictionaryFiles &dictionary, const QString &name, bool isOnly) {
        const QDir from(directoryOf(dictionary));
        const QDir to(m_scratch->path() + u'/' + name);
        for (const QString &path : dictionary.files) {
            const QString target = to.filePath(path);
            const bool isPlaced = QDir().mkpath(QFileInfo(target).path()) &&
                                  (isOnly ? QFile::rename(from.filePath(path), target)
                                          : keepFileAs(from.filePath(path), target));
            if (!isPlaced)
                return ImportProblem::NoPermission;
        }
        return ImportProblem::None;
    }

    void advance(qint64 size) {
        // Some parts of an archive are read twice.
        const qint64 done = std::min(m_done + size, m_sourceEnd);
        if (std::exchange(m_done, done) != done && m_progress)
            m_progress(m_done, m_total);
    }

    void report(const Source &source, const QString &name, ImportProblem problem,
                DictionaryProblem dictionaryProblem = DictionaryProblem::None) {
        m_results += {.source = source.path,
                      .name = name,
                      .mainFile = {},
                      .problem = problem,
                      .dictionaryProblem = dictionaryProblem};
    }

    ImportedDictionaries m_imported;
    const PrepareDictionary &m_prepare;
    const ImportLimits &m_limits;
    const std::stop_token &m_stop;
    const ImportProgress &m_progress;
    QSet<QString> m_mainFiles; ///< of all paths so far
    std::unique_ptr<ScratchDirectory> m_scratch;
    qint64 m_done = 0;
    qint64 m_sourceEnd = 0; ///< of `m_total`, up to the end of the current path
    qint64 m_total = 0;
    QList<ImportResult> m_results;
};

} // namespace

FileImporter::FileImporter(QString directory, PrepareDictionary prepare, const ImportLimits &limits)
    : m_directory(std::move(directory)),
      m_prepare(std::move(prepare)),
      m_limits(limits) {}

QList<ImportResult> FileImporter::import(const QStringList &paths, const std::stop_token &stop,
                                         const ImportProgress &progress) {
    return Import(m_directory, m_prepare, m_limits, stop, progress).run(paths);
}

} // namespace lexiquill
