// The terrain of a random world of 150 × 150 cells, against drawing as many random numbers and
// doing nothing with them; and terrains of as many cells in other shapes against the square one.
#include "app/procs.h"
#include "generation/world_generator.h"
#include "platform/core/random_source.h"
#include "ratios.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int side = 150;

/// How many numbers subdividing a rectangle of that many rows and columns to go draws.
int drawsFor(int rows, int columns)
{
    constexpr int offsets = 5;
    if (rows < 2 && columns < 2)
        return 0;
    const int up = rows / 2;
    const int left = columns / 2;
    return offsets + drawsFor(up, left) + drawsFor(up, columns - left) + drawsFor(rows - up, left) +
           drawsFor(rows - up, columns - left);
}

void generate(benchmark::State& state, int alto, int ancho)
{
    platform::randomSource().seed(1);
    WorldMap map;
    map.mapaTiles = platform::Grid<QString>(alto, ancho);
    for ([[maybe_unused]] const auto iteration : state)
        generarTerreno(map);
}

void GenerateTerrain(benchmark::State& state)
{
    generate(state, side, side);
}

void GenerateWideTerrain(benchmark::State& state)
{
    generate(state, side / 2, 2 * side);
}

void GenerateTerrainOfOneRow(benchmark::State& state)
{
    generate(state, 1, side * side);
}

void DrawAsManyNumbers(benchmark::State& state)
{
    constexpr int corners = 4;
    constexpr int fields = 2;
    const int draws = fields * (corners + drawsFor(side - 1, side - 1));
    platform::randomSource().seed(1);
    for ([[maybe_unused]] const auto iteration : state) {
        for (int i = 0; i < draws; ++i)
            benchmark::DoNotOptimize(Procs::RandomInRange(-100, 100));
    }
}

BENCHMARK(GenerateTerrain)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(GenerateWideTerrain)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(GenerateTerrainOfOneRow)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(DrawAsManyNumbers)->Unit(benchmark::kMillisecond)->Repetitions(9);

[[maybe_unused]] const bool ratiosAdded =
    addRatio({"GenerateTerrain", "DrawAsManyNumbers", 4}) &&
    addRatio({"GenerateWideTerrain", "GenerateTerrain", 2}) &&
    addRatio({"GenerateTerrainOfOneRow", "GenerateTerrain", 2});

} // namespace
