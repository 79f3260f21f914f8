// Drawing a whole map of 150 × 150 cells in pieces, against one buffer, against copying the same
// bytes once and against the same job done by QPainter with pictures that are transparent outside
// their shape. And what the view of a map of 1000 × 1000 takes for its steps, against drawing all.
#include "app/workspace.h"
#include "mapview/reduced_picture.h"
#include "mapview/viewport.h"
#include "one_buffer.h"
#include "platform/core/app_folder.h"
#include "platform/core/list_items.h"
#include "ratios.h"
#include "worldmap/map_document.h"
#include "worldmap/map_file.h"

#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstring>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize viewSize(700, 600);

struct Scene {
    explicit Scene(int side)
    {
        const platform::ScopedAppFolder data(QStringLiteral(KESTRUNE_DATA));
        definitions.loadTiles();
        definitions.loadPines();
        map.nombre = u"Mapa"_s;
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
                    map.mapaPines.emplace(
                        QPoint(x, y),
                        Place{anyOf(definitions.pins), u"L%1-%2"_s.arg(x).arg(y), {}});
            }
        }
        canvas.crearBuffer(side, side);
        canvas.renderMapa(map);
    }

    Workspace definitions;
    MapCanvas canvas{definitions.pictures};
    WorldMap map;
};

Scene& scene()
{
    static Scene instance(150);
    return instance;
}

Scene& large(int side = 1000)
{
    static std::map<int, Scene> instances;
    return instances.try_emplace(side, side).first->second;
}

void RenderMapa(benchmark::State& state)
{
    Scene& s = scene();
    for ([[maybe_unused]] const auto iteration : state) {
        s.canvas.renderMapa(s.map);
        lookAtAll(s.canvas.hdcBuffer);
        benchmark::ClobberMemory();
    }
}

void RenderIntoOneBuffer(benchmark::State& state)
{
    Scene& s = scene();
    for ([[maybe_unused]] const auto iteration : state) {
        platform::MemoryDC buffer(s.canvas.hdcBuffer.width(), s.canvas.hdcBuffer.height());
        drawIntoOneBuffer(buffer, s.definitions.pictures, s.map);
        benchmark::DoNotOptimize(buffer);
    }
}

void CopySameBytes(benchmark::State& state)
{
    const QImage buffer = scene().canvas.hdcBuffer.image();
    std::vector<uchar> target(static_cast<std::size_t>(buffer.sizeInBytes()));
    for ([[maybe_unused]] const auto iteration : state) {
        std::memcpy(target.data(), buffer.constBits(), target.size());
        benchmark::ClobberMemory();
    }
}

/// The minimap's picture, 177 pixels high.
ReducedPicture reduced(const MapPicture& picture)
{
    ReducedPicture small;
    small.follow(picture, picture.size(), {177 * picture.width() / picture.height(), 177});
    while (!small.isFilled())
        small.fill(picture, std::chrono::milliseconds(100));
    return small;
}

