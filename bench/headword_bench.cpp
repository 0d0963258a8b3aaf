#include "bench.h"
#include "dictionaries/dictionary_shelf.h"
#include "dictionaries/stardict/stardict_format.h"
#include "sample_data.h"
#include "stardict_writer.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <random>

namespace lexiquill::bench {

namespace {

using benchmark::State;

constexpr size_t headwordCount = 500'000;

/// A word of English syllables.
QByteArray randomWord(std::mt19937 &random) {
    static const std::vector<QByteArray> syllables{"a",   "ap", "ple", "con",  "cise", "er", "ing", "tion",
                                                   "sub", "ex", "tra", "or",   "di",   "na", "ry",  "pre",
                                                   "de",  "un", "st",  "ment", "ble",  "fu", "li",  "o"};
    QByteArray word;
    const size_t count = 2 + random() % 4;
    for (size_t i = 0; i < count; ++i)
        word += syllables[random() % syllables.size()];
    return word;
}

/// A directory with one large dictionary.
QString writeLargeDictionary(bool isSorted) {
    std::mt19937 random(7);
    std::vector<tools::StarDictEntry> entries;
    for (size_t i = 0; i < headwordCount; ++i)
        entries.push_back(tools::plainEntry(randomWord(random) + QByteArray::number(qsizetype(i % 97)), "x"));
    tools::StarDictOptions options;
    options.sorted = isSorted;
    QString directory = newDirectory();
    const QString error = tools::writeStarDict(directory, QStringLiteral("d"), std::move(entries), options);
    if (!error.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(error));
    return directory;
}

std::unique_ptr<DictionaryShelf> newShelf(const QString &directory, const QString &cache) {
    return std::make_unique<DictionaryShelf>(
        DictionaryShelf::Places{.installed = {directory}, .bundled = {}, .cache = cache},
        std::vector{stardict::format()});
}

/// The dictionary after its first query.
DictionaryShelf &dictionary(bool isSorted) {
    const auto make = [](bool sorted) {
        auto shelf = newShelf(writeLargeDictionary(sorted), newDirectory());
        shelf->headwordsStartingWith(QStringLiteral("a"), 1, {});
        return shelf;
    };
    static const auto sortedShelf = make(true);
    static const auto unsortedShelf = make(false);
    return isSorted ? *sortedShelf : *unsortedShelf;
}

void complete(State &state, const char *prefix, bool isSorted) {
    DictionaryShelf &shelf = dictionary(isSorted);
    for ([[maybe_unused]] const auto each : state) {
        if (shelf.headwordsStartingWith(QString::fromLatin1(prefix), 14, {}).size() != 14)
            state.SkipWithError("not everything was found");
    }
}

void findSimilar(State &state, const char *word) {
    DictionaryShelf &shelf = dictionary(true);
    for ([[maybe_unused]] const auto each : state) {
        if (shelf.headwordsSimilarTo(QString::fromLatin1(word), 8, {}).isEmpty())
            state.SkipWithError("nothing was found");
    }
}

/// The cost of the first key when the lookup table is in the cache.
void openHeadwords(State &state) {
    const QString directory = writeLargeDictionary(true);
    const QString cache = newDirectory();
    newShelf(directory, cache)->headwordsStartingWith(QStringLiteral("a"), 1, {});
    for ([[maybe_unused]] const auto each : state) {
        const auto shelf = newShelf(directory, cache);
        if (shelf->headwordsStartingWith(QStringLiteral("a"), 1, {}).isEmpty())
            state.SkipWithError("nothing was found");
    }
}

} // namespace

std::vector<std::string> registerHeadwordBenchmarks() {
    const std::vector<std::pair<std::string, std::function<void(State &)>>> functions{
        {"complete one letter",
         [](State &state) {
             complete(state, "a", true);
         }},
        {"complete four letters",
         [](State &state) {
             complete(state, "conc", true);
         }},
        {"complete in an unsorted index",
         [](State &state) {
             complete(state, "con", false);
         }},
        {"complete the first letter", openHeadwords},
        {"near spellings",
         [](State &state) {
             findSimilar(state, "concice12");
         }},
    };
    std::vector<std::string> names;
    for (const auto &[name, function] : functions) {
        names.push_back(name);
        benchmark::RegisterBenchmark(name.c_str(), function)
            ->Iterations(20)
            ->Repetitions(11)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    return names;
}

} // namespace lexiquill::bench
