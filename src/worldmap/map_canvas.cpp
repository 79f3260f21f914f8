#include "worldmap/map_canvas.h"

#include "platform/core/error.h"
#include "worldmap/hex_geometry.h"

using namespace Qt::StringLiterals;

using platform::MemoryDC;
using platform::RasterOp;

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
void drawCell(MemoryDC& dc, int x, int y, const MemoryDC& picture, const MemoryDC* mask)
{
    const QPoint origin = hex::cellOrigin(x, y);
    const auto blit = [&](const MemoryDC& source, RasterOp op) {
        dc.BitBlt(origin.x(), origin.y(), hex::cellWidth, hex::cellHeight, source, 0, 0, op);
    };
    if (!mask) {
        blit(picture, RasterOp::SRCCOPY);
        return;
    }
    blit(*mask, RasterOp::SRCAND);
    blit(picture, RasterOp::SRCPAINT);
}

} // namespace

void MapCanvas::crearBuffer(int ancho, int alto)
{
    const QSize size = hex::mapSize(ancho, alto);
    hdcBuffer = MemoryDC(size.width(), size.height());
    hdcBuffer.SetStretchBltMode(platform::StretchMode::HALFTONE);
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
    drawCell(dc, x, y, *tileActual, tileMask.get());
}

void MapCanvas::renderMapa(const WorldMap& map)
{
    for (int y = 0; y < map.alto; ++y) {
        for (int x = 0; x < map.ancho; ++x) {
            if (const QString& tile = map.mapaTiles(y, x); !tile.isEmpty()) {
                selectTile(tile);
                drawTile(hdcBuffer, x, y);
            }
            if (const QString& place = map.mapaPines(y, x); !place.isEmpty()) {
                selectPin(place.section(u';', 0, 0));
                drawTile(hdcBuffer, x, y);
            }
        }
    }
}
