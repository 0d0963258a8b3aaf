#pragma once

#include "platform/linux/stardict/article.h"
#include "platform/linux/stardict/compressed.h"
#include "platform/linux/stardict/headwords.h"
#include "platform/linux/stardict/ifo_file.h"
#include "platform/linux/stardict/index_entry.h"
#include "platform/linux/stardict/lookup_table.h"
#include "platform/linux/stardict/mapped_file.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace lexiquill::stardict {

/// One StarDict dictionary. Its files are opened when the first word is asked for, and again when they have
/// changed on disk since.
class Dictionary {
public:
    /// What a dictionary has on a word: the spelling of its own and all articles under it.
    struct Answer {
        QString headword;
        std::vector<QByteArray> articles;
        QByteArray typeSequence;
    };

    /// Reads the .ifo file only. Nothing when that describes no usable dictionary.
    static std::unique_ptr<Dictionary> fromIfo(const QString &ifoPath, const QString &cacheDirectory);

    const QString &bookName() const { return m_bookName; }
    /// As the .ifo file had it when it was read.
    qint64 wordCount() const { return m_wordCount; }
    QString ifoPath() const { return m_basePath + QStringLiteral(".ifo"); }

    /// Looks the word up as typed, then among the synonyms, then both without regard to case. Nothing when it
    /// is unknown or the dictionary unusable.
    std::optional<Answer> find(const QString &word);

    /// The dictionary's headwords; nothing when it is unusable. To be asked for anew before every use.
    const Headwords *headwords();

private:
    struct Match {
        IndexEntry entry;
        /// The word as it was found, in the index or among the synonyms.
        QByteArrayView spelling;
    };
    enum class State { Unopened, Open, Unusable };

    Dictionary(const QString &ifoPath, const QString &cacheDirectory);
    SourceStamps currentStamps() const;
    bool ready();
    void close();
    bool open();
    bool openFiles();
    void openTable(bool rebuild);
    std::vector<Match> matches(QByteArrayView word);
    bool collectMatches(QByteArrayView word, std::vector<Match> &exact, std::vector<Match> &folded);
    bool collectSynonyms(QByteArrayView word, std::vector<Match> &exact, std::vector<Match> &folded);
    std::optional<IndexEntry> indexEntry(quint32 offset) const;
    std::optional<QByteArray> article(const IndexEntry &entry) const;

    QString m_basePath;
    QString m_cachePath;
    QString m_bookName;
    qint64 m_wordCount = 0;
    State m_state = State::Unopened;
    SourceStamps m_stamps;
    IfoInfo m_info;
    bool m_indexIsPacked = false;
    MappedFile m_index;
    MappedFile m_articles;
    std::optional<DictZip> m_packedArticles;
    MappedFile m_synonyms;
    std::unique_ptr<LookupTable> m_table;
    std::optional<Headwords> m_headwords;
};

} // namespace lexiquill::stardict
