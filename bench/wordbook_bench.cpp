#include "bench.h"
#include "dictionaries/dictionary_shelf.h"
#include "model/record_merge.h"
#include "platform/durable_file.h"
#include "review/weekly_review_scheduler.h"
#include "sample_data.h"
#include "storage/storage_manager.h"
#include "storage/wordbook_file.h"

#include <QDir>
#include <QFile>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <simdjson.h>

#include <chrono>
#include <map>

namespace lexiquill::bench {

namespace {

using benchmark::State;

/// The file that every benchmark on a wordbook of this size starts from.
const QString &sampleFile(int64_t size) {
    static std::map<int64_t, QString> files;
    QString &path = files[size];
    if (path.isEmpty()) {
        path = newDirectory() + QStringLiteral("/vocabulary.json");
        saveRecords(path, size);
        std::fprintf(stderr, "%d records: %.0f bytes each\n", static_cast<int>(size),
                     static_cast<double>(QFile(path).size()) / static_cast<double>(size));
    }
    return path;
}

/// A wordbook file that may be replaced: another name of the sample file, which itself stays unchanged.
class SampleCopy {
public:
    explicit SampleCopy(int64_t size) : m_path(newDirectory() + QStringLiteral("/vocabulary.json")) {
        keepFileAs(sampleFile(size), m_path);
    }
    ~SampleCopy() { QDir(directory()).removeRecursively(); }
    Q_DISABLE_COPY_MOVE(SampleCopy)

