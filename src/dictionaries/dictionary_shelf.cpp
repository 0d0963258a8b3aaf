#include "dictionaries/dictionary_shelf.h"

#include "dictionaries/article/formatted_article.h"
#include "dictionaries/english/base_forms.h"
#include "dictionaries/recording_accents.h"
#include "support/text.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <tuple>
#include <utility>

namespace lexiquill {

namespace {

/// Whether an article only says which word is meant, like "[原型] run".
bool isReference(const DictionaryEntry &entry) {
    constexpr qsizetype longest = 80;
    return entry.posGroups.isEmpty() && entry.examples.isEmpty() && entry.rawText.trimmed().size() <= longest;
}

constexpr std::chrono::milliseconds maxSimilarTime{330};

void addOnce(QStringList &words, const QString &word, QSet<QString> &seen, qsizetype limit) {
    const QString key = word.toCaseFolded();
    if (words.size() >= limit || seen.contains(key))
        return;
    seen.insert(key);
    words += word;
}

} // namespace

DictionaryShelf::DictionaryShelf(Places places, std::vector<DictionaryFormat> formats)
    : m_places(std::move(places)),
      m_formats(std::move(formats)),
      m_choices(m_places.settings),
      m_lookups(m_places, m_formats, m_choices),
      m_suggestions(m_places, m_formats, m_choices) {}

DictionaryShelf::~DictionaryShelf() = default;

/// Calls `visit` with each dictionary that is on until it returns false.
template <typename Visit> void DictionaryShelf::askAll(ShelfRow &row, Visit visit) {
    int count = 0;
    for (const ShelfRow::Slot &slot : row.dictionaries()) {
        if (!slot.isOn)
            continue;
        const bool goesOn = visit(*slot.dictionary);
        if (++count > ShelfRow::mostOpen)
            slot.dictionary->close();
        if (!goesOn)
            return;
    }
}

const WordFrequency &DictionaryShelf::frequency() {
    if (!m_frequency)
        m_frequency.emplace(m_places.wordRanks);
    return *m_frequency;
}

std::optional<FoundEntry> DictionaryShelf::find(const QString &word) {
    const QString typed = word.simplified();
    if (typed.isEmpty())
        return std::nullopt;
    const std::lock_guard lock(m_lookups.mutex());
    // "Apple!", or full-width letters from an input method, also mean the word.
    const QString normalized = typed.normalized(QString::NormalizationForm_KC);
    const QString plain = trimmedOfPunctuation(normalized, true).toString();
    const QString asked = plain.isEmpty() ? typed : plain;
    std::optional<FoundEntry> reference;
    for (const QString &spelling : {typed, asked}) {
        if (auto entry = firstEntry(spelling)) {
            // A dictionary may lead from a form or another spelling to the headword.
            const bool isHeadword = wordKey(entry->headword) == wordKey(spelling);
            FoundEntry found{*entry, isHeadword ? std::nullopt : std::optional(spelling)};
            if (!isReference(*entry))
                return found;
            reference = reference ? reference : std::optional(found);
        }
        if (typed == asked)
            break;
    }
    if (containsHan(asked)) {
        auto entry = entryOfWordsContaining(asked);
        return entry ? std::optional(FoundEntry{*entry}) : reference;
    }
    std::optional<DictionaryEntry> entry;
    const auto base = english::firstKnown(asked, [&](const QString &form) -> std::optional<QStringList> {
        entry = firstEntry(form);
        if (!entry || isReference(*entry))
            return std::nullopt;
        QStringList partsOfSpeech;
        for (const PartOfSpeechGroup &group : std::as_const(entry->posGroups))
            partsOfSpeech += group.pos;
        return partsOfSpeech;
    });
    return base ? std::optional(FoundEntry{*entry, asked}) : reference;
}

/// The entry of the first dictionary that knows the word.
std::optional<DictionaryEntry> DictionaryShelf::firstEntry(const QString &word) {
    std::optional<DictionaryEntry> entry;
    askAll(m_lookups, [&](Dictionary &dictionary) {
        entry = dictionary.find(word);
        return !entry;
    });
    return entry;
}

/// For each of the shortest words, its first senses.
std::optional<DictionaryEntry> DictionaryShelf::entryOfWordsContaining(const QString &part) {
    constexpr size_t mostWords = 8;
    constexpr qsizetype mostSenses = 2;
    DictionaryEntry result{.headword = part, .posGroups = {}, .rawText = {}};
    const auto groupOf = [&result](const PartOfSpeechGroup &like) -> PartOfSpeechGroup & {
        const auto known =
            std::find_if(result.posGroups.begin(), result.posGroups.end(),
                         [&like](const PartOfSpeechGroup &group) { return group.pos == like.pos; });
        if (known != result.posGroups.end())
            return *known;
        result.posGroups += {.pos = like.pos, .posChinese = like.posChinese, .senses = {}};
        return result.posGroups.last();
    };
    askAll(m_lookups, [&](Dictionary &dictionary) {
        const HeadwordIndex *const headwords = dictionary.headwords();
        if (headwords == nullptr)
            return true;
        for (const HeadwordIndex::RankedWord &containing :
             headwords->containing(part.toUtf8(), mostWords, WordFrequency())) {
            const QString word = QString::fromUtf8(containing.word);
            const auto entry = dictionary.find(word);
            if (!entry)
                continue;
            result.rawText += word + u'\n' + entry->rawText + u'\n';
            for (const PartOfSpeechGroup &group : entry->posGroups) {
                PartOfSpeechGroup &wanted = groupOf(group);
                for (SenseItem sense : group.senses.first(std::min(mostSenses, group.senses.size()))) {
                    sense.number = wanted.senses.size() + 1;
                    sense.context = sense.context.value_or(word);
                    wanted.senses += sense;
                }
            }
        }
        return result.posGroups.isEmpty();
    });
    return result.posGroups.isEmpty() ? std::nullopt : std::optional(result);
}

QStringList DictionaryShelf::headwordsStartingWith(const QString &prefix, qsizetype limit,
                                                   const std::stop_token &stop) {
    const QByteArray typed = prefix.simplified().toUtf8();
    const bool isChinese = containsHan(prefix);
    QStringList words;
    if (typed.isEmpty())
        return words;
    const std::lock_guard lock(m_suggestions.mutex());
    std::vector<HeadwordIndex::RankedWord> candidates;
    askAll(m_suggestions, [&](Dictionary &dictionary) {
        if (stop.stop_requested())
            return false;
        if (const HeadwordIndex *const headwords = dictionary.headwords()) {
            auto found = isChinese ? headwords->containing(typed, static_cast<size_t>(limit), frequency())
                                   : headwords->startingWith(typed, static_cast<size_t>(limit), frequency());
            std::move(found.begin(), found.end(), std::back_inserter(candidates));
        }
        return true;
    });
    std::stable_sort(candidates.begin(), candidates.end());
    QSet<QString> seen;
    for (const HeadwordIndex::RankedWord &each : candidates)
        addOnce(words, QString::fromUtf8(each.word), seen, limit);
    return words;
}

QStringList DictionaryShelf::headwordsSimilarTo(const QString &word, qsizetype limit,
                                                const std::stop_token &stop) {
    const auto deadline = std::chrono::steady_clock::now() + maxSimilarTime;
    const QString typed = word.simplified();
    std::vector<SimilarWord> found;
    {
        const std::lock_guard lock(m_suggestions.mutex());
        askAll(m_suggestions, [&](Dictionary &dictionary) {
            if (const HeadwordIndex *const headwords = dictionary.headwords()) {
                auto some = headwords->similarTo(typed, frequency(), deadline, stop);
                std::move(some.begin(), some.end(), std::back_inserter(found));
            }
            return !stop.stop_requested() && std::chrono::steady_clock::now() < deadline;
        });
    }
    std::stable_sort(found.begin(), found.end());
    // A word that has just not been typed to its end is more likely to be meant than a similar one.
    const bool isPart = typed.size() > 1 || containsHan(typed);
    QStringList words = isPart ? headwordsStartingWith(typed, limit, stop) : QStringList();
    words.removeIf([&typed](const QString &each) { return each.compare(typed, Qt::CaseInsensitive) == 0; });
    QSet<QString> seen;
    for (const QString &each : std::as_const(words))
        seen.insert(each.toCaseFolded());
    for (const SimilarWord &each : found)
        addOnce(words, each.word, seen, limit);
    return words;
}

QStringList DictionaryShelf::summariesOf(const QStringList &words, const std::stop_token &stop) {
    const std::lock_guard lock(m_suggestions.mutex());
    QStringList summaries;
    for (const QString &word : words) {
        QString summary;
        askAll(m_suggestions, [&](Dictionary &dictionary) {
            const auto entry = stop.stop_requested() ? std::nullopt : dictionary.find(word);
            summary = entry ? entry->conciseSummary() : QString();
            return summary.isEmpty() && !stop.stop_requested();
        });
        summaries += summary;
    }
    return summaries;
}

QList<DictionaryShelf::Answer> DictionaryShelf::answers(const QString &word, const std::stop_token &stop) {
    const std::lock_guard lock(m_suggestions.mutex());
    QList<Answer> answers;
    askAll(m_suggestions, [&](Dictionary &dictionary) {
        if (auto entry = dictionary.find(word.simplified()))
            answers +=
                Answer{.dictionary = dictionary.about().name, .path = dictionary.path(), .entry = *entry};
        return !stop.stop_requested();
    });
    return answers;
}

/// Calls `ask` with the dictionary that has this path, if it is on.
template <typename Ask> void DictionaryShelf::ask(const QString &path, Ask ask) {
    const std::lock_guard lock(m_suggestions.mutex());
    askAll(m_suggestions, [&](Dictionary &dictionary) {
        const bool isWanted = dictionary.path() == path;
        if (isWanted)
            ask(dictionary);
        return !isWanted;
    });
}

QString DictionaryShelf::formattedArticle(const QString &path, const QString &word) {
    QString text;
    ask(path, [&](Dictionary &dictionary) {
        text = article::formattedArticle(dictionary.articles(word.simplified()).articles);
    });
    return text;
}

std::optional<QByteArray> DictionaryShelf::resource(const QString &path, const QString &name) {
    std::optional<QByteArray> bytes;
    ask(path, [&](Dictionary &dictionary) { bytes = dictionary.resource(name); });
    return bytes;
}

std::optional<DictionaryShelf::Sound> DictionaryShelf::sound(const QString &word, Accent accent) {
    const std::lock_guard lock(m_suggestions.mutex());
    std::optional<Sound> sound;
    askAll(m_suggestions, [&](Dictionary &dictionary) {
        const QStringList paths = article::soundLinks(dictionary.articles(word.simplified()).articles);
        for (const QString &path : inOrderFor(accent, paths)) {
            if (auto bytes = dictionary.resource(path)) {
                sound = Sound{.bytes = *bytes, .suffix = QFileInfo(path).suffix().toLower()};
                return false;
            }
        }
        return true;
    });
    return sound;
}

QList<DictionaryShelf::Item> DictionaryShelf::items() {
    const std::lock_guard lock(m_suggestions.mutex());
    const QString imported = QDir::cleanPath(importedDirectory()) + u'/';
    QList<Item> items;
    for (const ShelfRow::Slot &slot : m_suggestions.dictionaries()) {
        Dictionary &dictionary = *slot.dictionary;
        const DictionaryProblem problem = slot.isOn ? dictionary.prepare() : dictionary.knownProblem();
        Item item{.about = dictionary.about(),
                  .format = dictionary.formatName(),
                  .path = dictionary.path(),
                  .isOn = slot.isOn,
                  .isImported = dictionary.path().startsWith(imported),
                  .isBundled = slot.isBundled,
                  .problem = problem};
        const HeadwordIndex *const headwords =
            slot.isOn && item.about.wordCount == 0 ? dictionary.headwords() : nullptr;
        if (headwords != nullptr)
            item.about.wordCount = headwords->size();
        items += item;
        if (items.size() > ShelfRow::mostOpen)
            dictionary.close();
    }
    return items;
}

DictionaryProblem DictionaryShelf::prepare(const QString &path) const {
    const DictionaryFormat *const format = formatOf(path, m_formats);
    return format == nullptr ? DictionaryProblem::UnknownFormat
                             : Dictionary(*format, path, m_places.cache).prepare();
}

void DictionaryShelf::dropIndex(const QString &path) const {
    QFile::remove(Dictionary::indexFile(QFileInfo(path).absoluteFilePath(), m_places.cache));
}

QStringList DictionaryShelf::mainFiles(const QString &directory) const {
    std::vector<SearchedDirectory> searched;
    QStringList paths;
    for (const FoundDictionary &found : findDictionaries(directory, m_formats, searched))
        paths += found.path;
    return paths;
}

QStringList DictionaryShelf::files(const QString &path) const {
    const DictionaryFormat *const format = formatOf(path, m_formats);
    QStringList paths = format == nullptr ? QStringList() : format->files(path);
    paths.removeIf([](const QString &each) { return !stampOf(each).exists(); });
    return paths;
}

QString DictionaryShelf::importedDirectory() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Lexiquill/dictionaries");
}

QStringList DictionaryShelf::standardPlaces() {
    return {
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
            QStringLiteral("/stardict/dic"),
        QDir::homePath() + QStringLiteral("/.stardict/dic"),
        importedDirectory(),
        QStringLiteral("/usr/share/stardict/dic"),
        QStringLiteral("/usr/share/dictd"),
    };
}

} // namespace lexiquill
