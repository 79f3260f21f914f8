// Making up a thousand names from the shipped grammar, against reading its files a thousand times.
#include "generation/name_grammar.h"
#include "platform/core/app_folder.h"
#include "platform/core/random_source.h"
#include "platform/core/text_file.h"
#include "ratios.h"

#include <QDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int times = 1000;

void MakeNames(benchmark::State& state)
{
    const platform::ScopedAppFolder data(QStringLiteral(KESTRUNE_DATA));
    platform::randomSource().seed(1);
    for ([[maybe_unused]] const auto iteration : state) {
        for (int i = 0; i < times; ++i)
            benchmark::DoNotOptimize(Procs::generarNombre(1, Procs::placeNames));
    }
}

void ReadGrammarFiles(benchmark::State& state)
{
    const QDir folder(QStringLiteral(KESTRUNE_DATA) + u"/gramaticas"_s);
    const QStringList files = folder.entryList(QDir::Files);
    for ([[maybe_unused]] const auto iteration : state) {
        for (int i = 0; i < times; ++i) {
            for (const QString& file : files)
                benchmark::DoNotOptimize(
                    platform::readFile(folder.filePath(file), platform::maxTextFileBytes));
        }
    }
}

BENCHMARK(ReadGrammarFiles)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(MakeNames)->Unit(benchmark::kMillisecond)->Repetitions(5);

[[maybe_unused]] const bool ratioAdded = addRatio({"MakeNames", "ReadGrammarFiles", 3});

} // namespace
