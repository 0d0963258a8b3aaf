#include "dictionaries/dictionary_shelf.h"

#include "dictionaries/english/base_forms.h"
#include "support/text.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace lexiquill {

const QString DictionaryShelf::orderKey = QStringLiteral("lexiquill_dictionary_order");

namespace {

/// Avoids reading a dictionary whose name already shows that it explains in Chinese.
bool hasChineseName(const QString &name) {
    static const QStringList marks{
        QStringLiteral("chinese"), QStringLiteral("英汉"), QStringLiteral("汉英"), QStringLiteral("英漢"),
        QStringLiteral("漢英"),    QStringLiteral("英中"), QStringLiteral("中英"), QStringLiteral("双解"),
        QStringLiteral("雙解"),    QStringLiteral("英华"), QStringLiteral("華英"), QStringLiteral("英華"),
        QStringLiteral("华英"),
    };
    return std::any_of(marks.begin(), marks.end(),
                       [&name](const QString &mark) { return name.contains(mark, Qt::CaseInsensitive); });
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

DictionaryShelf::DictionaryShelf(Places places, std::vector<DictionaryFinder> formats,
                                 QStringList chosenOrder)
    : m_places(std::move(places)),
      m_formats(std::move(formats)),
      m_chosenOrder(std::move(chosenOrder)) {}

DictionaryShelf::~DictionaryShelf() = default;

std::optional<FoundEntry> DictionaryShelf::find(const QString &word) {
    const QString typed = word.simplified();
    if (typed.isEmpty())
        return std::nullopt;
    const std::lock_guard lock(m_lookups.mutex);
    scan(m_lookups);
    // "Apple!", or full-width letters from an input method, also mean the word.
    const QString normalized = typed.normalized(QString::NormalizationForm_KC);
    const QString plain = trimmedOfPunctuation(normalized, true).toString();
    const QString asked = plain.isEmpty() ? typed : plain;
    for (const QString &spelling : {typed, asked}) {
        if (auto entry = firstEntry(spelling)) {
            // A dictionary may lead from a form or another spelling to the headword.
            const bool isHeadword = wordKey(entry->headword) == wordKey(spelling);
            return FoundEntry{*entry, isHeadword ? std::nullopt : std::optional(spelling)};
        }
        if (typed == asked)
            break;
    }
    if (containsHan(asked)) {
        auto entry = entryOfWordsContaining(asked);
        return entry ? std::optional(FoundEntry{*entry}) : std::nullopt;
    }
    std::optional<DictionaryEntry> entry;
    const auto base = english::firstKnown(asked, [&](const QString &form) -> std::optional<QStringList> {
        entry = firstEntry(form);
        if (!entry)
            return std::nullopt;
        QStringList partsOfSpeech;
        for (const PartOfSpeechGroup &group : std::as_const(entry->posGroups))
            partsOfSpeech += group.pos;
        return partsOfSpeech;
    });
    return base ? std::optional(FoundEntry{*entry, asked}) : std::nullopt;
}

/// The entry of the first dictionary that knows the word.
std::optional<DictionaryEntry> DictionaryShelf::firstEntry(const QString &word) const {
    for (const auto &dictionary : m_lookups.dictionaries) {
        if (auto entry = dictionary->find(word))
            return entry;
    }
    return std::nullopt;
}

/// For each of the shortest words, its first senses.
std::optional<DictionaryEntry> DictionaryShelf::entryOfWordsContaining(const QString &part) const {
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
    for (const auto &dictionary : m_lookups.dictionaries) {
        const Headwords *const headwords = dictionary->headwords();
        if (headwords == nullptr)
            continue;
        for (const QString &word : headwords->containing(part.toUtf8(), mostWords)) {
            const auto entry = dictionary->find(word);
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
        if (!result.posGroups.isEmpty())
            return result;
    }
    return std::nullopt;
}

QStringList DictionaryShelf::headwordsStartingWith(const QString &prefix, qsizetype limit,
                                                   const std::stop_token &stop) {
    const QByteArray typed = prefix.simplified().toUtf8();
    const bool isChinese = containsHan(prefix);
    QStringList words;
    if (typed.isEmpty())
        return words;
    const std::lock_guard lock(m_suggestions.mutex);
    scan(m_suggestions);
    QSet<QString> seen;
    for (const auto &dictionary : m_suggestions.dictionaries) {
        if (stop.stop_requested() || words.size() >= limit)
            break;
        const Headwords *headwords = dictionary->headwords();
        if (headwords == nullptr)
            continue;
        const auto found = isChinese ? headwords->containing(typed, static_cast<size_t>(limit))
                                     : headwords->startingWith(typed, static_cast<size_t>(limit));
        for (const QString &word : found)
            addOnce(words, word, seen, limit);
    }
    return words;
}

QStringList DictionaryShelf::headwordsSimilarTo(const QString &word, qsizetype limit,
                                                const std::stop_token &stop) {
    const auto deadline = std::chrono::steady_clock::now() + maxSimilarTime;
    const QString typed = word.simplified();
    std::vector<SimilarWord> found;
    {
        const std::lock_guard lock(m_suggestions.mutex);
        scan(m_suggestions);
        for (const auto &dictionary : m_suggestions.dictionaries) {
            if (stop.stop_requested() || std::chrono::steady_clock::now() > deadline)
                break;
            if (const Headwords *headwords = dictionary->headwords()) {
                auto some = headwords->similarTo(typed, deadline, stop);
                std::move(some.begin(), some.end(), std::back_inserter(found));
            }
        }
    }
    std::stable_sort(found.begin(), found.end());
    QSet<QString> seen;
    // A word that has just not been typed to its end is more likely to be meant than a similar one.
    const bool isPart = typed.size() > 1 || containsHan(typed);
    QStringList words = isPart ? headwordsStartingWith(typed, limit, stop) : QStringList();
    words.removeIf([&typed](const QString &each) { return each.compare(typed, Qt::CaseInsensitive) == 0; });
    for (const QString &each : std::as_const(words))
        seen.insert(each.toCaseFolded());
    for (const SimilarWord &each : found)
        addOnce(words, each.word, seen, limit);
    return words;
}

QList<DictionaryShelf::Item> DictionaryShelf::items() {
    const std::lock_guard lock(m_suggestions.mutex);
    scan(m_suggestions);
    QList<Item> items;
    for (const auto &dictionary : m_suggestions.dictionaries)
        items += Item{
            .name = dictionary->name(), .wordCount = dictionary->wordCount(), .path = dictionary->path()};
    return items;
}

void DictionaryShelf::scan(Row &row) const {
    if (std::exchange(row.isScanned, true))
        return;
    QSet<QString> seen;
    const auto open = [&](const DictionaryFinder &format, const QString &path) {
        const QString real = QFileInfo(path).canonicalFilePath();
        if (seen.contains(real))
            return;
        seen.insert(real);
        if (auto dictionary = format.open(path, m_places.cache))
            row.dictionaries.push_back(std::move(dictionary));
    };
    const auto add = [&](const QStringList &directories) {
        for (const QString &directory : directories) {
            for (const DictionaryFinder &format : m_formats) {
                for (const QString &path : format.find(directory))
                    open(format, path);
            }
        }
    };
    add(m_places.installed);
    const size_t installedCount = row.dictionaries.size();
    add(m_places.bundled);
    if (row.dictionaries.size() > 1)
        arrange(row.dictionaries, installedCount);
}

/// The place in the user's order; -1 for a dictionary that it does not name.
qsizetype DictionaryShelf::chosenRank(const Dictionary &dictionary) const {
    const QFileInfo file(dictionary.path());
    const auto names = [&dictionary, &file](const QString &chosen) {
        return chosen.trimmed().compare(dictionary.name().trimmed(), Qt::CaseInsensitive) == 0 ||
               (chosen.contains(u'/') && QFileInfo(chosen) == file);
    };
    const auto found = std::find_if(m_chosenOrder.begin(), m_chosenOrder.end(), names);
    return found == m_chosenOrder.end() ? -1 : found - m_chosenOrder.begin();
}

void DictionaryShelf::arrange(Dictionaries &dictionaries, size_t installedCount) const {
    constexpr qsizetype installedChinese = 0;
    constexpr qsizetype bundled = 1;
    constexpr qsizetype otherInstalled = 2;
    std::vector<std::pair<qsizetype, std::unique_ptr<Dictionary>>> ranked;
    for (size_t i = 0; i < dictionaries.size(); ++i) {
        Dictionary &dictionary = *dictionaries[i];
        qsizetype rank = chosenRank(dictionary);
        if (rank < 0) {
            const bool isInstalled = i < installedCount;
            const bool isFirst =
                isInstalled && (hasChineseName(dictionary.name()) || dictionary.holdsChinese());
            rank = m_chosenOrder.size() + (isFirst       ? installedChinese
                                           : isInstalled ? otherInstalled
                                                         : bundled);
        }
        ranked.emplace_back(rank, std::move(dictionaries[i]));
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto &left, const auto &right) { return left.first < right.first; });
    std::transform(ranked.begin(), ranked.end(), dictionaries.begin(),
                   [](auto &each) { return std::move(each.second); });
}

QStringList DictionaryShelf::standardPlaces() {
    return {
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
            QStringLiteral("/stardict/dic"),
        QDir::homePath() + QStringLiteral("/.stardict/dic"),
        QStringLiteral("/usr/share/stardict/dic"),
    };
}

} // namespace lexiquill