    const QString &path() const { return m_path; }
    QString directory() const { return m_path.section(u'/', 0, -2); }

private:
    QString m_path;
};

/// Removes everything from the processor's caches. A real command starts with cold caches, and a small
/// wordbook must not seem faster because it has just been created.
void emptyCaches() {
    constexpr std::size_t size = 96 << 20;
    static std::vector<char> other(size);
    static char value = 0;
    std::fill(other.begin(), other.end(), ++value);
    benchmark::DoNotOptimize(other.data());
}

/// Measures `work(prepare())` once for each iteration of the benchmark; the preparation is not measured. Free
/// memory is returned to the system first, so that every run starts like a new process, with a large and with
/// a small wordbook.
template <typename Prepare, typename Work> void measure(State &state, Prepare prepare, Work work) {
    for ([[maybe_unused]] const auto each : state) {
        malloc_trim(0);
        const auto input = prepare();
        emptyCaches();
        const auto start = std::chrono::steady_clock::now();
        const auto result = work(input);
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        benchmark::DoNotOptimize(result);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename Work> void measure(State &state, Work work) {
    measure(
        state, [] { return 0; }, [&](int) { return work(); });
}

QByteArray sampleBytes(int64_t size) {
    QFile file(sampleFile(size));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void load(State &state) {
    WordbookFile file(sampleFile(state.range(0)));
    measure(state, [&] {
        auto content = file.load(sampleInstant());
        if (content.words.size() != state.range(0))
            state.SkipWithError("not all records were read");
        return content;
    });
}

void parseAsDom(State &state) {
    const QByteArray bytes = sampleBytes(state.range(0));
    const simdjson::padded_string text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    measure(state, [&] {
        auto parser = std::make_unique<simdjson::dom::parser>();
        if (parser->parse(text).error() != simdjson::SUCCESS)
            state.SkipWithError("no JSON");
        return parser;
    });
}

void writeDurably(State &state) {
    const SampleCopy copy(state.range(0));
    const QByteArray bytes = sampleBytes(state.range(0));
    measure(state, [&] {
        const auto file = DurableFile::create(copy.path());
        const bool isWritten = file && file->write(bytes) && file->commit();
        if (!isWritten)
            state.SkipWithError("the file could not be written");
        return isWritten;
    });
}

void save(State &state) {
    const SampleCopy copy(state.range(0));
    WordbookFile file(copy.path());
    auto words = file.load(sampleInstant()).words;
    measure(state, [&] {
        ++words[words.size() / 2].searchCount;
        const auto lock = file.lock(std::chrono::seconds(1));
        const bool isSaved = file.save(*lock, words, std::nullopt);
        if (!isSaved)
            state.SkipWithError("the file could not be written");
        return isSaved;
    });
}

/// Measures `change(storage, index of a record)` with its own storage.
template <typename Change> void measureChange(State &state, Change change) {
    const SampleCopy copy(state.range(0));
    UserDefaults defaults(copy.directory() + QStringLiteral("/settings.conf"));
    DeletedWords deletedWords(defaults);
    StorageManager storage({.storageFile = copy.path(), .deletedWords = deletedWords, .firstWords = [] {
                                return QList<WordRecord>();
                            }});
    qsizetype position = 0;
    measure(state, [&] {
        position = (position + 7919) % storage.words().size();
        change(storage, position);
        if (storage.hasUnsavedChanges())
            state.SkipWithError("the file could not be written");
        return storage.words().size();
    });
}

void recordReview(State &state) {
    measureChange(state, [](StorageManager &storage, qsizetype position) {
        const auto feedback = position % 4 == 0 ? ReviewFeedback::Forgot : ReviewFeedback::Remembered;
        storage.recordReview(storage.words().at(position).id, feedback);
    });
}

void addOrUpdateSearch(State &state) {
    measureChange(state, [](StorageManager &storage, qsizetype position) {
        DictionaryEntry entry = sampleEntries().at(position % sampleEntries().size());
        // A new word is searched in the whole wordbook; a known one replaces the content of its record.
        if (position % 2 == 0)
            entry.headword += QStringLiteral(" new ") + QString::number(position);
        storage.addOrUpdateSearch(entry);
    });
}

/// Records that have just been read, like those from which a terminal command makes its plan.
QList<WordRecord> loadedRecords(const State &state) {
    return WordbookFile(sampleFile(state.range(0))).load(sampleInstant()).words;
}

void generatePlan(State &state) {
    const Calendar calendar = Calendar::current();
    measure(
        state, [&] { return loadedRecords(state); },
        [&](const QList<WordRecord> &words) {
            return WeeklyReviewScheduler::generateWeeklyPlan(words, sampleInstant(), calendar);
        });
}

void exportPlan(State &state) {
    const Calendar calendar = Calendar::current();
    measure(
        state,
        [&] {
            return WeeklyReviewScheduler::generateWeeklyPlan(loadedRecords(state), sampleInstant(), calendar);
        },
        [&](const WeeklyReviewPlan &plan) {
            return WeeklyReviewScheduler::exportMarkdown(plan, calendar).toUtf8();
        });
}

/// A server's copy of the wordbook: a third of the records are the same, a third have more repetitions, a
/// third are new.
QList<WordRecord> cloudRecords(const QList<WordRecord> &words) {
    QList<WordRecord> cloud = words;
    for (qsizetype i = 0; i < cloud.size(); ++i) {
        if (i % 3 == 1)
            cloud[i].repetitionCount += 1;
        else if (i % 3 == 2)
            cloud[i].word += QStringLiteral(" new");
    }
    return cloud;
}

void merge(State &state) {
    const QList<WordRecord> loaded = loadedRecords(state);
    const QList<WordRecord> cloud = cloudRecords(loaded);
    measure(
        state,
        [&] {
            auto words = std::make_unique<QList<WordRecord>>(loaded);
            words->detach();
            return words;
        },
        [&](const std::unique_ptr<QList<WordRecord>> &words) {
            if (!mergeCloudWords(*words, cloud, {}))
                state.SkipWithError("nothing was merged");
            return words->size();
        });
}

} // namespace

std::vector<std::string> registerWordbookBenchmarks() {
    const std::pair<std::string, void (*)(State &)> functions[] = {
        {"load", load},
        {"dom_parse", parseAsDom},
        {"save", save},
        {"recordReview", recordReview},
        {"addOrUpdateSearch", addOrUpdateSearch},
        {"durable_write", writeDurably},
        {"plan", generatePlan},
        {"export", exportPlan},
        {"merge", merge},
    };
    std::vector<std::string> names;
    for (const auto &[name, function] : functions) {
        names.push_back(name);
        for (const int size : wordbookSizes) {
            benchmark::RegisterBenchmark(name.c_str(), function)
                ->Arg(size)
                ->Iterations(size <= 1'000    ? 10
                             : size <= 10'000 ? 3
                                              : 1)
                ->Repetitions(size <= 10'000 ? 15 : 9)
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime();
        }
    }
    return names;
}

} // namespace lexiquill::bench
