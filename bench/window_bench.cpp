// Opens the main windows of several programs in turn and prints what each costs. Fails when a limit is
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

struct Program {
    std::string name;
    std::vector<std::string> command;
    double limit = 0; ///< how many times the cost of this one ours may have; 0 for any
    std::vector<std::string> variables{};
    std::vector<double> seconds{};
    std::vector<double> mebibytes{};
};

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// A user of one program only, who has `words` in the wordbook.
std::vector<std::string> newUser(qsizetype words) {
    const QString home = newDirectory();
    const QString data = home + QStringLiteral("/data");
    if (words > 0) {
        QDir().mkpath(data + QStringLiteral("/Lexiquill"));
        saveRecords(data + QStringLiteral("/Lexiquill/vocabulary.json"), words);
    }
    // Nobody is asked over the network.
    QDir().mkpath(home + QStringLiteral("/config/Lexiquill"));
    QFile settings(home + QStringLiteral("/config/Lexiquill/Lexiquill.conf"));
    if (settings.open(QIODevice::WriteOnly))
        settings.write("[General]\ndictionarySourceMode=appleOffline\n");
    const std::string path = home.toStdString();
    return {"HOME=" + path, "XDG_DATA_HOME=" + path + "/data", "XDG_CONFIG_HOME=" + path + "/config",
            "XDG_CACHE_HOME=" + path + "/cache"};
}

bool isWithin(const char *what, const Program &ours, const Program &reference, double left, double right) {
    const double ratio = left / right;
    const bool within = ratio <= reference.limit;
    std::printf("| %s | %s, %s | %.2f | %.1f | %s |\n", ours.name.c_str(), reference.name.c_str(), what,
                ratio, reference.limit, within ? "✓" : "✗");
    return within;
}

} // namespace

int main() {
    std::vector<Program> programs{{.name = "Lexiquill", .command = {LEXIQUILL_PROGRAM}},
                                  {.name = "goldendict", .command = {"goldendict"}, .limit = 0.7},
                                  {.name = "bare window", .command = {LEXIQUILL_BARE_WINDOW}, .limit = 1.8},
                                  {.name = "Lexiquill, 20000 words", .command = {LEXIQUILL_PROGRAM}}};
    for (Program &program : programs)
        program.variables = newUser(&program == &programs.back() ? largeWordbook : 0);

    WindowMeter meter;
    // The first round fills the caches, those of the programs too.
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

    std::printf("\n| measured | against | ratio | limit | |\n| :--- | :--- | ---: | ---: | :--- |\n");
    bool areWithin = true;
    const Program &ours = programs.front();
    for (const Program &each : programs) {
        if (each.limit == 0)
            continue;
        areWithin &= isWithin("time", ours, each, median(ours.seconds), median(each.seconds));
        areWithin &= isWithin("memory", ours, each, median(ours.mebibytes), median(each.mebibytes));
    }
    return areWithin ? EXIT_SUCCESS : EXIT_FAILURE;
}
