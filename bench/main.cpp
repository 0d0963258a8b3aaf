#include "bench.h"
#include "comparison.h"
#include "sample_data.h"

#include <QCoreApplication>

#include <cstdlib>

using namespace lexiquill::bench;

// Takes the options of the benchmark library, for example --benchmark_filter=load. Fails when a limit is
// exceeded.
int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    const std::vector<std::string> operations = registerWordbookBenchmarks();
    registerOnlineBenchmarks();
    const std::vector<std::string> indexOperations = registerIndexBenchmarks();
    const std::vector<std::string> headwordOperations = registerHeadwordBenchmarks();
    const std::vector<std::string> screenOperations = registerScreenBenchmarks();
    const std::vector<std::string> archives = registerImportBenchmarks();
    registerProcessBenchmarks();
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::vector<Comparison> comparisons;
    for (const std::string name : {"load", "save", "addOrUpdateSearch", "recordReview", "plan", "export"})
        comparisons.push_back({name + "/100000", name + "/1000", 1.5, true});
    comparisons.push_back({"merge/10000", "merge/1000", 1.5, true});
    for (const int records : wordbookSizes) {
        const std::string size = std::to_string(records);
        comparisons.push_back({"load/" + size, "dom_parse/" + size, 4.0});
        comparisons.push_back({"recordReview/" + size, "durable_write/" + size, 3.0});
    }
    comparisons.push_back({"youdao_answer", "youdao_dom_parse", 3.0});
    comparisons.push_back({"help", "empty_program", 1.1});
    for (const SampleFormat format : sampleFormats)
        comparisons.push_back({std::string("search/") + nameOf(format), "bare_search", 1.4});

    for (const std::string &archive : archives)
        comparisons.push_back({"import/" + archive, "bsdtar/" + archive, 2.0});

    std::vector<Limit> limits;
    for (const std::string &operation : indexOperations) {
        const bool isQuery = operation.rfind("query", 0) == 0;
        limits.push_back({operation, operation == indexOperations.front() ? 0 : isQuery ? 0.010 : 0.005});
    }
    // Completions must appear before the next key. For near spellings the user waits, but not long.
    for (const std::string &operation : headwordOperations) {
        const bool isCompletion = operation.rfind("complete", 0) == 0;
        const bool isIndexing = operation.rfind("index", 0) == 0;
        limits.push_back({operation, isCompletion ? 0.005 : isIndexing ? 2.0 : 0.350});
    }
    // All work of one screen together must fit into a frame.
    for (const std::string &operation : screenOperations)
        limits.push_back({operation, operation.rfind("key", 0) == 0 ? 0.005 : 0.012});

    reporter.printTimesPerRecord(operations, wordbookSizes);
    const bool areRatiosWithin = reporter.printComparisons(comparisons);
    return reporter.printLimits(limits) && areRatiosWithin ? EXIT_SUCCESS : EXIT_FAILURE;
}
