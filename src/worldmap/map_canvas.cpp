#include "worldmap/map_canvas.h"

#include "platform/core/error.h"
#include "platform/core/grid.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/name_cache.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using platform::MemoryDC;

namespace {

using Picture = std::shared_ptr<const MemoryDC>;

const Picture& pictureOf(const PictureCollection& pictures, const QString& name)
{
    const auto found = pictures.constFind(name);
    if (found == pictures.constEnd())
        throw platform::Error(platform::ErrorNumber::NoSuchKey,
                              u"«%1» no tiene imagen entre las definiciones cargadas."_s.arg(name));
    return *found;
}

/// Draws a picture over a cell: what lies under the mask's black is wiped out, then the picture,
/// black outside its own shape, is laid over it.
void drawPicture(MemoryDC& dc, QPoint origin, const MemoryDC& picture, const MemoryDC* mask)
{
    if (mask)
        dc.MaskBlt(origin.x(), origin.y(), hex::cellWidth, hex::cellHeight, picture, *mask);
    else
        dc.BitBlt(origin.x(), origin.y(), hex::cellWidth, hex::cellHeight, picture, 0, 0,
                  platform::RasterOp::SRCCOPY);
}

struct TilePictures {
    const MemoryDC* picture;
    const MemoryDC* mask;
};

} // namespace

void MapCanvas::crearBuffer(int ancho, int alto)
{
    const QSize size = hex::mapSize(ancho, alto);
    hdcBuffer = MemoryDC(size.width(), size.height());
}

void MapCanvas::selectTile(const QString& tile)
{
    tileActual = pictureOf(pictures_->colTiles, tile);
    tileMask = pictureOf(pictures_->colMascarasTiles, tile);
}

void MapCanvas::selectPin(const QString& pin)
{
    tileActual = pictureOf(pictures_->colPines, pin);
    tileMask = pictureOf(pictures_->colMascarasPines, pin);
}

void MapCanvas::drawTile(MemoryDC& dc, int x, int y) const
{
    drawPicture(dc, hex::cellOrigin(x, y), *tileActual, tileMask.get());
}

/// Draws a cell, its tile and its place, with its corner at a point.
void MapCanvas::drawCell(MemoryDC& dc, QPoint origin, const WorldMap& map, QPoint cell) const
{
    if (const QString& tile = map.tileAt(cell); !tile.isEmpty())
        drawPicture(dc, origin, *pictureOf(pictures_->colTiles, tile),
                    pictureOf(pictures_->colMascarasTiles, tile).get());
    if (const Place* const place = map.placeAt(cell))
        drawPicture(dc, origin, *pictureOf(pictures_->colPines, place->pin),
                    pictureOf(pictures_->colMascarasPines, place->pin).get());
}

void MapCanvas::redrawCell(const WorldMap& map, QPoint cell)
{
    // The pictures of the neighbours reach into the cell's, some below it and some above.
    const QPoint corner = hex::cellOrigin(cell.x(), cell.y());
    MemoryDC patch(hex::cellWidth, hex::cellHeight);
    for (int row = cell.y() - 1; row <= cell.y() + 1; ++row) {
        for (int column = cell.x() - 1; column <= cell.x() + 1; ++column) {
            if (map.contains({column, row}))
                drawCell(patch, hex::cellOrigin(column, row) - corner, map, {column, row});
        }
    }
    hdcBuffer.BitBlt(corner.x(), corner.y(), patch.width(), patch.height(), patch, 0, 0,
                     platform::RasterOp::SRCCOPY);
}

void MapCanvas::redrawCells(const WorldMap& map, std::span<const QPoint> cells)
{
    // Each cell takes the drawing of nine; of many cells all at once is less.
    constexpr std::size_t cellsDrawn = 9;
    const auto all = static_cast<std::size_t>(map.ancho()) * static_cast<std::size_t>(map.alto());
    if (cells.size() * cellsDrawn < all) {
        for (const QPoint cell : cells)
            redrawCell(map, cell);
    } else if (cells.size() == all) {
        hdcBuffer.fill(qRgb(0, 0, 0));
        renderMapa(map);
    } else {
        redrawInBands(map, cells);
    }
}

/// Draws some rows at a time beside the buffer, which may be large, and copies from there what the
/// cells cover.
void MapCanvas::redrawInBands(const WorldMap& map, std::span<const QPoint> cells)
{
    constexpr int bandRows = 64;
    platform::Grid<char> isWanted(map.alto(), map.ancho(), 0);
    for (const QPoint cell : cells)
        isWanted(cell.y(), cell.x()) = 1;
    for (int first = 0; first < map.alto(); first += bandRows) {
        const int end = std::min(first + bandRows, map.alto());
        const QPoint corner = hex::cellOrigin(0, first);
        const QSize size = hex::mapSize(map.ancho(), end - first);
        MemoryDC band(size.width(), size.height());
        // The pictures of the rows above and below reach into the band.
        drawRows(band, corner, map, std::max(0, first - 1), std::min(end + 1, map.alto()));
        for (int x = 0; x < map.ancho(); ++x) {
            for (int y = first, run = 0; y < end; y += std::max(run, 1)) {
                for (run = 0; y + run < end && isWanted(y + run, x) != 0;)
                    ++run;
                const QPoint to = hex::cellOrigin(x, y);
                hdcBuffer.BitBlt(to.x(), to.y(), hex::cellWidth, run * hex::cellHeight, band,
                                 to.x() - corner.x(), to.y() - corner.y(),
                                 platform::RasterOp::SRCCOPY);
            }
        }
    }
}

void MapCanvas::renderMapa(const WorldMap& map)
{
    drawRows(hdcBuffer, {}, map, 0, map.alto());
}

/// Draws the cells of some rows onto a surface whose top left corner is a point of the map's
/// picture.
void MapCanvas::drawRows(MemoryDC& dc, QPoint corner, const WorldMap& map, int firstRow,
                         int endRow) const
{
    NameCache<TilePictures> tiles;
    const auto lookUp = [this](const QString& tile) {
        return TilePictures{pictureOf(pictures_->colTiles, tile).get(),
                            pictureOf(pictures_->colMascarasTiles, tile).get()};
    };
    auto place = map.mapaPines.lower_bound({0, firstRow}); // they come in the order of the cells
    for (int y = firstRow; y < endRow; ++y) {
        for (int x = 0; x < map.ancho(); ++x) {
            const QPoint origin = hex::cellOrigin(x, y) - corner;
            if (const QString& tile = map.mapaTiles(y, x); !tile.isEmpty()) {
                const TilePictures& found = tiles.find(tile, lookUp);
                drawPicture(dc, origin, *found.picture, found.mask);
            }
            if (place != map.mapaPines.end() && place->first == QPoint(x, y)) {
                drawPicture(dc, origin, *pictureOf(pictures_->colPines, place->second.pin),
                            pictureOf(pictures_->colMascarasPines, place->second.pin).get());
                ++place;
            }
        }
    }
}
