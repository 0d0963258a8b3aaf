#pragma once

#include "dictionaries/dictionary_format.h"
#include "dictionaries/index/headword_index.h"
#include "model/dictionary_entry.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace lexiquill {

class IndexBuilder;

/// One dictionary on disk, in any format. Its files are opened at the first lookup, and again when they have
/// changed. To be used by one thread at a time.
class Dictionary {
public:
    /// Reads only what describes the dictionary. `path`: its main file. `format` must outlive the instance.
    /// The index is stored in `cacheDirectory`, which is created when needed.
    Dictionary(const DictionaryFormat &format, const QString &path, const QString &cacheDirectory);

    /// Where the index of the dictionary with this main file is stored.
    static QString indexFile(const QString &path, const QString &cacheDirectory);

    const DictionaryAbout &about() const { return m_description.about; }
    const QString &path() const { return m_path; }
    const QString &formatName() const { return m_format.name; }

    /// Why the dictionary cannot be used, as far as is known without opening it.
    DictionaryProblem knownProblem() const;
    /// Opens the dictionary, and makes its index if there is none yet.
    DictionaryProblem prepare();

    /// Whether at least some explanations are in Chinese. Opens the dictionary.
    bool holdsChinese();

    /// The entry of a word: an exact match if there is one, else another spelling, else a match that ignores
    /// case or accents. No value when the word is unknown or the dictionary is unusable.
    std::optional<DictionaryEntry> find(const QString &word);

    /// The articles of a word, as find() reads them.
    struct Articles {
        QString headword;
        std::vector<article::Article> articles;
    };
    Articles articles(const QString &word);

    /// Null when the dictionary is unusable. Call this again before every use, because the object may be
    /// replaced.
    const HeadwordIndex *headwords();

    /// Closes the files until the next use.
    void close();

    /// A file that comes with the dictionary; see DictionaryReader::resource().
    std::optional<QByteArray> resource(const QString &name);

private:
    /// What the articles of a few words show.
    struct Sample {
        bool isReadable = true;
        bool holdsChinese = false;
    };
    /// An article search that follows links.
    struct Search;

    SourceStamps currentStamps() const;
    bool ready();
    void open(bool mayLoadIndex);
    void buildIndex();
    static Sample sampleOf(DictionaryReader &reader, const IndexBuilder &words);
    void collect(const QString &word, int linksLeft, Search &search) const;

    const DictionaryFormat &m_format;
    QString m_path;
    QByteArray m_identity; ///< of the path
    QString m_cachePath;
    DictionaryDescription m_description;
    SourceStamps m_stamps;
    bool m_isOpened = false;
    DictionaryProblem m_problem = DictionaryProblem::None;
    /// Both are null when the dictionary is unusable.
    std::unique_ptr<DictionaryReader> m_reader;
    std::unique_ptr<HeadwordIndex> m_index;
};

} // namespace lexiquill
