#include "bench.h"
#include "lookup/dictionary_service.h"
#include "sample_data.h"
#include "settings/user_defaults.h"
#include "storage/wordbook_file.h"

#include <QDir>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lexiquill::bench {

namespace {

constexpr quint32 dictionaryWords = 500'000;
constexpr qsizetype wordbookRecords = 1'000;
constexpr quint32 searchedWord = 314'159;

/// The home of a user with a large dictionary and a wordbook of some years, who looks words up offline.
struct Home {
    SampleFormat format;
    QString path = newDirectory();
    QString dictionaryDirectory = path + QStringLiteral("/data/stardict/dic");
    QString wordbook = path + QStringLiteral("/data/Lexiquill/vocabulary.json");
    /// The output of the programs goes to memory, because a file system may write a file to disk when it is
    /// closed.
    int output = ::memfd_create("output", MFD_CLOEXEC);

    explicit Home(SampleFormat itsFormat) : format(itsFormat) {
        QDir().mkpath(dictionaryDirectory);
        QDir().mkpath(path + QStringLiteral("/data/Lexiquill"));
        QDir().mkpath(path + QStringLiteral("/config/Lexiquill"));
        UserDefaults(path + QStringLiteral("/config/Lexiquill/Lexiquill.conf"))
            .set(DictionaryService::userDefaultsKey, rawValue(DictionarySourceMode::AppleOffline));
        if (!writeDictionary(dictionaryDirectory, format, madeUpWords(dictionaryWords)))
            std::fprintf(stderr, "the dictionary could not be written\n");
        saveRecords(wordbook, wordbookRecords);
    }

    static const Home &with(SampleFormat format) {
        static std::map<SampleFormat, std::unique_ptr<Home>> homes;
        auto &home = homes[format];
        if (!home)
            home = std::make_unique<Home>(format);
        return *home;
    }
};

/// Runs a program in the home and returns the seconds from its start to its end, or no value when it fails.
std::optional<double> run(const Home &home, const std::vector<std::string> &command) {
    const std::string path = home.path.toStdString();
    const std::vector<std::string> variables{"HOME=" + path,
                                             "XDG_DATA_HOME=" + path + "/data",
                                             "XDG_CONFIG_HOME=" + path + "/config",
                                             "XDG_CACHE_HOME=" + path + "/cache",
                                             "LANG=C.UTF-8",
                                             "PATH=/usr/bin:/bin"};
    const auto pointers = [](const std::vector<std::string> &texts) {
        std::vector<char *> result;
        result.reserve(texts.size() + 1);
        for (const std::string &text : texts)
            result.push_back(const_cast<char *>(text.c_str()));
        result.push_back(nullptr);
        return result;
    };
    const std::vector<char *> arguments = pointers(command);
    const std::vector<char *> environment = pointers(variables);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    if (::ftruncate(home.output, 0) != 0 || ::lseek(home.output, 0, SEEK_SET) != 0)
        return std::nullopt;
    posix_spawn_file_actions_adddup2(&actions, home.output, 1);
    const auto start = std::chrono::steady_clock::now();
    pid_t process = 0;
    int status = -1;
    if (posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environment.data()) == 0)
        waitpid(process, &status, 0);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    posix_spawn_file_actions_destroy(&actions);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? std::optional(elapsed.count()) : std::nullopt;
}

bool outputContains(const Home &home, const QByteArray &text) {
    QByteArray output(1 << 16, '\0');
    const ssize_t size = ::pread(home.output, output.data(), static_cast<size_t>(output.size()), 0);
    return size >= 0 && output.first(size).contains(text);
}

/// Measures runs of a command whose output must contain `expected`.
void measure(benchmark::State &state, const std::vector<std::string> &command, const QByteArray &expected,
             SampleFormat format = SampleFormat::StarDict) {
    const Home &home = Home::with(format);
    // The first run of a dictionary program builds its caches.
    if (!run(home, command) || !outputContains(home, expected))
        state.SkipWithError("the program does not work");
    for ([[maybe_unused]] const auto each : state) {
        const auto seconds = run(home, command);
        if (!seconds)
            state.SkipWithError("the program failed");
        state.SetIterationTime(seconds.value_or(0));
    }
}

/// The first gloss of the searched word. An answer without the article does not contain it.
QByteArray expectedGloss() {
    const DictionaryEntry &sample = sampleEntries().at(searchedWord % sampleEntries().size());
    return sample.posGroups.first().cleanChineseList().first().toUtf8();
}

void emptyProgram(benchmark::State &state) {
    measure(state, {LEXIQUILL_EMPTY_PROGRAM}, {});
}

void help(benchmark::State &state) {
    measure(state, {LEXIQUILL_PROGRAM, "help"}, "Lexiquill search <word>");
}

void search(benchmark::State &state, SampleFormat format) {
    measure(state, {LEXIQUILL_PROGRAM, "search", madeUpWord(searchedWord).toStdString()}, expectedGloss(),
            format);
}

/// Uses its own wordbook, so that the two programs do not influence each other.
void bareSearch(benchmark::State &state) {
    static const QString wordbook = [] {
        QString file = Home::with(SampleFormat::StarDict).path + QStringLiteral("/bare/vocabulary.json");
        saveRecords(file, wordbookRecords);
        return file;
    }();
    measure(state, {LEXIQUILL_BARE_SEARCH, wordbook.toStdString()}, "written");
}

} // namespace

void registerProcessBenchmarks() {
    std::vector<std::pair<std::string, std::function<void(benchmark::State &)>>> functions{
        {"empty_program", emptyProgram}, {"help", help}, {"bare_search", bareSearch}};
    for (const SampleFormat format : sampleFormats) {
        functions.emplace_back(std::string("search/") + nameOf(format),
                               [format](benchmark::State &state) { search(state, format); });
    }
    for (const auto &[name, function] : functions) {
        benchmark::RegisterBenchmark(name.c_str(), function)
            ->Iterations(1)
            ->Repetitions(101)
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime();
    }
}

} // namespace lexiquill::bench
