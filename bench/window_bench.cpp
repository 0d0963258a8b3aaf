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

struct Program {
    std::string name;
    std::vector<std::string> command;
    std::vector<std::string> variables{};
    std::vector<double> seconds{};
    std::vector<double> mebibytes{};
};

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// The environment variables of a new user with `words` words in the wordbook.
std::vector<std::string> newUser(qsizetype words) {
    const QString home = newDirectory();
    const QString data = home + QStringLiteral("/data");
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
    std::vector<Program> programs{{.name = "Lexiquill", .command = {LEXIQUILL_PROGRAM}},
                                  {.name = "bare window", .command = {LEXIQUILL_BARE_WINDOW}},
                                  {.name = "Lexiquill, 20000 words", .command = {LEXIQUILL_PROGRAM}}};
    for (Program &program : programs)
        program.variables = newUser(&program == &programs.back() ? largeWordbook : 0);

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
            }
        }
    }

    std::printf(
        "\n| window of | mapped after | fastest | memory 2 s later |\n| :--- | ---: | ---: | ---: |\n");
    for (const Program &each : programs)
        std::printf("| %s | %.0f ms | %.0f ms | %.1f MiB |\n", each.name.c_str(), median(each.seconds) * 1e3,
                    std::ranges::min(each.seconds) * 1e3, median(each.mebibytes));

    std::printf("\n| Lexiquill to the bare window | ratio | limit | |\n| :--- | ---: | ---: | :--- |\n");
    const Program &ours = programs[0];
    const Program &bare = programs[1];
    const bool isQuick = isWithin("time", median(ours.seconds), median(bare.seconds), timeLimit);
    const bool isSmall = isWithin("memory", median(ours.mebibytes), median(bare.mebibytes), memoryLimit);
    return isQuick && isSmall ? EXIT_SUCCESS : EXIT_FAILURE;
}
