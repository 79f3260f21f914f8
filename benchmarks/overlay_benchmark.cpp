// Names of 2,000 places over the view of a map of 1000 × 1000 cells: the first time and again at a
// scroll, against drawing that map.
#include "app/workspace.h"
#include "mapview/overlay.h"
#include "platform/core/app_folder.h"
#include "ratios.h"
#include "worldmap/hex_map_geometry.h"
#include "worldmap/map_canvas.h"
#include "worldmap/map_overlays.h"

#include <QPainter>
#include <benchmark/benchmark.h>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 1000;
constexpr int placeCount = 2000;
constexpr QSize viewSize(1400, 900);

struct Scene {
    Scene()
    {
        const platform::ScopedAppFolder data(QStringLiteral(KESTRUNE_DATA));
        definitions.loadTiles();
        definitions.loadPines();
        map.mapaTiles = platform::Grid<QString>(side, side);
        std::mt19937 engine(1);
        const auto below = [&](int end) {
            return static_cast<int>(engine() % static_cast<unsigned>(end));
        };
        const auto anyOf = [&](const Palette& palette) {
            return palette.items.at(below(palette.items.count())).key();
        };
        for (QString& tile : map.mapaTiles)
            tile = anyOf(definitions.tiles);
        while (map.mapaPines.size() < placeCount) {
            const QString name = u"Villanueva del Páramo"_s.left(6 + below(16));
            map.mapaPines.insert_or_assign(QPoint(below(side), below(side)),
                                           Place{anyOf(definitions.pins), name, {}});
        }
    }

    Workspace definitions;
    WorldMap map;
    HexMapGeometry geometry{{side, side}};
};

Scene& scene()
{
    static Scene instance;
    return instance;
}

void drawNames(const PlaceNames& names, QImage& view, int step)
{
    QPainter painter(&view);
    const QPoint corner(step * 22 % 9000, 3000);
    drawOverlay(painter, scene().geometry, {QRect(corner, view.size())}, names);
}

void DrawMapOf1000(benchmark::State& state)
{
    Scene& s = scene();
    MapCanvas canvas(s.definitions.pictures);
    canvas.crearBuffer(side, side);
    for ([[maybe_unused]] const auto iteration : state)
        canvas.renderMapa(s.map);
}

void NamesFirst(benchmark::State& state)
{
    QImage view(viewSize, QImage::Format_RGB32);
    for ([[maybe_unused]] const auto iteration : state)
        drawNames(placeNamesOf(scene().map, scene().definitions.pins), view, 0);
}

void NamesAtScroll(benchmark::State& state)
{
    QImage view(viewSize, QImage::Format_RGB32);
    const PlaceNames names = placeNamesOf(scene().map, scene().definitions.pins);
    drawNames(names, view, 0);
    int step = 0;
    for ([[maybe_unused]] const auto iteration : state)
        drawNames(names, view, ++step);
}

BENCHMARK(DrawMapOf1000)->Unit(benchmark::kMillisecond)->Repetitions(3);
BENCHMARK(NamesFirst)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(NamesAtScroll)->Unit(benchmark::kMillisecond)->Repetitions(5);

[[maybe_unused]] const bool ratiosAdded = addRatio({"NamesFirst", "DrawMapOf1000", 0.05}) &&
                                          addRatio({"NamesAtScroll", "NamesFirst", 0.1});

} // namespace
