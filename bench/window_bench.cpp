// Opens the program's window and a minimal window in turn and prints the cost of each. Fails when a limit is
// exceeded. Needs a display without a window manager and a session bus; see bench/window.

#include "sample_data.h"
#include "storage/wordbook_file.h"
#include "window_meter.h"

#include <QDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace lexiquill;
using namespace lexiquill::bench;

namespace {

constexpr int rounds = 15;
constexpr qsizetype largeWordbook = 20'000;
// The maximum cost of our window, as a multiple of the cost of the minimal window.
constexpr double timeLimit = 1.6;
constexpr double memoryLimit = 1.45;
// How much more private memory a lookup in large dictionaries may leave behind, in MiB.
constexpr double dictionaryMemoryLimit = 15;
constexpr quint32 dictionaryWords = 500'000;

constexpr const char *unknownWord = "lexiquill:zzqxj";

struct Program {
    std::string name;
    std::vector<std::string> command;
    std::vector<std::string> variables{};
    std::vector<double> seconds{};
    std::vector<double> mebibytes{};
    std::vector<double> privateMebibytes{};
};

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// The environment variables of a new user with `words` words in the wordbook, and with a large dictionary of
/// each format if `hasDictionaries`.
std::vector<std::string> newUser(qsizetype words, bool hasDictionaries = false) {
    const QString home = newDirectory();
    const QString data = home + QStringLiteral("/data");
    const QString dictionaries = data + QStringLiteral("/Lexiquill/dictionaries");
    QDir().mkpath(dictionaries);
    for (const SampleFormat format : sampleFormats) {
        const QString directory = dictionaries + u'/' + QString::fromLatin1(nameOf(format));
        if (hasDictionaries &&
            !(QDir().mkpath(directory) && writeDictionary(directory, format, madeUpWords(dictionaryWords))))
            std::fprintf(stderr, "the dictionary could not be written\n");
    }
    if (words > 0) {
        QDir().mkpath(data + QStringLiteral("/Lexiquill"));
        saveRecords(data + QStringLiteral("/Lexiquill/vocabulary.json"), words);
    }
    // Do not use the network.
    QDir().mkpath(home + QStringLiteral("/config/Lexiquill"));
    QFile settings(home + QStringLiteral("/config/Lexiquill/Lexiquill.conf"));
    if (settings.open(QIODevice::WriteOnly))
        settings.write("[General]\ndictionarySourceMode=appleOffline\n");
    const std::string path = home.toStdString();
    return {"HOME=" + path, "XDG_DATA_HOME=" + path + "/data", "XDG_CONFIG_HOME=" + path + "/config",
            "XDG_CACHE_HOME=" + path + "/cache"};
}

bool isWithin(const char *what, double ours, double bare, double limit) {
    const double ratio = ours / bare;
    const bool within = ratio <= limit;
    std::printf("| %s | %.2f | %.2f | %s |\n", what, ratio, limit, within ? "✓" : "✗");
    return within;
}

} // namespace

int main() {
    std::vector<Program> programs{
        {.name = "Lexiquill", .command = {LEXIQUILL_PROGRAM}},
        {.name = "bare window", .command = {LEXIQUILL_BARE_WINDOW}},
        {.name = "Lexiquill, 20000 words", .command = {LEXIQUILL_PROGRAM}},
        // An unknown word: all dictionaries are asked, also for similar words.
        {.name = "Lexiquill, a lookup", .command = {LEXIQUILL_PROGRAM, unknownWord}},
        {.name = "Lexiquill, a lookup in 3 large dictionaries", .command = {LEXIQUILL_PROGRAM, unknownWord}}};
    for (Program &program : programs)
        program.variables =
            newUser(&program == &programs[2] ? largeWordbook : 0, &program == &programs.back());

    WindowMeter meter;
    // The first round fills the caches, including those of the programs.
    for (int round = 0; round <= rounds; ++round) {
        for (Program &program : programs) {
            const auto cost = meter.measure(program.command, program.variables);
            if (!cost) {
                std::fprintf(stderr, "%s opens no window.\n", program.name.c_str());
                return EXIT_FAILURE;
            }
            if (round > 0) {
                program.seconds.push_back(cost->seconds);
                program.mebibytes.push_back(cost->mebibytes);
                program.privateMebibytes.push_back(cost->privateMebibytes);
            }
        }
    }

    std::printf("\n| window of | mapped after | fastest | memory 2 s later | private |\n"
                "| :--- | ---: | ---: | ---: | ---: |\n");
    for (const Program &each : programs)
        std::printf("| %s | %.0f ms | %.0f ms | %.1f MiB | %.1f MiB |\n", each.name.c_str(),
                    median(each.seconds) * 1e3, std::ranges::min(each.seconds) * 1e3, median(each.mebibytes),
                    median(each.privateMebibytes));

    std::printf("\n| Lexiquill to the bare window | ratio | limit | |\n| :--- | ---: | ---: | :--- |\n");
    const Program &ours = programs[0];
    const Program &bare = programs[1];
    const bool isQuick = isWithin("time", median(ours.seconds), median(bare.seconds), timeLimit);
    const bool isSmall = isWithin("memory", median(ours.mebibytes), median(bare.mebibytes), memoryLimit);
    const double more = median(programs[4].privateMebibytes) - median(programs[3].privateMebibytes);
    const bool areDictionariesSmall = more <= dictionaryMemoryLimit;
    std::printf("\nPrivate memory for 3 dictionaries of %u words: %.1f MiB, limit %.0f MiB %s\n",
                dictionaryWords, more, dictionaryMemoryLimit, areDictionariesSmall ? "✓" : "✗");
    return isQuick && isSmall && areDictionariesSmall ? EXIT_SUCCESS : EXIT_FAILURE;
}
