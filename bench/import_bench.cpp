#include "bench.h"
#include "dictionaries/import/file_importer.h"
#include "sample_data.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <random>
#include <utility>

namespace lexiquill::bench {

namespace {

constexpr qsizetype dictionarySize = qsizetype(100) * 1024 * 1024;

bool run(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(-1) && process.exitCode() == 0;
}

/// An archive of 100 MB with one dictionary, which hardly compresses.
QString makeArchive(const QString &name) {
    const QString directory = newDirectory();
    if (!writeDictionary(directory, SampleFormat::StarDict, madeUpWords(1000)))
        std::fprintf(stderr, "the dictionary could not be written\n");
    QFile::remove(directory + QStringLiteral("/large.dict.dz"));
    std::mt19937_64 random(5);
    QByteArray bytes(dictionarySize, Qt::Uninitialized);
    std::generate_n(reinterpret_cast<quint64 *>(bytes.data()), bytes.size() / qsizetype(sizeof(quint64)),
                    std::ref(random));
    QFile articles(directory + QStringLiteral("/large.dict"));
    if (!articles.open(QIODevice::WriteOnly) || articles.write(bytes) != bytes.size())
        std::fprintf(stderr, "the articles could not be written\n");
    articles.close();
    QString archive = newDirectory() + u'/' + name;
    if (!run(QStringLiteral("bsdtar"),
             {QStringLiteral("-caf"), archive, QStringLiteral("-C"), directory, QStringLiteral(".")}))
        std::fprintf(stderr, "bsdtar (libarchive-tools) is missing\n");
    return archive;
}

void importArchive(benchmark::State &state, const QString &archive) {
    for ([[maybe_unused]] const auto each : state) {
        state.PauseTiming();
        const QString directory = newDirectory();
        state.ResumeTiming();
        // Without making the index.
        const auto prepare = [](const QString &, const std::stop_token &) {
            return DictionaryProblem::None;
        };
        const auto results = FileImporter(directory, prepare).import({archive});
        state.PauseTiming();
        if (results.size() != 1 || results.first().problem != ImportProblem::None)
            state.SkipWithError("nothing was imported");
        QDir(directory).removeRecursively();
        state.ResumeTiming();
    }
}

void extractArchive(benchmark::State &state, const QString &archive) {
    for ([[maybe_unused]] const auto each : state) {
        state.PauseTiming();
        const QString directory = newDirectory();
        state.ResumeTiming();
        const bool isDone =
            run(QStringLiteral("bsdtar"), {QStringLiteral("-xf"), archive, QStringLiteral("-C"), directory});
        state.PauseTiming();
        if (!isDone)
            state.SkipWithError("bsdtar failed");
        QDir(directory).removeRecursively();
        state.ResumeTiming();
    }
}

} // namespace

std::vector<std::string> registerImportBenchmarks() {
    const std::vector<std::string> kinds{"tar.gz", "zip"};
    for (const std::string &kind : kinds) {
        // Made when it is needed first.
        const auto archive = [kind]() -> const QString & {
            static std::map<std::string, QString> archives;
            QString &path = archives[kind];
            if (path.isEmpty())
                path = makeArchive(QStringLiteral("dictionary.") + QString::fromStdString(kind));
            return path;
        };
        const std::pair<std::string, void (*)(benchmark::State &, const QString &)> functions[] = {
            {"import/" + kind, importArchive}, {"bsdtar/" + kind, extractArchive}};
        for (const auto &[name, function] : functions) {
            benchmark::RegisterBenchmark(
                name.c_str(),
                [function = function, archive](benchmark::State &state) { function(state, archive()); })
                ->Iterations(1)
                ->Repetitions(5)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime();
        }
    }
    return kinds;
}

} // namespace lexiquill::bench
