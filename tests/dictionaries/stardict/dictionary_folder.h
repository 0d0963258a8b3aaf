#pragma once

#include "dictionaries/dictionary.h"
#include "dictionaries/stardict/stardict_format.h"
#include "stardict_writer.h"
#include "support/test.h"

namespace lexiquill {

/// A directory with at most one dictionary, and a place for its cache.
class DictionaryFolder {
public:
    QString path(const QString &name = {}) const { return m_directory.filePath(name); }
    QString cachePath() const { return path(u"cache"_s); }

    void clear() const {
        QDir(m_directory.path()).removeRecursively();
        QDir().mkpath(m_directory.path());
    }
    void write(const std::vector<tools::StarDictEntry> &entries,
               const tools::StarDictOptions &options = {}) const {
        QCOMPARE(tools::writeStarDict(m_directory.path(), u"d"_s, entries, options), QString());
    }
    std::unique_ptr<Dictionary> open() const {
        static const DictionaryFormat format = stardict::format();
        return std::make_unique<Dictionary>(format, path(u"d.ifo"_s), cachePath());
    }

    /// The answer of a dictionary to a word: its headword and the lines of the articles, "-" if there is
    /// none.
    static QString ask(Dictionary &dictionary, const QString &word) {
        const auto entry = dictionary.find(word);
        return entry ? entry->headword + u'|' + QString(entry->rawText).replace(u'\n', u'|') : u"-"_s;
    }
    QString askAfresh(const QString &word) const { return ask(*open(), word); }

    QString onlyCacheFile() const {
        const QDir cache(cachePath());
        const QStringList files = cache.entryList(QDir::Files);
        return files.size() == 1 ? cache.filePath(files.first()) : QString();
    }

private:
    QTemporaryDir m_directory;
};

} // namespace lexiquill
