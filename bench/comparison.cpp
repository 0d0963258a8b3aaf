#include "comparison.h"

#include <cstdio>
#include <iostream>

namespace lexiquill::bench {

namespace {

/// The number after the last slash: how many records the benchmark's wordbook has.
double recordsOf(const std::string &name) {
    return std::stod(name.substr(name.rfind('/') + 1));
}

std::string milliseconds(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, seconds < 0.1 ? "%.2f ms" : "%.0f ms", seconds * 1e3);
    return text;
}

std::string microseconds(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, seconds < 1e-6 ? "%.3f µs" : "%.2f µs", seconds * 1e6);
    return text;
}

} // namespace

bool MedianReporter::ReportContext(const Context &context) {
    PrintBasicContext(&std::cerr, context);
    return true;
}

void MedianReporter::ReportRuns(const std::vector<Run> &runs) {
    for (const Run &run : runs) {
        const std::string name =
            run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
        if (run.error_occurred)
            std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
        if (run.error_occurred || run.aggregate_name != "median")
            continue;
        m_seconds[name] = run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        std::fprintf(stderr, "%-28s %s\n", name.c_str(), milliseconds(m_seconds[name]).c_str());
    }
}

void MedianReporter::printTimesPerRecord(const std::vector<std::string> &operations,
                                         const std::vector<int> &sizes) const {
    std::string header = "| time per record, wordbook of |";
    std::string rule = "| :--- |";
    for (const int size : sizes) {
        header += ' ' + std::to_string(size) + " |";
        rule += " ---: |";
    }
    std::printf("\n%s\n%s\n", header.c_str(), rule.c_str());
    for (const std::string &operation : operations) {
        std::printf("| %s |", operation.c_str());
        for (const int size : sizes) {
            const auto found = m_seconds.find(operation + '/' + std::to_string(size));
            std::printf(" %s |", found == m_seconds.end() ? "" : microseconds(found->second / size).c_str());
        }
        std::printf("\n");
    }
}

bool MedianReporter::printComparisons(const std::vector<Comparison> &comparisons) const {
    bool isWithinLimits = true;
    std::printf("\n| measured | against | time | time | ratio | limit | |\n"
                "| :--- | :--- | ---: | ---: | ---: | ---: | :--- |\n");
    for (const Comparison &each : comparisons) {
        const auto measured = m_seconds.find(each.measured);
        const auto reference = m_seconds.find(each.reference);
        if (measured == m_seconds.end() || reference == m_seconds.end())
            continue;
        double left = measured->second;
        double right = reference->second;
        if (each.isPerRecord) {
            left /= recordsOf(each.measured);
            right /= recordsOf(each.reference);
        }
        const auto &time = each.isPerRecord ? microseconds : milliseconds;
        const bool isWithin = left / right <= each.limit;
        isWithinLimits = isWithinLimits && isWithin;
        std::printf("| %s | %s | %s | %s | %.2f | %.1f | %s |\n", each.measured.c_str(),
                    each.reference.c_str(), time(left).c_str(), time(right).c_str(), left / right, each.limit,
                    isWithin ? "✓" : "✗");
    }
    return isWithinLimits;
}

bool MedianReporter::printLimits(const std::vector<Limit> &limits) const {
    bool isWithinLimits = true;
    std::printf("\n| measured | time | limit | |\n| :--- | ---: | ---: | :--- |\n");
    for (const Limit &each : limits) {
        const auto measured = m_seconds.find(each.measured);
        if (measured == m_seconds.end())
            continue;
        const bool isLimited = each.seconds > 0;
        const bool isWithin = !isLimited || measured->second <= each.seconds;
        isWithinLimits = isWithinLimits && isWithin;
        std::printf("| %s | %s | %s | %s |\n", each.measured.c_str(), milliseconds(measured->second).c_str(),
                    isLimited ? milliseconds(each.seconds).c_str() : "",
                    !isLimited ? ""
                    : isWithin ? "✓"
                               : "✗");
    }
    return isWithinLimits;
}

} // namespace lexiquill::bench