/// One painted cell as the map window brings it up: document, back buffer, view and minimap.
void PaintCell(benchmark::State& state)
{
    Scene& s = scene();
    const QString tile = s.map.mapaTiles(0, 0);
    platform::MemoryDC view(viewSize.width(), viewSize.height());
    lookAtAll(s.canvas.hdcBuffer);
    ReducedPicture minimap = reduced(s.canvas.hdcBuffer);
    int step = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        const QPoint cell(step % 40, step / 40 % 40);
        ++step;
        const QRect part(hex::cellOrigin(cell.x(), cell.y()),
                         QSize(hex::cellWidth, hex::cellHeight));
        const QString before = std::exchange(s.map.mapaTiles(cell.y(), cell.x()), tile);
        s.canvas.drawPainted({{cell, before}});
        s.canvas.hdcBuffer.copyTo(view, part.topLeft(), part);
        minimap.redraw(s.canvas.hdcBuffer, part);
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
    QImage target(s.canvas.hdcBuffer.size(), QImage::Format_RGB32);
    target.fill(Qt::black);
    for ([[maybe_unused]] const auto iteration : state) {
        QPainter painter(&target);
        for (int y = 0; y < s.map.alto(); ++y) {
            for (int x = 0; x < s.map.ancho(); ++x) {
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

// ---- a large map -------------------------------------------------------------------------------

/// All of it through pieces that come and go, as the minimap and pictures do.
void DrawLargeMap(benchmark::State& state)
{
    Scene& s = large(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] const auto iteration : state)
        benchmark::DoNotOptimize(reduced(s.canvas.hdcBuffer));
}

/// The view's steps: one row further down, and the same place at another zoom.
void ScrollStep(benchmark::State& state)
{
    Scene& s = large();
    platform::MemoryDC view(viewSize.width(), viewSize.height());
    int y = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        y = (y + hex::cellHeight) % (s.canvas.hdcBuffer.height() - viewSize.height());
        s.canvas.hdcBuffer.copyTo(view, {}, QRect({4000, y}, viewSize));
    }
}

void ZoomStep(benchmark::State& state)
{
    Scene& s = large();
    Viewport viewport;
    viewport.setRoom(viewSize, 1);
    viewport.setPicture(s.canvas.hdcBuffer.size());
    QImage screen(viewSize, QImage::Format_RGB32);
    int step = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        viewport.setZoom(Viewport::zooms.at(static_cast<std::size_t>(++step) % 6), {350, 300});
        const platform::MemoryDC part = s.canvas.hdcBuffer.part(viewport.seen());
        QPainter(&screen).drawImage(QRectF({}, QSizeF(viewport.seen().size()) * viewport.scale()),
                                    part.image());
    }
}

/// A file, and its map as the window reads it.
struct SavedMap {
    explicit SavedMap(const Scene& scene) : path(folder.path() + u"/m.map"_s)
    {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(mapFileBytes(scene.map));
    }
    WorldMap read(const Scene& scene) const
    {
        return readDrawableMap(platform::readTextFile(path), scene.definitions.pictures);
    }

    QTemporaryDir folder;
    QString path;
};

void ReadLargeMap(benchmark::State& state)
{
    const Scene& s = large(static_cast<int>(state.range(0)));
    const SavedMap saved(s);
    for ([[maybe_unused]] const auto iteration : state)
        benchmark::DoNotOptimize(saved.read(s));
}

/// To the first view, from one map to the next.
void OpenLargeMap(benchmark::State& state)
{
    const Scene& s = large(static_cast<int>(state.range(0)));
    const SavedMap saved(s);
    MapDocument document;
    MapCanvas canvas(s.definitions.pictures);
    for ([[maybe_unused]] const auto iteration : state) {
        WorldMap map = saved.read(s);
        platform::ListItems places;
        for (const auto& [cell, place] : map.mapaPines)
            places.add(place.name, place.name);
        document.openMapa(std::move(map), {});
        canvas.crearBuffer(document.map().ancho(), document.map().alto());
        canvas.renderMapa(document.map());
        benchmark::DoNotOptimize(canvas.hdcBuffer.part(QRect({}, viewSize)));
    }
}

BENCHMARK(CopySameBytes)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(RenderMapa)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(RenderIntoOneBuffer)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(RenderWithQPainter)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(RenderMapaAndMinimap)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(PaintCell)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(ScrollStep)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(ZoomStep)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(DrawLargeMap)->Unit(benchmark::kMillisecond)->Arg(150)->Arg(500)->Arg(1000);
BENCHMARK(ReadLargeMap)->Unit(benchmark::kMillisecond)->Arg(150)->Arg(500)->Arg(1000);
BENCHMARK(OpenLargeMap)->Unit(benchmark::kMillisecond)->Arg(150)->Arg(500)->Arg(1000);

[[maybe_unused]] const bool ratiosAdded = addRatio({"PaintCell", "RenderMapaAndMinimap", 0.01}) &&
                                          addRatio({"RenderMapa", "CopySameBytes", 5}) &&
                                          addRatio({"RenderMapa", "RenderWithQPainter", 1}) &&
                                          addRatio({"RenderMapa", "RenderIntoOneBuffer", 1.15}) &&
                                          addRatio({"ScrollStep", "DrawLargeMap/1000", 0.02}) &&
                                          addRatio({"ZoomStep", "DrawLargeMap/1000", 0.02}) &&
                                          addRatio({"OpenLargeMap/1000", "ReadLargeMap/1000", 2}) &&
                                          addRatio({"OpenLargeMap/150", "ReadLargeMap/150", 2});

} // namespace
