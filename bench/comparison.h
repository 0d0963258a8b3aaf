#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace lexiquill::bench {

/// One figure held against another of the same run.
struct Comparison {
    std::string measured;  ///< name of a benchmark
    std::string reference; ///< name of the benchmark that it is held against
    double limit = 1;      ///< the largest quotient that is allowed
    bool isPerRecord = false;
};

/// One figure held against a fixed time, which is far from what is usual.
struct Limit {
    std::string measured;
    double seconds = 0; ///< the longest time allowed; 0 for any
};

/// Collects the medians of a run and prints them, and what they amount to, as Markdown tables.
class MedianReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;

    /// The time of each operation in each wordbook, by record.
    void printTimesPerRecord(const std::vector<std::string> &operations, const std::vector<int> &sizes) const;
    /// False when a limit is exceeded. Comparisons of which one side has not run are left out.
    bool printComparisons(const std::vector<Comparison> &comparisons) const;

    /// The same for fixed times.
    bool printLimits(const std::vector<Limit> &limits) const;

private:
    std::map<std::string, double> m_seconds;
};

} // namespace lexiquill::bench
