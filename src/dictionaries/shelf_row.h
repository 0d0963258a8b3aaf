#pragma once

#include "dictionaries/dictionary.h"
#include "dictionaries/dictionary_finder.h"
#include "dictionaries/shelf_choices.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <mutex>
#include <vector>

namespace lexiquill {

/// Where dictionaries are searched for.
struct DictionaryPlaces {
    QStringList installed;  ///< searched with all directories below them; they may be missing
    QStringList bundled;    ///< of the dictionaries that come with the program
    QString cache;          ///< for indexes; if it is not writable, this only costs time
    QString settings = {};  ///< the settings file with the user's choices; empty: none
    QString wordRanks = {}; ///< the file for WordFrequency; empty: none
};

/// One set of opened dictionaries in the order in which they are asked, for one thread at a time.
class ShelfRow {
public:
    /// A process may open about a thousand files. Dictionaries behind this place should be closed after use.
    static constexpr int mostOpen = 50;

    struct Slot {
        std::unique_ptr<Dictionary> dictionary;
        bool isOn = true;
        bool isBundled = false;
    };

    /// The arguments must outlive the instance.
    ShelfRow(const DictionaryPlaces &places, const std::vector<DictionaryFormat> &formats,
             ShelfChoices &choices);

    /// Protects all other members.
    std::mutex &mutex() { return m_mutex; }

    /// The dictionaries. Searches the disk at the first call, and again after files have been added or
    /// removed or the choices have changed.
    const std::vector<Slot> &dictionaries();

private:
    bool isCurrent();
    void scan();
    void add(const QStringList &directories, bool areBundled, std::vector<Slot> &old);
    void arrange();

    const DictionaryPlaces &m_places;
    const std::vector<DictionaryFormat> &m_formats;
    ShelfChoices &m_choices;
    std::mutex m_mutex;
    bool m_isScanned = false;
    ShelfChoices::Choices m_chosen;
    std::vector<SearchedDirectory> m_searched;
    std::vector<Slot> m_slots;
};

} // namespace lexiquill
