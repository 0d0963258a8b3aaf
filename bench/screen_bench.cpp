#include "app/content_view.h"
#include "app/review/review_session.h"
#include "app/review/weekly_plan_model.h"
#include "app/review/weekly_review.h"
#include "app/search/search_session.h"
#include "app/search/word_card.h"
#include "app/services.h"
#include "app/statistics/statistics.h"
#include "app/wordbook/review_history.h"
#include "app/wordbook/word_list_model.h"
#include "bench.h"
#include "lookup/dictionary_service.h"
#include "lookup/online_source.h"
#include "platform/linux/linux_dictionary_services.h"
#include "sample_data.h"
#include "storage/storage_manager.h"
#include "storage/wordbook_file.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>

namespace lexiquill::bench {

namespace {

using benchmark::State;
using SteadyClock = std::chrono::steady_clock;

constexpr qsizetype recordCount = 20'000;

/// Services with a wordbook of 20,000 words, which is the same for all benchmarks.
class SampleServices final : public Services {
public:
    StorageManager &storage() override { return m_storage; }
    DictionaryService &dictionary() override { return m_dictionary; }
    SystemDictionaryService &offlineDictionaries() override { return m_offline; }

    static SampleServices &shared() {
        static auto *const instance = new SampleServices;
        return *instance;
    }

private:
    struct NoOnlineSource : OnlineSource {
        QCoro::Task<std::optional<DictionaryEntry>> lookup(QString, CancellationToken) override {
            co_return std::nullopt;
        }
    };

    static QString writeWordbook(const QString &directory) {
        QString file = directory + QStringLiteral("/vocabulary.json");
        WordbookFile(file).save(sampleRecords(recordCount), std::nullopt);
        return file;
    }

    QString m_directory = newDirectory();
    UserDefaults m_defaults{m_directory + QStringLiteral("/settings.conf")};
    LinuxDictionaryServices m_platformDictionaries{{}, {}, m_directory};
    SystemDictionaryService m_offline{m_platformDictionaries};
    NoOnlineSource m_online;
    DictionaryService m_dictionary{m_online, m_offline, m_defaults};
    SearchIndex m_index;
    SpotlightManager m_spotlight{m_index};
    StorageManager m_storage{{.storageFile = writeWordbook(m_directory),
                              .defaults = m_defaults,
                              .dictionary = m_offline,
                              .spotlight = m_spotlight}};
};

/// Measures what an observer of the store does when a change has been saved.
void followChange(State &state,
                  const std::function<std::shared_ptr<QObject>(StorageManager &)> &makeObserver) {
    StorageManager &storage = SampleServices::shared().storage();
    // The store tells in the order of the connections.
    SteadyClock::time_point saved;
    const auto before =
        QObject::connect(&storage, &StorageManager::wordsChanged, [&] { saved = SteadyClock::now(); });
    const std::shared_ptr<QObject> observer = makeObserver(storage);
    double seconds = 0;
    const auto after = QObject::connect(&storage, &StorageManager::weeklyPlanChanged, [&] {
        seconds = std::chrono::duration<double>(SteadyClock::now() - saved).count();
    });
    qsizetype position = 0;
    for ([[maybe_unused]] const auto each : state) {
        position = (position + 7919) % storage.words().size();
        DictionaryEntry entry = sampleEntries().at(position % sampleEntries().size());
        entry.headword = storage.words().at(position).word;
        // The word comes to the front of the list of the latest ones.
        storage.addOrUpdateSearch(entry);
        state.SetIterationTime(seconds);
    }
    QObject::disconnect(before);
    QObject::disconnect(after);
}

template <typename Observer> std::shared_ptr<QObject> observerOf(StorageManager &storage) {
    auto observer = std::make_shared<Observer>(storage);
    if constexpr (requires { observer->setActive(true); })
        observer->setActive(true);
    return observer;
}

template <typename OfWord> std::shared_ptr<QObject> observerOfWord(StorageManager &storage) {
    auto observer = std::make_shared<OfWord>(storage);
    observer->setWordId(storage.words().last().id.toString(QUuid::WithoutBraces));
    return observer;
}

/// Types `text` letter by letter into the filter of the wordbook's list; measures the slowest key.
void filter(State &state, const char *text) {
    WordListModel model(SampleServices::shared().storage());
    const QString letters = QString::fromUtf8(text);
    for ([[maybe_unused]] const auto each : state) {
        std::chrono::duration<double> longest{};
        for (qsizetype size = 1; size <= letters.size(); ++size) {
            const auto start = SteadyClock::now();
            model.setSearchText(letters.first(size));
            longest = std::max<std::chrono::duration<double>>(longest, SteadyClock::now() - start);
        }
        state.SetIterationTime(longest.count());
        model.setSearchText({});
    }
}

/// The same for the field of the search screen; what the dictionaries do on their thread does not count.
void suggest(State &state, const char *text) {
    SearchSession session(SampleServices::shared());
    const QString letters = QString::fromUtf8(text);
    for ([[maybe_unused]] const auto each : state) {
        std::chrono::duration<double> longest{};
        for (qsizetype size = 1; size <= letters.size(); ++size) {
            const auto start = SteadyClock::now();
            session.setText(letters.first(size));
            longest = std::max<std::chrono::duration<double>>(longest, SteadyClock::now() - start);
        }
        state.SetIterationTime(longest.count());
    }
}

} // namespace

std::vector<std::string> registerScreenBenchmarks() {
    const auto following = [](auto makeObserver) {
        return [makeObserver](State &state) {
            followChange(state, makeObserver);
        };
    };
    const auto session = [](StorageManager &) {
        return std::make_shared<SearchSession>(SampleServices::shared());
    };
    const auto badge = [](StorageManager &) {
        return std::make_shared<ContentView>(SampleServices::shared());
    };
    const std::vector<std::pair<std::string, std::function<void(State &)>>> functions{
        {"after a change: badge of the sidebar", following(badge)},
        {"after a change: suggestions", following(session)},
        {"after a change: definition card", following(observerOfWord<WordCard>)},
        {"after a change: review history", following(observerOfWord<ReviewHistory>)},
        {"after a change: list of the wordbook", following(observerOf<WordListModel>)},
        {"after a change: weekly plan", following(observerOf<WeeklyReview>)},
        {"after a change: list of the plan", following(observerOf<WeeklyPlanModel>)},
        {"after a change: flash cards", following(observerOf<ReviewSession>)},
        {"after a change: statistics", following(observerOf<Statistics>)},
        {"key: English filter",
         [](State &state) {
             filter(state, "ation");
         }},
        {"key: Chinese filter",
         [](State &state) {
             filter(state, "听到的词");
         }},
        {"key: English suggestions",
         [](State &state) {
             suggest(state, "abandon");
         }},
        {"key: Chinese suggestions",
         [](State &state) {
             suggest(state, "抛弃");
         }},
    };
    std::vector<std::string> names;
    for (const auto &[name, function] : functions) {
        names.push_back(name);
        benchmark::RegisterBenchmark(name.c_str(), function)
            ->Iterations(name.rfind("key", 0) == 0 ? 20 : 3)
            ->Repetitions(5)
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime();
    }
    return names;
}

} // namespace lexiquill::bench
