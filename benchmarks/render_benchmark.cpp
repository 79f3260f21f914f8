// Drawing a whole map of 150 × 150 cells, against copying the same bytes once and against the same
// job done by QPainter with pictures that are transparent outside their shape.
#include "app/workspace.h"
#include "platform/core/app_folder.h"
#include "ratios.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_canvas.h"

#include <QPainter>
#include <benchmark/benchmark.h>
#include <cstring>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 150;

struct Scene {
    Scene()
    {
        const platform::ScopedAppFolder data(QStringLiteral(KESTRUNE_DATA));
        definitions.loadTiles();
        definitions.loadPines();
        map.mapaTiles = platform::Grid<QString>(side, side);
        // Every tile in no order is the worst case; one cell in a hundred has a place.
        std::mt19937 engine(1);
        const auto anyOf = [&](const Palette& palette) {
            const auto count = static_cast<unsigned>(palette.items.count());
            return palette.items.at(static_cast<int>(engine() % count)).key();
        };
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                map.mapaTiles(y, x) = anyOf(definitions.tiles);
                if (engine() % 100 == 0)
                    map.mapaPines.emplace(QPoint(x, y), Place{anyOf(definitions.pins), {}, {}});
            }
        }
        canvas.crearBuffer(side, side);
    }

    Workspace definitions;
    MapCanvas canvas{definitions.pictures};
    WorldMap map;
};

Scene& scene()
{
    static Scene instance;
    return instance;
}

/// The minimap's picture of a back buffer, 177 pixels high.
platform::MemoryDC reduced(const platform::MemoryDC& buffer)
{
    platform::MemoryDC picture(177 * buffer.width() / buffer.height(), 177);
    picture.StretchBlt(0, 0, picture.width(), picture.height(), buffer, 0, 0, buffer.width(),
                       buffer.height(), platform::RasterOp::SRCCOPY);
    return picture;
}

void RenderMapa(benchmark::State& state)
{
    Scene& s = scene();
    for ([[maybe_unused]] const auto iteration : state) {
        s.canvas.renderMapa(s.map);
        benchmark::ClobberMemory();
    }
}

void CopySameBytes(benchmark::State& state)
{
    const QImage& buffer = scene().canvas.hdcBuffer.image();
    std::vector<uchar> target(static_cast<std::size_t>(buffer.sizeInBytes()));
    for ([[maybe_unused]] const auto iteration : state) {
        std::memcpy(target.data(), buffer.constBits(), target.size());
        benchmark::ClobberMemory();
    }
}

/// One painted cell as the map window brings it up: document, back buffer, view and minimap.
void PaintCell(benchmark::State& state)
{
    Scene& s = scene();
    const QString tile = s.map.mapaTiles(0, 0);
    platform::MemoryDC view(700, 600);
    platform::MemoryDC minimap = reduced(s.canvas.hdcBuffer);
    int step = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        const QPoint cell(step % 40, step / 40 % 40);
        ++step;
        const QPoint corner = hex::cellOrigin(cell.x(), cell.y());
        s.map.mapaTiles(cell.y(), cell.x()) = tile;
        s.canvas.redrawCells(s.map, {&cell, 1});
        view.BitBlt(corner.x(), corner.y(), hex::cellWidth, hex::cellHeight, s.canvas.hdcBuffer,
                    corner.x(), corner.y(), platform::RasterOp::SRCCOPY);
        minimap.StretchBltPart(s.canvas.hdcBuffer,
                               QRect(corner, QSize(hex::cellWidth, hex::cellHeight)));
    }
}

void RenderMapaAndMinimap(benchmark::State& state)
{
    Scene& s = scene();
    for ([[maybe_unused]] const auto iteration : state) {
        s.canvas.renderMapa(s.map);
        benchmark::DoNotOptimize(reduced(s.canvas.hdcBuffer));
    }
}

/// The pictures as QPainter likes them best: premultiplied, transparent where the mask is white.
QHash<QString, QImage> transparentPictures(const PictureCollection& pictures,
                                           const PictureCollection& masks)
{
    QHash<QString, QImage> result;
    for (auto it = pictures.cbegin(); it != pictures.cend(); ++it) {
        QImage image = it.value()->image().convertToFormat(QImage::Format_ARGB32);
        const QImage& mask = masks.value(it.key())->image();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qRed(mask.pixel(x, y)) != 0)
                    image.setPixel(x, y, 0);
            }
        }
        result.insert(it.key(), image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    }
    return result;
}

void RenderWithQPainter(benchmark::State& state)
{
    Scene& s = scene();
    const MapPictures& pictures = s.definitions.pictures;
    const auto tiles = transparentPictures(pictures.colTiles, pictures.colMascarasTiles);
    const auto pins = transparentPictures(pictures.colPines, pictures.colMascarasPines);
    QImage target(s.canvas.hdcBuffer.image().size(), QImage::Format_RGB32);
    target.fill(Qt::black);
    for ([[maybe_unused]] const auto iteration : state) {
        QPainter painter(&target);
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                painter.drawImage(hex::cellOrigin(x, y), *tiles.constFind(s.map.mapaTiles(y, x)));
                if (const Place* const place = s.map.placeAt({x, y}))
                    painter.drawImage(hex::cellOrigin(x, y), *pins.constFind(place->pin));
            }
        }
    }
    s.canvas.renderMapa(s.map);
    if (target != s.canvas.hdcBuffer.image())
        state.SkipWithError("QPainter's picture differs");
}

BENCHMARK(CopySameBytes)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(RenderMapa)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(RenderWithQPainter)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(RenderMapaAndMinimap)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(PaintCell)->Unit(benchmark::kMillisecond)->Repetitions(5);

[[maybe_unused]] const bool ratiosAdded = addRatio({"PaintCell", "RenderMapaAndMinimap", 0.01}) &&
                                          addRatio({"RenderMapa", "CopySameBytes", 5}) &&
                                          addRatio({"RenderMapa", "RenderWithQPainter", 1});

} // namespace
