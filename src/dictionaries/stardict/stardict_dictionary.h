#pragma once

#include "dictionaries/dictionary.h"
#include "dictionaries/index/lookup_table.h"
#include "dictionaries/stardict/ifo_file.h"
#include "dictionaries/stardict/index_entry.h"
#include "platform/mapped_file.h"
#include "support/dictzip.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace lexiquill::stardict {

/// One StarDict dictionary. Its files are opened at the first lookup, and again when they have changed on
/// disk.
class StardictDictionary final : public Dictionary {
public:
    /// Lookup tables are stored in `cacheDirectory`, which is created when needed. Reads only the .ifo file.
    /// Null when that does not describe a usable dictionary.
    static std::unique_ptr<StardictDictionary> fromIfo(const QString &ifoPath, const QString &cacheDirectory);

    /// The name in the .ifo file when fromIfo() read it.
    QString name() const override { return m_bookName; }
    qint64 wordCount() const override { return m_wordCount; }
    QString path() const override;

    bool holdsChinese() override;
    /// Searches the headwords, then the synonyms, then both ignoring case. All articles of the word are
    /// combined into one entry.
    std::optional<DictionaryEntry> find(const QString &word) override;
    const Headwords *headwords() override;

private:
    struct Match {
        IndexEntry entry;
        /// The matching word, from the index or from the synonyms.
        QByteArrayView spelling;
    };
    enum class State { Unopened, Open, Unusable };

    StardictDictionary(const QString &ifoPath, const QString &cacheDirectory);
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
    QByteArrayView index();
    std::optional<QByteArray> article(const IndexEntry &entry) const;
    bool articlesHoldChinese(const TableContent &content) const;

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
