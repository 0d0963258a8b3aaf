#include "bench.h"
#include "lookup/online/youdao_parser.h"
#include "sample_data.h"
#include "support/json_writer.h"

#include <benchmark/benchmark.h>
#include <simdjson.h>

namespace lexiquill::bench {

namespace {

constexpr int answerSize = 1 << 20;

/// An answer of the dictionary, but a megabyte large: with many senses, and with more sentence pairs than are
/// used.
const QByteArray &largeAnswer() {
    static const QByteArray answer = [] {
        QByteArray json;
        JsonWriter writer(JsonWriter::Style::Compact, [&](QByteArrayView bytes) { json += bytes; });
        const auto text = [&](std::string_view name, const QString &value) {
            writer.key(name);
            writer.value(value);
        };
        const QList<DictionaryEntry> &entries = sampleEntries();
        writer.beginObject();
        writer.key("ec");
        writer.beginObject();
        writer.key("word");
        writer.beginArray();
        writer.beginObject();
        text("usphone", QStringLiteral("həˈloʊ"));
        writer.key("trs");
        writer.beginArray();
        for (qsizetype i = 0; i < 200; ++i) {
            const PartOfSpeechGroup &group = entries.at(i % entries.size()).posGroups.first();
            writer.beginObject();
            writer.key("tr");
            writer.beginArray();
            writer.beginObject();
            writer.key("l");
            writer.beginObject();
            writer.key("i");
            writer.beginArray();
            writer.value(group.posAbbreviation() + u' ' + group.cleanChineseList().join(u'；'));
            writer.endArray();
            writer.endObject();
            writer.endObject();
            writer.endArray();
            writer.endObject();
        }
        writer.endArray();
        writer.endObject();
        writer.endArray();
        writer.endObject();
        writer.key("blng_sents_part");
        writer.beginObject();
        writer.key("sentence-pair");
        writer.beginArray();
        for (qsizetype i = 0; json.size() < answerSize; ++i) {
            const DictionaryEntry &entry = entries.at(i % entries.size());
            writer.beginObject();
            text("sentence", QStringLiteral("<b>%1</b> stands here.").arg(entry.headword));
            text("sentence-translation", entry.conciseSummary());
            text("source", entry.rawText);
            writer.endObject();
        }
        writer.endArray();
        writer.endObject();
        writer.endObject();
        writer.finish();
        return json;
    }();
    return answer;
}

void parseAnswer(benchmark::State &state) {
    const QByteArray &answer = largeAnswer();
    for ([[maybe_unused]] const auto each : state) {
        const auto entry = parseYoudaoJSON(answer, QStringLiteral("hello"));
        if (!entry || entry->examples.size() != 6)
            state.SkipWithError("the answer was not understood");
        benchmark::DoNotOptimize(entry);
    }
    state.SetBytesProcessed(state.iterations() * answer.size());
}

void parseAnswerAsDom(benchmark::State &state) {
    const QByteArray &answer = largeAnswer();
    for ([[maybe_unused]] const auto each : state) {
        simdjson::dom::parser parser;
        if (parser.parse(answer.constData(), static_cast<std::size_t>(answer.size())).error())
            state.SkipWithError("no JSON");
        benchmark::DoNotOptimize(parser);
    }
}

} // namespace

void registerOnlineBenchmarks() {
    const std::pair<const char *, void (*)(benchmark::State &)> functions[] = {
        {"youdao_answer", parseAnswer}, {"youdao_dom_parse", parseAnswerAsDom}};
    for (const auto &[name, function] : functions)
        benchmark::RegisterBenchmark(name, function)
            ->Iterations(20)
            ->Repetitions(15)
            ->Unit(benchmark::kMillisecond);
}

} // namespace lexiquill::bench
