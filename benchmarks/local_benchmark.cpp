// Local maps: drawing one against copying its bytes once, and finding places for buildings with
// running sums against adding up every place anew.
#include "app/workspace.h"
#include "one_buffer.h"
#include "platform/core/app_folder.h"
#include "platform/core/random_source.h"
#include "ratios.h"
#include "tests/plain_versions.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

struct Scene {
    Scene()
    {
        const platform::ScopedAppFolder data(QStringLiteral(KESTRUNE_DATA));
        definitions.loadTilesLocales();
        platform::randomSource().seed(1);
        generarMapaLocal(map);
        canvas.crearBuffer(map.ancho, map.alto);

        Sketch sketch{Rejilla(map.alto, map.ancho, mark::ground)};
        layBand(sketch, layRiver(sketch));
        plantTrees(sketch);
        woods = sketch.rejilla;
    }

    Workspace definitions;
    LocalCanvas canvas{definitions.localPictures};
    LocalMap map;
    Rejilla woods; ///< a map before anything is built
};

Scene& scene()
{
    static Scene instance;
    return instance;
}

void RenderLocalMap(benchmark::State& state)
{
    Scene& s = scene();
    for ([[maybe_unused]] const auto iteration : state) {
        benchmark::DoNotOptimize(s.canvas.renderMapa(s.map));
        lookAtAll(s.canvas.hdcBuffer);
        benchmark::ClobberMemory();
    }
}

void CopyLocalMap(benchmark::State& state)
{
    const QImage buffer = scene().canvas.hdcBuffer.image();
    std::vector<uchar> target(static_cast<std::size_t>(buffer.sizeInBytes()));
    for ([[maybe_unused]] const auto iteration : state) {
        std::memcpy(target.data(), buffer.constBits(), target.size());
        benchmark::ClobberMemory();
    }
}

/// Places four buildings, from the smallest to the largest. Returns the marks.
template <typename FindPlace>
Rejilla placeFour(const FindPlace& findPlace)
{
    Rejilla grid = scene().woods;
    for (const QSize building : {QSize(5, 5), QSize(6, 8), QSize(8, 7), QSize(9, 9)}) {
        const QPoint corner = findPlace(grid, building);
        for (int y = 0; y < building.height(); ++y) {
            for (int x = 0; x < building.width(); ++x)
                grid(corner.y() + y, corner.x() + x) = mark::wall;
        }
    }
    return grid;
}

void PlaceBuildings(benchmark::State& state)
{
    for ([[maybe_unused]] const auto iteration : state)
        benchmark::DoNotOptimize(placeFour(bestPlace));
}

void PlaceBuildingsAnew(benchmark::State& state)
{
    for ([[maybe_unused]] const auto iteration : state)
        benchmark::DoNotOptimize(placeFour(bestPlaceAnew));
    if (placeFour(bestPlace) != placeFour(bestPlaceAnew))
        state.SkipWithError("the buildings stand elsewhere");
}

BENCHMARK(CopyLocalMap)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(RenderLocalMap)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(PlaceBuildings)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(PlaceBuildingsAnew)->Unit(benchmark::kMillisecond)->Repetitions(5);

[[maybe_unused]] const bool ratiosAdded =
    addRatio({"RenderLocalMap", "CopyLocalMap", 4}) &&
    addRatio({"PlaceBuildings", "PlaceBuildingsAnew", 1.0 / 5});

} // namespace
