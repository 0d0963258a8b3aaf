#include "bench.h"
#include "dictionaries/dictionary_shelf.h"
#include "sample_data.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <functional>
#include <random>

namespace lexiquill::bench {

namespace {

using benchmark::State;

constexpr size_t headwordCount = 500'000;

/// A word of English syllables.
QByteArray englishWord(std::mt19937 &random) {
    static const std::vector<QByteArray> syllables{"a",   "ap", "ple", "con",  "cise", "er", "ing", "tion",
                                                   "sub", "ex", "tra", "or",   "di",   "na", "ry",  "pre",
                                                   "de",  "un", "st",  "ment", "ble",  "fu", "li",  "o"};
    QByteArray word;
    const size_t count = 2 + random() % 4;
    for (size_t i = 0; i < count; ++i)
        word += syllables[random() % syllables.size()];
    return word + QByteArray::number(random() % 97);
}

/// A word of two to four Chinese characters.
QByteArray chineseWord(std::mt19937 &random) {
    constexpr char16_t first = u'一';
    constexpr unsigned common = 3000;
    QString word;
    const size_t count = 2 + random() % 3;
    for (size_t i = 0; i < count; ++i)
        word += QChar(static_cast<char16_t>(first + random() % common));
    return word.toUtf8();
}

std::vector<QByteArray> randomWords(QByteArray (*make)(std::mt19937 &)) {
    std::mt19937 random(7);
    std::vector<QByteArray> words;
    for (size_t i = 0; i < headwordCount; ++i)
        words.push_back(make(random));
    return words;
}

std::unique_ptr<DictionaryShelf> newShelf(const QString &directory, const QString &cache) {
    return std::make_unique<DictionaryShelf>(
        DictionaryShelf::Places{.installed = {directory},
                                .bundled = {},
                                .cache = cache,
                                .wordRanks = QStringLiteral(LEXIQUILL_STARTER_DIRECTORY "/word-ranks.txt")},
        allFormats());
}

/// The directory of a large dictionary.
QString largeDictionary(SampleFormat format, bool isChinese) {
    QString directory = newDirectory();
    if (!writeDictionary(directory, format, randomWords(isChinese ? chineseWord : englishWord)))
        std::fprintf(stderr, "the dictionary could not be written\n");
    return directory;
}

/// The dictionary after its first query.
DictionaryShelf &dictionary(bool isChinese) {
    const auto make = [](bool chinese) {
        auto shelf = newShelf(largeDictionary(SampleFormat::StarDict, chinese), newDirectory());
        shelf->headwordsStartingWith(QStringLiteral("a"), 1, {});
        return shelf;
    };
    static const auto english = make(false);
    static const auto chinese = make(true);
    return isChinese ? *chinese : *english;
}

double secondsOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Measures `work`, which returns whether it succeeded.
template <typename Work> void measure(State &state, clockid_t clock, Work work) {
    for ([[maybe_unused]] const auto each : state) {
        const double start = secondsOf(clock);
        const bool isDone = work();
        state.SetIterationTime(secondsOf(clock) - start);
        if (!isDone)
            state.SkipWithError("not everything was found");
    }
}

// Suggestions are found beside the main thread, so that their processor time is measured.

/// Finds suggestions and what they mean.
void complete(State &state, const char *typed) {
    const QString prefix = QString::fromUtf8(typed);
    DictionaryShelf &shelf = dictionary(prefix.front().unicode() > 127);
    measure(state, CLOCK_THREAD_CPUTIME_ID, [&] {
        const QStringList words = shelf.headwordsStartingWith(prefix, 14, {});
        return words.size() == 14 && !shelf.summariesOf(words, {}).join(QString()).isEmpty();
    });
}

void findSimilar(State &state, const char *word) {
    DictionaryShelf &shelf = dictionary(false);
    measure(state, CLOCK_THREAD_CPUTIME_ID,
            [&] { return !shelf.headwordsSimilarTo(QString::fromLatin1(word), 8, {}).isEmpty(); });
}

/// The cost of the first key when the index is in the cache.
void openHeadwords(State &state) {
    const QString directory = largeDictionary(SampleFormat::StarDict, false);
    const QString cache = newDirectory();
    newShelf(directory, cache)->headwordsStartingWith(QStringLiteral("a"), 1, {});
    measure(state, CLOCK_THREAD_CPUTIME_ID, [&] {
        return !newShelf(directory, cache)->headwordsStartingWith(QStringLiteral("a"), 1, {}).isEmpty();
    });
}

/// The first use of a dictionary.
void makeIndex(State &state, SampleFormat format) {
    const QString directory = largeDictionary(format, false);
    measure(state, CLOCK_MONOTONIC, [&] {
        return !newShelf(directory, newDirectory())
                    ->headwordsStartingWith(QStringLiteral("con"), 1, {})
                    .isEmpty();
    });
}

} // namespace

std::vector<std::string> registerHeadwordBenchmarks() {
    std::vector<std::pair<std::string, std::function<void(State &)>>> functions{
        {"complete the first letter", openHeadwords},
        {"near spellings",
         [](State &state) {
             findSimilar(state, "concice12");
         }},
    };
    for (const char *typed : {"a", "conc", "中"}) {
        functions.emplace_back(std::string("complete: ") + typed,
                               [typed](State &state) { complete(state, typed); });
    }
    for (const SampleFormat format : sampleFormats) {
        functions.emplace_back(std::string("index: ") + nameOf(format),
                               [format](State &state) { makeIndex(state, format); });
    }
    std::vector<std::string> names;
    for (const auto &[name, function] : functions) {
        names.push_back(name);
        benchmark::RegisterBenchmark(name.c_str(), function)
            ->Iterations(name.rfind("index", 0) == 0 ? 1 : 20)
            ->Repetitions(name.rfind("index", 0) == 0 ? 5 : 11)
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime();
    }
    return names;
}

} // namespace lexiquill::bench
