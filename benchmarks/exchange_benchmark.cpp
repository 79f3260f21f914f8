// What the ways out of a map of 150 × 150 cells take, against encoding its finished picture with the
// toolkit.
#include "app/workspace.h"
#include "exchange/map_formats.h"
#include "exchange/map_image.h"
#include "generation/world_generator.h"
#include "platform/core/app_folder.h"
#include "platform/core/random_source.h"
#include "ratios.h"

#include <QBuffer>
#include <benchmark/benchmark.h>

namespace {

/// A generated world; it has as many places as such a one has.
struct World {
    World()
    {
        const platform::ScopedAppFolder data(QStringLiteral(KESTRUNE_DATA));
        definitions.loadTiles();
        definitions.loadPines();
        platform::randomSource().seed(1);
        map.mapaTiles = platform::Grid<QString>(150, 150);
        generarMundo(map, definitions.pins);
    }

    Workspace definitions;
    WorldMap map;
};

World& world()
{
    static World instance;
    return instance;
}

std::unique_ptr<ExportedMap> exported()
{
    const Workspace& definitions = world().definitions;
    return std::make_unique<ExportedMap>(world().map, definitions.tiles, definitions.pins,
                                         definitions.pictures);
}

void EncodeFinishedPicture(benchmark::State& state)
{
    const QImage picture = exported()->picture().image();
    for ([[maybe_unused]] const auto iteration : state) {
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        picture.save(&file, "PNG");
        benchmark::DoNotOptimize(file.data().size());
    }
}

/// From the map on, nothing of which is drawn yet.
void PngOfTheMap(benchmark::State& state)
{
    for ([[maybe_unused]] const auto iteration : state) {
        const std::unique_ptr<ExportedMap> map = exported();
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        writePng(file, {map->picture(), map->picture().rect()}, [](double) {});
        benchmark::DoNotOptimize(file.data().size());
    }
}

constexpr int repetitions = 9;
BENCHMARK(EncodeFinishedPicture)->Repetitions(repetitions)->Unit(benchmark::kMillisecond);
BENCHMARK(PngOfTheMap)->Repetitions(repetitions)->Unit(benchmark::kMillisecond);

[[maybe_unused]] const bool ratiosAdded = [] {
    addRatio({"PngOfTheMap", "EncodeFinishedPicture", 1.2});
    return true;
}();

} // namespace
