#include "support.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_canvas.h"

using namespace Qt::StringLiterals;
using platform::MemoryDC;

namespace {

/// The same picture made the plainest way: for each pixel of the map, all cells in row order.
QImage referencePicture(const WorldMap& map, const MapPictures& pictures)
{
    QImage image(11 * map.ancho() + 4, 7 + 14 * map.alto(), QImage::Format_RGB32);
    image.fill(Qt::black);
    const auto lay = [&](int left, int top, const MemoryDC& picture, const MemoryDC* mask) {
        for (int y = 0; y < 14; ++y) {
            for (int x = 0; x < 15; ++x) {
                if (!image.rect().contains(left + x, top + y))
                    continue;
                QRgb pixel = picture.image().pixel(x, y);
                if (mask)
                    pixel |= image.pixel(left + x, top + y) & mask->image().pixel(x, y);
                image.setPixel(left + x, top + y, pixel);
            }
        }
    };
    for (int row = 0; row < map.alto(); ++row) {
        for (int column = 0; column < map.ancho(); ++column) {
            const int left = 11 * column;
            const int top = 14 * row + (column % 2 == 1 ? 7 : 0);
            const QString tile = map.mapaTiles(row, column);
            if (!tile.isEmpty())
                lay(left, top, *pictures.colTiles.value(tile),
                    pictures.colMascarasTiles.value(tile).get());
            if (const Place* const place = map.placeAt({column, row}))
                lay(left, top, *pictures.colPines.value(place->pin),
                    pictures.colMascarasPines.value(place->pin).get());
        }
    }
    return image;
}

} // namespace

TEST(HexGeometry, PlacesCellsAndSizesMaps)
{
    EXPECT_EQ(hex::cellOrigin(0, 0), QPoint(0, 0));
    EXPECT_EQ(hex::cellOrigin(1, 0), QPoint(11, 7));
    EXPECT_EQ(hex::cellOrigin(2, 3), QPoint(22, 42));
    EXPECT_EQ(hex::mapSize(100, 100), QSize(1100, 1407));
    EXPECT_EQ(hex::pictureSize(150, 150), QSize(1654, 2107));
}

TEST(HexGeometry, MapsThePointerToCells)
{
    EXPECT_EQ(hex::cellAt({0, 0}), QPoint(0, 0));
    EXPECT_EQ(hex::cellAt({12, 3}), QPoint(1, -1)); // above the first cell of an odd column
    EXPECT_EQ(hex::cellAt({12, 10}), QPoint(1, 0));
    EXPECT_EQ(hex::cellAt({-1, 5}), QPoint(-1, -1));
    EXPECT_EQ(hex::cellAt({-12, -1}), QPoint(-2, -1));
    // Every point of a cell's own strip of 11 × 14 pixels is that cell.
    for (int x = 0; x < 6; ++x) {
        for (int y = 0; y < 6; ++y) {
            const QPoint origin = hex::cellOrigin(x, y);
            for (const QPoint inside : {QPoint(0, 0), QPoint(10, 0), QPoint(0, 13), QPoint(10, 13)})
                ASSERT_EQ(hex::cellAt(origin + inside), QPoint(x, y));
        }
    }
}

TEST(MapCanvas, DrawsAsMaskedDrawingInRowOrderDoes)
{
    std::mt19937 engine(7);
    MapPictures own;
    MapCanvas canvas(own);
    const auto add = [&](PictureCollection& pictures, PictureCollection& masks, const QString& name,
                         bool masked, QSize size = {15, 14}) {
        pictures.insert(name,
                        std::make_shared<MemoryDC>(noise(size.width(), size.height(), engine())));
        masks.insert(
            name, masked ? std::make_shared<MemoryDC>(noise(size.width(), size.height(), engine()))
                         : SIN_MASCARA);
    };
    // Any bits in picture and mask, not only black and white; pictures larger than a cell, too.
    add(own.colTiles, own.colMascarasTiles, u"a"_s, true);
    add(own.colTiles, own.colMascarasTiles, u"b"_s, false);
    add(own.colTiles, own.colMascarasTiles, u"c"_s, true, {20, 30});
    add(own.colPines, own.colMascarasPines, u"p"_s, true);
    add(own.colPines, own.colMascarasPines, u"q"_s, false);

    for (const QSize size : {QSize(1, 1), QSize(2, 3), QSize(31, 17), QSize(20, 40)}) {
        WorldMap map;
        map.mapaTiles = platform::Grid<QString>(size.height(), size.width());
        const QStringList tiles{u"a"_s, u"b"_s, u"c"_s, QString()};
        for (QString& tile : map.mapaTiles)
            tile = tiles[static_cast<qsizetype>(engine() % 4)];
        for (int y = 0; y < map.alto(); ++y) {
            for (int x = 0; x < map.ancho(); ++x) {
                if (const auto kind = engine() % 5; kind < 2)
                    map.mapaPines[{x, y}] = {kind == 0 ? u"p"_s : u"q"_s, u"Uno"_s, {}};
            }
        }
        canvas.crearBuffer(map.ancho(), map.alto());
        canvas.renderMapa(map);
        EXPECT_EQ(canvas.hdcBuffer.image(), referencePicture(map, own));
    }
    expectError([&] { canvas.selectTile(u"z"_s); }, platform::ErrorNumber::NoSuchKey, {u"«z»"_s});
}
