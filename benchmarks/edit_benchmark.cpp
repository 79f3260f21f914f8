// Editing a world map of 150 × 150 cells: a stroke of the brush with its step in the history,
// against the same changes without one; and filling the whole map, drawn, against drawing it.
#include "app/workspace.h"
#include "one_buffer.h"
#include "platform/core/app_folder.h"
#include "ratios.h"
#include "worldmap/map_area.h"
#include "worldmap/map_document.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 150;
constexpr int strokeCells = 100;
constexpr int manyStrokes = 10'000;

const QString sea = u"M2"_s;
const QString land = u"T1"_s;

WorldMap seaMap()
{
    WorldMap map;
    map.mapaTiles = platform::Grid<QString>(side, side, sea);
    return map;
}

/// The cells of a stroke, and the tile that changes every one of them this time.
struct Stroke {
    explicit Stroke(int number) : tile(number / side % 2 == 0 ? land : sea)
    {
        for (int x = 0; x < strokeCells; ++x)
            cells.emplace_back(x, number % side);
    }

    std::vector<QPoint> cells;
    const QString& tile;
};

/// What follows a document's announcements, as the map window does: the cells are drawn.
struct View {
    View()
    {
        const platform::ScopedAppFolder data(QStringLiteral(KESTRUNE_DATA));
        definitions.loadTiles();
        canvas.crearBuffer(side, side);
    }
    /// Draws all of a map, and what is changed of it from now on.
    void show(const WorldMap& map)
    {
        canvas.renderMapa(map);
        lookAtAll(canvas.hdcBuffer);
    }

    Workspace definitions;
    MapCanvas canvas{definitions.pictures};
};

View& view()
{
    static View instance;
    return instance;
}

/// Paints as a mouse does, one cell at a time, and draws each.
void StrokeWithHistory(benchmark::State& state)
{
    MapDocument document;
    document.openMapa(seaMap(), {});
    view().show(document.map());
    QObject::connect(
        &document, &MapDocument::tilesChanged,
        [](const std::vector<MapChange::Tile>& before) { view().canvas.drawPainted(before); });
    int number = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        const Stroke stroke(number++);
        document.beginStroke();
        for (const QPoint& cell : stroke.cells)
            document.paint({&cell, 1}, stroke.tile);
        document.endStroke();
    }
}

void StrokeWithoutHistory(benchmark::State& state)
{
    WorldMap map = seaMap();
    view().show(map);
    int number = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        const Stroke stroke(number++);
        for (const QPoint& cell : stroke.cells) {
            const QString before = std::exchange(map.mapaTiles(cell.y(), cell.x()), stroke.tile);
            view().canvas.drawPainted({{cell, before}});
        }
    }
}

/// What the history of so many strokes takes is a figure of its own.
void ManyStrokes(benchmark::State& state)
{
    for ([[maybe_unused]] const auto iteration : state) {
        MapDocument document;
        document.openMapa(seaMap(), {});
        for (int number = 0; number < manyStrokes; ++number) {
            const Stroke stroke(number);
            document.beginStroke();
            document.paint(stroke.cells, stroke.tile);
            document.endStroke();
        }
        state.counters["MiB"] = static_cast<double>(document.history().bytes()) / (1024 * 1024);
        int steps = 0;
        for (; document.canUndo(); ++steps)
            document.undo();
        state.counters["steps"] = steps;
    }
}

void FillWholeMap(benchmark::State& state)
{
    MapDocument document;
    document.openMapa(seaMap(), {});
    view().show(document.map());
    QObject::connect(&document, &MapDocument::tilesChanged,
                     [](const std::vector<MapChange::Tile>& before) {
                         view().canvas.drawPainted(before);
                         lookAtAll(view().canvas.hdcBuffer);
                     });
    int number = 0;
    for ([[maybe_unused]] const auto iteration : state)
        document.fill({side / 2, side / 2}, number++ % 2 == 0 ? land : sea);
}

void RenderPlainMap(benchmark::State& state)
{
    const WorldMap map = seaMap();
    for ([[maybe_unused]] const auto iteration : state) {
        view().show(map);
        benchmark::ClobberMemory();
    }
}

BENCHMARK(StrokeWithoutHistory)->Unit(benchmark::kMicrosecond)->Repetitions(9);
BENCHMARK(StrokeWithHistory)->Unit(benchmark::kMicrosecond)->Repetitions(9);
BENCHMARK(ManyStrokes)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(RenderPlainMap)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(FillWholeMap)->Unit(benchmark::kMillisecond)->Repetitions(9);

[[maybe_unused]] const bool ratiosAdded =
    addRatio({"StrokeWithHistory", "StrokeWithoutHistory", 1.5}) &&
    addRatio({"FillWholeMap", "RenderPlainMap", 2});

} // namespace
