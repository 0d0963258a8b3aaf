#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace lexiquill::bench {

/// A comparison of two results of the same run.
struct Comparison {
    std::string measured;  ///< name of a benchmark
    std::string reference; ///< name of the benchmark that it is compared with
    double limit = 1;      ///< the largest ratio that is allowed
    bool isPerRecord = false;
};

/// A fixed limit for one result, far above the usual time.
struct Limit {
    std::string measured;
    double seconds = 0; ///< the longest time allowed; 0 for no limit
};

/// Collects the medians of a run, and prints them with their comparisons and limits as Markdown tables.
class MedianReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;

    /// Prints the time per record of each operation, for each wordbook size.
    void printTimesPerRecord(const std::vector<std::string> &operations, const std::vector<int> &sizes) const;
    /// Prints the comparisons. False when a limit is exceeded. Leaves out comparisons with a benchmark that
    /// has not run.
    bool printComparisons(const std::vector<Comparison> &comparisons) const;

    /// The same for fixed times.
    bool printLimits(const std::vector<Limit> &limits) const;

private:
    std::map<std::string, double> m_seconds;
};

} // namespace lexiquill::bench
