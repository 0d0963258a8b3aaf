#include "app/dictionaries/dictionary_imports.h"
#include "app/review/review_session.h"
#include "app/review/weekly_plan_model.h"
#include "app/review/weekly_review.h"
#include "app/search/search_session.h"
#include "app/search/word_card.h"
#include "app/shell/content_view.h"
#include "app/shell/services.h"
#include "app/statistics/statistics.h"
#include "app/wordbook/review_history.h"
#include "app/wordbook/word_list_model.h"
#include "bench.h"
#include "desktop_search/spotlight_manager.h"
#include "dictionaries/dictionary_shelf.h"
#include "dictionaries/import/dictionary_importer.h"
#include "hotkey/hot_key_manager.h"
#include "lookup/dictionary_service.h"
#include "lookup/online_source.h"
#include "platform/notifier.h"
#include "platform/tray.h"
#include "sample_data.h"
#include "settings/server_settings.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"
#include "sync/sync_manager.h"
#include "update/update_manager.h"

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

/// A wordbook of 20,000 words, shared by all benchmarks, and the services that the screens need.
class Sample {
public:
    static Sample &shared() {
        static auto *const instance = new Sample;
        return *instance;
    }

    StorageManager &storage() { return m_storage; }
    Services servicesWith(CurrentWeeklyPlan &plan) {
        return {.storage = m_storage,
                .plan = plan,
                .dictionary = m_dictionary,
                .offlineDictionaries = m_offline,
                .shelf = m_shelf,
                .importer = m_importer,
                .spotlight = m_spotlight,
                .hotKeys = m_hotKeys,
                .http = m_http,
                .sync = m_sync,
                .updater = m_updater,
                .defaults = m_defaults,
                .servers = m_servers,
                .notifier = m_notifier,
                .tray = m_tray};
    }

private:
    struct NoOnlineSource : OnlineSource {
        QCoro::Task<std::optional<DictionaryEntry>> lookup(QString, std::stop_token) override {
            co_return std::nullopt;
        }
    };
    struct NoImporter : DictionaryImporter {
        QList<ImportResult> import(const QStringList &, const std::stop_token &,
                                   const ImportProgress &) override {
            return {};
        }
    };
    struct NoRegistrar : HotKeyRegistrar {
        qint32 installHandler(PressHandler) override { return HotKeyStatus::unavailable; }
        void registerHotKey(quint32, quint32, StatusHandler) override {}
        void unregisterHotKey() override {}
    };

    static QString writeWordbook(const QString &directory) {
        QString file = directory + QStringLiteral("/vocabulary.json");
        saveRecords(file, recordCount);
        return file;
    }

    QString m_directory = newDirectory();
    UserDefaults m_defaults{m_directory + QStringLiteral("/settings.conf")};
    DictionaryShelf m_shelf{{.installed = {}, .bundled = {}, .cache = m_directory}, {}};
    SystemDictionaryService m_offline{m_shelf};
    NoImporter m_importer;
    NoOnlineSource m_online;
    DictionaryService m_dictionary{m_online, m_offline, m_defaults};
    SearchIndex m_index;
    SpotlightManager m_spotlight{m_index};
    DeletedWords m_deletedWords{m_defaults};
    StorageManager m_storage{
        {.storageFile = writeWordbook(m_directory), .deletedWords = m_deletedWords, .firstWords = [] {
             return QList<WordRecord>();
         }}};
    NoRegistrar m_registrar;
    Notifier m_notifier;
    Tray m_tray;
    HotKeyManager m_hotKeys{m_registrar, m_defaults};
    ServerSettings m_servers{m_defaults};
    HttpClient m_http;
    SyncManager m_sync{{.apiBase = {}, .http = m_http, .storage = m_storage, .defaults = m_defaults}};
    UpdateManager m_updater{{.http = m_http,
                             .updateCheckURL = {},
                             .currentVersion = {},
                             .currentBuild = {},
                             .installation = {},
                             .platform = ScriptPlatform::Linux,
                             .quit = [](int) {
                             }}};
};

/// Measures the work of an observer of the wordbook after a change has been saved.
void followChange(State &state, const std::function<std::shared_ptr<QObject>(Services &)> &makeObserver) {
    StorageManager &storage = Sample::shared().storage();
    // Observers are notified in the order of their connections.
    SteadyClock::time_point saved;
    const auto before =
        QObject::connect(&storage, &StorageManager::wordsChanged, [&] { saved = SteadyClock::now(); });
    CurrentWeeklyPlan plan(storage);
    Services services = Sample::shared().servicesWith(plan);
    const std::shared_ptr<QObject> observer = makeObserver(services);
    double seconds = 0;
    const auto after = QObject::connect(&storage, &StorageManager::wordsChanged, [&] {
        seconds = std::chrono::duration<double>(SteadyClock::now() - saved).count();
    });
    qsizetype position = 0;
    for ([[maybe_unused]] const auto each : state) {
        position = (position + 7919) % storage.words().size();
        DictionaryEntry entry = sampleEntries().at(position % sampleEntries().size());
        entry.headword = storage.words().at(position).word;
        // The word moves to the front of the list of recent words.
        storage.addOrUpdateSearch(entry);
        state.SetIterationTime(seconds);
    }
    QObject::disconnect(before);
    QObject::disconnect(after);
}

template <typename Observer> std::shared_ptr<QObject> observerOf(Services &services) {
    std::shared_ptr<Observer> observer;
    if constexpr (std::is_constructible_v<Observer, Services &>)
        observer = std::make_shared<Observer>(services);
    else
        observer = std::make_shared<Observer>(services.storage);
    if constexpr (requires { observer->setActive(true); })
        observer->setActive(true);
    return observer;
}

template <typename OfWord> std::shared_ptr<QObject> observerOfWord(Services &services) {
    auto observer = std::make_shared<OfWord>(services);
    observer->setWordId(services.storage.words().last().id.toString(QUuid::WithoutBraces));
    return observer;
}

/// Types `text` letter by letter into the filter of the wordbook's list; measures the slowest key.
void filter(State &state, const char *text) {
    WordListModel model(Sample::shared().storage());
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

/// The same for the field of the search screen. The work of the dictionaries on their own thread is not
/// measured.
void suggest(State &state, const char *text) {
    CurrentWeeklyPlan plan(Sample::shared().storage());
    Services services = Sample::shared().servicesWith(plan);
    SearchSession session(services);
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
    const auto session = [](Services &services) {
        return std::make_shared<SearchSession>(services);
    };
    const auto badge = [](Services &services) {
        struct Content {
            explicit Content(Services &services) : imports(services), view(services, imports) {}
            DictionaryImports imports;
            ContentView view;
        };
        const auto content = std::make_shared<Content>(services);
        return std::shared_ptr<QObject>(content, &content->view);
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
