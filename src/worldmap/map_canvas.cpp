#include "worldmap/map_canvas.h"

#include "platform/core/error.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/name_cache.h"

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
    if (cells.size() * cellsDrawn <
        static_cast<std::size_t>(map.ancho()) * static_cast<std::size_t>(map.alto())) {
        for (const QPoint cell : cells)
            redrawCell(map, cell);
        return;
    }
    MapCanvas whole(*pictures_);
    whole.crearBuffer(map.ancho(), map.alto());
    whole.renderMapa(map);
    for (const QPoint cell : cells) {
        const QPoint corner = hex::cellOrigin(cell.x(), cell.y());
        hdcBuffer.BitBlt(corner.x(), corner.y(), hex::cellWidth, hex::cellHeight, whole.hdcBuffer,
                         corner.x(), corner.y(), platform::RasterOp::SRCCOPY);
    }
}

void MapCanvas::renderMapa(const WorldMap& map)
{
    NameCache<TilePictures> tiles;
    const auto lookUp = [this](const QString& tile) {
        return TilePictures{pictureOf(pictures_->colTiles, tile).get(),
                            pictureOf(pictures_->colMascarasTiles, tile).get()};
    };
    auto place = map.mapaPines.begin(); // they come in the order of the cells
    for (int y = 0; y < map.alto(); ++y) {
        for (int x = 0; x < map.ancho(); ++x) {
            if (const QString& tile = map.mapaTiles(y, x); !tile.isEmpty()) {
                const TilePictures& found = tiles.find(tile, lookUp);
                drawPicture(hdcBuffer, hex::cellOrigin(x, y), *found.picture, found.mask);
            }
            if (place != map.mapaPines.end() && place->first == QPoint(x, y)) {
                selectPin(place->second.pin);
                drawTile(hdcBuffer, x, y);
                ++place;
            }
        }
    }
}
