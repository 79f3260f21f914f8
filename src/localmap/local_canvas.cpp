#include "localmap/local_canvas.h"

#include "app/procs.h"
#include "localmap/local_map_geometry.h"
#include "worldmap/name_cache.h"

using platform::MemoryDC;

bool LocalCanvas::coversCell(const TilePictures& tile)
{
    return tile.picture && !tile.mask && tile.picture->width() >= anchoTile &&
           tile.picture->height() >= altoTile;
}

LocalCanvas::TilePictures LocalCanvas::picturesOf(const QString& tile) const
{
    return {pictures_->colTilesLocales.value(tile).get(),
            pictures_->colMascarasLocales.value(tile).get()};
}

void LocalCanvas::crearBuffer(int ancho, int alto)
{
    hdcBuffer = MapPicture(QSize(anchoTile * ancho, altoTile * alto));
}

void LocalCanvas::drawTile(MemoryDC& dc, QPoint corner, int x, int y, const MemoryDC& picture,
                           const MemoryDC* mask)
{
    const QPoint at = QPoint(x * anchoTile, y * altoTile) - corner;
    if (mask)
        dc.MaskBlt(at.x(), at.y(), anchoTile, altoTile, picture, *mask);
    else
        dc.BitBlt(at.x(), at.y(), anchoTile, altoTile, picture, 0, 0, platform::RasterOp::SRCCOPY);
}

QStringList LocalCanvas::renderMapa(const LocalMap& map)
{
    crearBuffer(map.ancho, map.alto);
    map_ = &map;
    suelo_ = platform::Grid<int>(map.alto, map.ancho);
    QStringList missing;
    NameCache<TilePictures> tiles;
    const auto find = [&](const QString& name) {
        const TilePictures& found =
            tiles.find(name, [this](const QString& tile) { return picturesOf(tile); });
        if (!found.picture && !missing.contains(name))
            missing.append(name);
        return found;
    };
    for (int y = 0; y < map.alto; ++y) {
        for (int x = 0; x < map.ancho; ++x) {
            // The kind of grass is drawn for every cell, but laid only where it can be seen.
            suelo_(y, x) = Procs::RandomInRange(1, grassKinds);
            if (!coversCell(find(map.mapaLocal(y, x))))
                find(grassTile(suelo_(y, x)));
        }
    }
    hdcBuffer.draw([this](MemoryDC& dc, QPoint corner) { paint(dc, corner); });
    return missing;
}

void LocalCanvas::paint(MemoryDC& dc, QPoint corner) const
{
    NameCache<TilePictures> tiles;
    const auto find = [&](const QString& name) {
        return tiles.find(name, [this](const QString& tile) { return picturesOf(tile); });
    };
    const QRect cells = LocalMapGeometry({map_->ancho, map_->alto})
                            .cellsIn(QRect(corner, QSize(dc.width(), dc.height())));
    for (int y = cells.top(); y <= cells.bottom(); ++y) {
        for (int x = cells.left(); x <= cells.right(); ++x) {
            const TilePictures tile = find(map_->mapaLocal(y, x));
            const TilePictures ground =
                coversCell(tile) ? TilePictures() : find(grassTile(suelo_(y, x)));
            if (ground.picture)
                drawTile(dc, corner, x, y, *ground.picture, nullptr);
            if (tile.picture)
                drawTile(dc, corner, x, y, *tile.picture, tile.mask);
        }
    }
}
