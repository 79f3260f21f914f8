#include "localmap/local_canvas.h"

#include "app/procs.h"
#include "worldmap/name_cache.h"

using platform::MemoryDC;

namespace {

/// A tile's picture, null for a tile without one, and its mask, null for an opaque one.
struct TilePictures {
    const MemoryDC* picture = nullptr;
    const MemoryDC* mask = nullptr;
};

bool coversCell(const TilePictures& tile)
{
    return tile.picture && !tile.mask && tile.picture->width() >= LocalCanvas::anchoTile &&
           tile.picture->height() >= LocalCanvas::altoTile;
}

} // namespace

void LocalCanvas::crearBuffer(int ancho, int alto)
{
    hdcBuffer = MemoryDC(anchoTile * ancho, altoTile * alto);
}

void LocalCanvas::drawTile(MemoryDC& dc, int x, int y, const MemoryDC& picture,
                           const MemoryDC* mask)
{
    if (mask)
        dc.MaskBlt(x * anchoTile, y * altoTile, anchoTile, altoTile, picture, *mask);
    else
        dc.BitBlt(x * anchoTile, y * altoTile, anchoTile, altoTile, picture, 0, 0,
                  platform::RasterOp::SRCCOPY);
}

QStringList LocalCanvas::renderMapa(const LocalMap& map)
{
    if (hdcBuffer.width() != anchoTile * map.ancho || hdcBuffer.height() != altoTile * map.alto)
        crearBuffer(map.ancho, map.alto);
    else
        hdcBuffer.fill(qRgb(0, 0, 0));
    QStringList missing;
    NameCache<TilePictures> tiles;
    const auto find = [&](const QString& name) {
        const TilePictures& found = tiles.find(name, [&](const QString& tile) {
            return TilePictures{pictures_->colTilesLocales.value(tile).get(),
                                pictures_->colMascarasLocales.value(tile).get()};
        });
        if (!found.picture && !missing.contains(name))
            missing.append(name);
        return found;
    };
    for (int y = 0; y < map.alto; ++y) {
        for (int x = 0; x < map.ancho; ++x) {
            // The kind of grass is drawn for every cell, but laid only where it can be seen.
            const QString& grass = grassTile(Procs::RandomInRange(1, grassKinds));
            const TilePictures tile = find(map.mapaLocal(y, x));
            if (!coversCell(tile)) {
                if (const TilePictures ground = find(grass); ground.picture)
                    drawTile(hdcBuffer, x, y, *ground.picture, nullptr);
            }
            if (tile.picture)
                drawTile(hdcBuffer, x, y, *tile.picture, tile.mask);
        }
    }
    return missing;
}
