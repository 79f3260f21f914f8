#pragma once

#include "worldmap/hex_geometry.h"
#include "worldmap/map_canvas.h"
#include "worldmap/name_cache.h"

/// Looks at every piece of a picture, so that all of it is drawn.
inline void lookAtAll(const MapPicture& picture)
{
    constexpr int step = 512;
    platform::MemoryDC dot(1, 1);
    for (int y = 0; y < picture.height(); y += step) {
        for (int x = 0; x < picture.width(); x += step)
            picture.copyTo(dot, {}, QRect(x, y, 1, 1));
    }
}

/// Draws a whole map, row by row, into a buffer of its size: the plain way, which pieces are
/// measured against.
inline void drawIntoOneBuffer(platform::MemoryDC& buffer, const MapPictures& pictures,
                              const WorldMap& map)
{
    struct Found {
        const platform::MemoryDC* picture = nullptr;
        const platform::MemoryDC* mask = nullptr;
    };
    const auto lay = [&](int x, int y, const Found& found) {
        const QPoint at = hex::cellOrigin(x, y);
        buffer.MaskBlt(at.x(), at.y(), hex::cellWidth, hex::cellHeight, *found.picture,
                       *found.mask);
    };
    NameCache<Found> tiles;
    auto place = map.mapaPines.begin();
    for (int y = 0; y < map.alto(); ++y) {
        for (int x = 0; x < map.ancho(); ++x) {
            lay(x, y, tiles.find(map.mapaTiles(y, x), [&](const QString& tile) {
                return Found{pictures.colTiles[tile].get(), pictures.colMascarasTiles[tile].get()};
            }));
            if (place != map.mapaPines.end() && place->first == QPoint(x, y)) {
                lay(x, y,
                    {pictures.colPines[place->second.pin].get(),
                     pictures.colMascarasPines[place->second.pin].get()});
                ++place;
            }
        }
    }
}
