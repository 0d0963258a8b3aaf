#include "bench.h"
#include "desktop_search/index/search_database.h"
#include "desktop_search/spotlight_manager.h"
#include "main/modules.h"
#include "sample_data.h"

#include <benchmark/benchmark.h>

namespace lexiquill::bench {

namespace {

using benchmark::State;

constexpr qsizetype indexedWords = 20'000;

const QList<SearchItem> &sampleItems() {
    static const QList<SearchItem> items = [] {
        QList<SearchItem> list;
        for (const WordRecord &record : sampleRecords(indexedWords))
            list += SpotlightManager::item(record);
        return list;
    }();
    return items;
}

std::unique_ptr<SearchDatabase> newIndex() {
    return loadModule<SearchIndexModule>()->open(newDirectory() + QStringLiteral("/index.sqlite"));
}

/// An index with all of the sample items.
SearchDatabase &fullIndex() {
    static const auto index = [] {
        auto database = newIndex();
        if (database->complete(sampleItems()))
            std::fprintf(stderr, "the index could not be filled\n");
        return database;
    }();
    return *index;
}

void publishAll(State &state) {
    const QList<SearchItem> &items = sampleItems();
    for ([[maybe_unused]] const auto each : state) {
        state.PauseTiming();
        const auto index = newIndex();
        state.ResumeTiming();
        if (index->put(items))
            state.SkipWithError("the items could not be published");
    }
}

/// Opens the index and closes it, as a terminal command does.
void publishOne(State &state) {
    SearchDatabase &index = fullIndex();
    qsizetype position = 0;
    for ([[maybe_unused]] const auto each : state) {
        position = (position + 7919) % indexedWords;
        if (index.put({sampleItems().at(position)}))
            state.SkipWithError("the item could not be published");
    }
}

/// Finds at most fifty items. There must be at least `fewest`.
void query(State &state, const char *terms, qsizetype fewest) {
    SearchDatabase &index = fullIndex();
    const QStringList list = QString::fromUtf8(terms).split(u' ');
    for ([[maybe_unused]] const auto each : state) {
        if (index.find(list, 50).size() < fewest)
            state.SkipWithError("not everything was found");
    }
}

} // namespace

std::vector<std::string> registerIndexBenchmarks() {
    const std::vector<std::pair<std::string, std::function<void(State &)>>> functions{
        {"publish 20,000 words", publishAll},
        {"publish one word more", publishOne},
        {"query a word",
         [](State &state) {
             query(state, "abandon", 1);
         }},
        {"query one letter",
         [](State &state) {
             query(state, "a", 50);
         }},
        {"query one Chinese character",
         [](State &state) {
             query(state, "的", 50);
         }},
        {"query two Chinese characters",
         [](State &state) {
             query(state, "抛弃", 1);
         }},
        {"query what all words have",
         [](State &state) {
             query(state, "单词 生词本", 50);
         }},
    };
    std::vector<std::string> names;
    for (const auto &[name, function] : functions) {
        names.push_back(name);
        benchmark::RegisterBenchmark(name.c_str(), function)
            ->Iterations(name == functions.front().first ? 1 : 20)
            ->Repetitions(11)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    return names;
}

} // namespace lexiquill::bench
