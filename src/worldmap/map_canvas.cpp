#include "worldmap/map_canvas.h"

#include "platform/core/error.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_file.h"
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

WorldMap readDrawableMap(const platform::TextFile& file, const MapPictures& pictures,
                         const platform::OnFault& onFault)
{
    return parseMap(
        file, [&](const QString& name) { return pictures.colTiles.contains(name); },
        [&](const QString& name) { return pictures.colPines.contains(name); }, onFault);
}

void MapCanvas::crearBuffer(int ancho, int alto)
{
    const QSize size = hex::mapSize(ancho, alto);
    hdcBuffer = MemoryDC(size.width(), size.height());
}

void MapCanvas::selectTile(const QString& tile)
{
    tileActual = pictureOf(colTiles, tile);
    tileMask = pictureOf(colMascarasTiles, tile);
}

void MapCanvas::selectPin(const QString& pin)
{
    tileActual = pictureOf(colPines, pin);
    tileMask = pictureOf(colMascarasPines, pin);
}

void MapCanvas::drawTile(MemoryDC& dc, int x, int y) const
{
    drawPicture(dc, hex::cellOrigin(x, y), *tileActual, tileMask.get());
}

void MapCanvas::redrawCell(const WorldMap& map, int x, int y)
{
    // The pictures of the neighbours reach into the cell's, some below it and some above.
    const QPoint corner = hex::cellOrigin(x, y);
    MemoryDC patch(hex::cellWidth, hex::cellHeight);
    for (int row = y - 1; row <= y + 1; ++row) {
        for (int column = x - 1; column <= x + 1; ++column) {
            if (!map.mapaTiles.contains(row, column))
                continue;
            const QPoint offset = hex::cellOrigin(column, row) - corner;
            if (const QString& tile = map.mapaTiles(row, column); !tile.isEmpty())
                drawPicture(patch, offset, *pictureOf(colTiles, tile),
                            pictureOf(colMascarasTiles, tile).get());
            if (const QString& place = map.mapaPines(row, column); !place.isEmpty()) {
                const QString pin = Place::fromStored(place).pin;
                drawPicture(patch, offset, *pictureOf(colPines, pin),
                            pictureOf(colMascarasPines, pin).get());
            }
        }
    }
    hdcBuffer.BitBlt(corner.x(), corner.y(), patch.width(), patch.height(), patch, 0, 0,
                     platform::RasterOp::SRCCOPY);
}

void MapCanvas::renderMapa(const WorldMap& map)
{
    NameCache<TilePictures> tiles;
    const auto lookUp = [this](const QString& tile) {
        return TilePictures{pictureOf(colTiles, tile).get(),
                            pictureOf(colMascarasTiles, tile).get()};
    };
    for (int y = 0; y < map.alto; ++y) {
        for (int x = 0; x < map.ancho; ++x) {
            if (const QString& tile = map.mapaTiles(y, x); !tile.isEmpty()) {
                const TilePictures& found = tiles.find(tile, lookUp);
                drawPicture(hdcBuffer, hex::cellOrigin(x, y), *found.picture, found.mask);
            }
            if (const QString& place = map.mapaPines(y, x); !place.isEmpty()) {
                selectPin(place.section(u';', 0, 0));
                drawTile(hdcBuffer, x, y);
            }
        }
    }
}
