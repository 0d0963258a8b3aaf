#pragma once

#include "dictionaries/shelf_row.h"
#include "model/accent.h"

#include <QList>
#include <QString>
#include <QStringList>

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
/// each group sorted by path. Notices at the next call when dictionaries are added or removed, or when the
/// user changes the order, also in another process. All members may be called on any thread.
class DictionaryShelf {
public:
    using Places = DictionaryPlaces;

    /// A dictionary on the shelf.
    struct Item {
        DictionaryAbout about;
        QString format;
        QString path; ///< of its main file
        bool isOn = true;
        bool isImported = false;
        bool isBundled = false;
        DictionaryProblem problem = DictionaryProblem::None;
    };

    /// What one dictionary says about a word.
    struct Answer {
        QString dictionary; ///< its name
        QString path;
        DictionaryEntry entry;
    };

    struct Sound {
        QByteArray bytes;
        QString suffix; ///< such as "mp3"
    };

    /// Nothing is read before the first lookup.
    DictionaryShelf(Places places, std::vector<DictionaryFormat> formats);
    ~DictionaryShelf();
    Q_DISABLE_COPY_MOVE(DictionaryShelf)

    /// The entry of the first dictionary that knows the word. If none does, the word is tried without the
    /// punctuation around it and in its likely base forms.
    /// A Chinese word that none knows gets an entry made of the words that contain it.
    std::optional<FoundEntry> find(const QString &word);

    /// The other functions use their own open files, so that find() never waits for them. Those with a stop
    /// token stop early on request.

    /// At most `limit` headwords that start with `prefix`, or contain it if it is Chinese, ignoring case and
    /// accents: the exact word first, then common words, then shorter ones.
    QStringList headwordsStartingWith(const QString &prefix, qsizetype limit, const std::stop_token &stop);
    /// At most `limit` headwords that start with `word`, then those that differ from it by one or two
    /// letters, most likely ones first. Searches for at most a third of a second.
    QStringList headwordsSimilarTo(const QString &word, qsizetype limit, const std::stop_token &stop);
    /// One line on the meaning of each word, in their order; empty for an unknown word.
    QStringList summariesOf(const QStringList &words, const std::stop_token &stop);

    /// What all dictionaries say about a headword, in their order.
    QList<Answer> answers(const QString &word, const std::stop_token &stop);
    /// The article of a word in the dictionary with this path, as rich text; see article::formattedArticle().
    /// Empty if there is none.
    QString formattedArticle(const QString &path, const QString &word);
    /// The pronunciation of a headword from the first dictionary that has one; in the other accent if it does
    /// not have it in this one.
    std::optional<Sound> sound(const QString &word, Accent accent);
    /// A file that comes with the dictionary with this path; see DictionaryReader::resource().
    std::optional<QByteArray> resource(const QString &path, const QString &name);

    /// All dictionaries in their order, also those that are off or cannot be used. May take a moment.
    QList<Item> items();

    /// Asks the dictionaries with these paths first. Stored in the settings.
    void setOrder(const QStringList &paths) { m_choices.setOrder(paths); }
    /// A dictionary that is off is not asked. Stored in the settings.
    void setOn(const QString &path, bool isOn) { m_choices.setOn(path, isOn); }

    /// Opens a dictionary and makes its index, wherever it lies. Returns why it cannot be used.
    DictionaryProblem prepare(const QString &path) const;
    /// Deletes the index of a dictionary that is gone.
    void dropIndex(const QString &path) const;
    /// The main files of the dictionaries below a directory.
    QStringList mainFiles(const QString &directory) const;
    /// The existing files that belong to a dictionary, its main file first.
    QStringList files(const QString &path) const;

    /// The standard directories of dictionaries, for this user and for all users; they may be missing.
    static QStringList standardPlaces();
    /// The directory of the dictionaries that the user has added in the window; one of the standard places.
    static QString importedDirectory();

private:
    std::optional<DictionaryEntry> firstEntry(const QString &word);
    std::optional<DictionaryEntry> entryOfWordsContaining(const QString &part);
    const WordFrequency &frequency();
    template <typename Visit> void askAll(ShelfRow &row, Visit visit);
    template <typename Ask> void ask(const QString &path, Ask ask);

    Places m_places;
    std::vector<DictionaryFormat> m_formats;
    ShelfChoices m_choices;
    ShelfRow m_lookups;
    ShelfRow m_suggestions;
    /// Read at the first use; protected by the mutex of m_suggestions.
    std::optional<WordFrequency> m_frequency;
};

} // namespace lexiquill
