#pragma once

#include <string>
#include <vector>

namespace lexiquill::bench {

inline const std::vector<int> wordbookSizes{100, 1'000, 10'000, 100'000};

/// Benchmarks of the operations on a wordbook: "load/1000" and so on. Returns the names of the operations.
std::vector<std::string> registerWordbookBenchmarks();

/// Benchmarks of reading an answer of a megabyte: "youdao_answer", and "youdao_dom_parse" for parsing its
/// JSON only.
void registerOnlineBenchmarks();

/// Benchmarks of the search index with 20,000 words. Returns their names, the publication of all words first.
std::vector<std::string> registerIndexBenchmarks();

/// Benchmarks of the search screen's queries to the offline dictionaries, with 500,000 words: "complete one
/// letter" and so on. Returns their names.
std::vector<std::string> registerHeadwordBenchmarks();

/// Benchmarks of the screens' work on the main thread, with 20,000 words: "after a change: …" is the work
/// without the save, "key: …" the slowest key while a text is typed. Returns their names.
std::vector<std::string> registerScreenBenchmarks();

/// Benchmarks of importing an archive of 100 MB with a dictionary, and of unpacking it with bsdtar:
/// "import/zip" and so on. Returns the kinds of archives.
std::vector<std::string> registerImportBenchmarks();

/// Benchmarks of whole processes: "empty_program", "help", "bare_search" and "search/StarDict" and so on.
void registerProcessBenchmarks();

} // namespace lexiquill::bench
