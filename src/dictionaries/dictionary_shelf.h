#pragma once

#include "dictionaries/dictionary.h"

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
    /// The form that was asked for, when the entry is that of its base form ("went": go).
    std::optional<QString> askedForm = std::nullopt;
};

/// The offline dictionaries in the order in which they are asked: those that the user has put into an order;
/// then those the user has installed that explain in Chinese, the ones that come with the program, and the
/// other installed ones, each in the order of their paths. All members may be called on any thread.
class DictionaryShelf {
public:
    struct Places {
        QStringList installed; ///< searched recursively; they may be missing
        QStringList bundled;   ///< of what comes with the program
        QString cache;         ///< for look-up tables; an unwritable one only costs time
    };
    /// A dictionary on the shelf.
    struct Item {
        QString name;
        qint64 wordCount = 0;
        QString path; ///< of one of its files
    };

    /// Nothing is read before the first word is asked for. `chosenOrder`: names or paths of the dictionaries
    /// that the user wants asked first, in their order.
    explicit DictionaryShelf(Places places, QStringList chosenOrder = {});
    ~DictionaryShelf();
    Q_DISABLE_COPY_MOVE(DictionaryShelf)

    /// The entry of the first dictionary that knows the word. When none does, the word is tried without
    /// punctuation around it and in its likely base forms.
    std::optional<FoundEntry> find(const QString &word);

    /// At most `limit` headwords that start with `prefix`, without regard to case, the shorter first. This
    /// and the next give up when asked to stop, and work on files of their own, so that no lookup ever waits.
    QStringList headwordsStartingWith(const QString &prefix, qsizetype limit, const std::stop_token &stop);
    /// At most `limit` headwords that differ from `word` by one or two letters, the likeliest first, as far
    /// as they are found within a third of a second.
    QStringList headwordsSimilarTo(const QString &word, qsizetype limit, const std::stop_token &stop);

    /// What is on the shelf, in order. May search the disk.
    QList<Item> items();

    /// The setting that holds the user's order, "lexiquill_dictionary_order".
    static const QString orderKey;

    /// Where StarDict dictionaries are kept for this user and for all users; the places may be missing.
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
    void scan(Row &row) const;
    void arrange(Dictionaries &dictionaries, size_t installedCount) const;

    Places m_places;
    QStringList m_chosenOrder;
    Row m_lookups;
    Row m_suggestions;
};

} // namespace lexiquill
