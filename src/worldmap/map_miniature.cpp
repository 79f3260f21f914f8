#include "worldmap/map_miniature.h"

#include "worldmap/hex_geometry.h"

namespace {

QRgb averageColour(const QImage& icon)
{
    int sums[3] = {};
    int count = 0;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x) {
            const QRgb pixel = icon.pixel(x, y);
            if (qAlpha(pixel) == 0 || (pixel & RGB_MASK) == 0)
                continue;
            sums[0] += qRed(pixel);
            sums[1] += qGreen(pixel);
            sums[2] += qBlue(pixel);
            ++count;
        }
    }
    return count == 0 ? qRgb(0, 0, 0) : qRgb(sums[0] / count, sums[1] / count, sums[2] / count);
}

} // namespace

TileColours tileColours(const Palette& tiles)
{
    TileColours colours;
    for (int i = 0; i < tiles.items.count(); ++i) {
        const platform::ListItem& tile = tiles.items.at(i);
        colours.insert(tile.key(), averageColour(tiles.images.at(tile.icon())));
    }
    return colours;
}

QImage pixelACell(const WorldMap& map, const TileColours& colours)
{
    QImage picture(map.ancho(), map.alto(), QImage::Format_RGB32);
    for (int y = 0; y < map.alto(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < map.ancho(); ++x)
            row[x] = colours.value(map.mapaTiles(y, x), qRgb(0, 0, 0));
    }
    return picture;
}

QImage inProportion(const QImage& cells, QSize room)
{
    const QSize size = QSize(cells.width() * hex::columnPitch, cells.height() * hex::cellHeight)
                           .scaled(room, Qt::KeepAspectRatio)
                           .expandedTo({1, 1});
    const bool shrinks = size.width() < cells.width() || size.height() < cells.height();
    return cells.scaled(size, Qt::IgnoreAspectRatio,
                        shrinks ? Qt::SmoothTransformation : Qt::FastTransformation);
}
