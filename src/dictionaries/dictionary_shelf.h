#pragma once

#include "dictionaries/dictionary_finder.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <vector>

namespace lexiquill {

/// An entry that was found.
struct FoundEntry {
    DictionaryEntry entry;
    /// The form that was asked for, if the entry is that of its base form ("went" for the entry "go").
    std::optional<QString> askedForm = std::nullopt;
};

/// The offline dictionaries in the order in which they are asked: first those that the user has put into an
/// order; then the installed ones that explain in Chinese, the bundled ones, and the other installed ones,
/// each group sorted by path. All members may be called on any thread.
class DictionaryShelf {
public:
    struct Places {
        QStringList installed; ///< searched recursively; they may be missing
        QStringList bundled;   ///< the places of the dictionaries that come with the program
        QString cache;         ///< for lookup tables; if it is not writable, this only costs time
    };
    /// A dictionary on the shelf.
    struct Item {
        QString name;
        qint64 wordCount = 0;
        QString path; ///< of one of its files
    };

    /// Nothing is read before the first lookup. `chosenOrder`: names or paths of the dictionaries that the
    /// user wants asked first, in their order.
    DictionaryShelf(Places places, std::vector<DictionaryFinder> formats, QStringList chosenOrder = {});
    ~DictionaryShelf();
    Q_DISABLE_COPY_MOVE(DictionaryShelf)

    /// The entry of the first dictionary that knows the word. If none does, the word is tried without the
    /// punctuation around it and in its likely base forms.
    /// A Chinese word that none knows gets an entry made of the words that contain it.
    std::optional<FoundEntry> find(const QString &word);

    /// At most `limit` headwords that start with `prefix`, or contain it if it is Chinese, ignoring case,
    /// shorter ones first. This function and the next one stop early on request. They use their own open
    /// files, so that a lookup never waits for them.
    QStringList headwordsStartingWith(const QString &prefix, qsizetype limit, const std::stop_token &stop);
    /// At most `limit` headwords that start with `word`, then those that differ from it by one or two
    /// letters, most likely ones first. Searches for at most a third of a second.
    QStringList headwordsSimilarTo(const QString &word, qsizetype limit, const std::stop_token &stop);

    /// The dictionaries in order. May search the disk.
    QList<Item> items();

    /// The setting that holds the user's order, "lexiquill_dictionary_order".
    static const QString orderKey;

    /// The standard directories of StarDict dictionaries, for this user and for all users; they may be
    /// missing.
    static QStringList standardPlaces();

private:
    using Dictionaries = std::vector<std::unique_ptr<Dictionary>>;
    /// One set of opened dictionaries, for one thread at a time.
    struct Row {
        Dictionaries dictionaries;
        bool isScanned = false;
        std::mutex mutex;
    };

    std::optional<DictionaryEntry> firstEntry(const QString &word) const;
    std::optional<DictionaryEntry> entryOfWordsContaining(const QString &part) const;
    void scan(Row &row) const;
    qsizetype chosenRank(const Dictionary &dictionary) const;
    void arrange(Dictionaries &dictionaries, size_t installedCount) const;

    Places m_places;
    std::vector<DictionaryFinder> m_formats;
    QStringList m_chosenOrder;
    Row m_lookups;
    Row m_suggestions;
};

} // namespace lexiquill
