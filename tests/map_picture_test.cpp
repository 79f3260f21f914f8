// The picture of a map in pieces, its reduction, and the part of it that a view shows.

#include "mapview/map_picture.h"
#include "mapview/reduced_picture.h"
#include "mapview/viewport.h"
#include "support.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_canvas.h"

using namespace Qt::StringLiterals;
using platform::MemoryDC;

namespace {

constexpr QSize cellSize(hex::cellWidth, hex::cellHeight);

QImage reduced(const QImage& whole, QSize part, QSize size)
{
    MemoryDC surface(size.width(), size.height());
    surface.StretchBlt(0, 0, size.width(), size.height(), MemoryDC(whole), 0, 0, part.width(),
                       part.height(), platform::RasterOp::SRCCOPY);
    return surface.image();
}

/// A map drawn the plain way: whole into one buffer, and changes over that as they come.
class OneBuffer
{
public:
    OneBuffer(const MapPictures& pictures, const WorldMap& map)
        : pictures_(&pictures),
          seen_(map),
          buffer_(hex::pictureSize(map.ancho(), map.alto()).width(),
                  hex::pictureSize(map.ancho(), map.alto()).height())
    {
        draw(buffer_, {0, 0, map.ancho(), map.alto()}, {});
    }
    const QImage& image() const { return buffer_.image(); }

    /// Draws a cell again as the map has it now.
    void redraw(const WorldMap& map, QPoint cell)
    {
        seen_.mapaTiles(cell.y(), cell.x()) = map.tileAt(cell);
        seen_.mapaPines.erase(cell);
        if (const Place* const place = map.placeAt(cell))
            seen_.mapaPines[cell] = *place;
        MemoryDC patch(cellSize.width(), cellSize.height());
        const QPoint corner = hex::cellOrigin(cell.x(), cell.y());
        draw(patch, QRect(cell - QPoint(2, 2), QSize(5, 5)), corner);
        buffer_.BitBlt(corner.x(), corner.y(), cellSize.width(), cellSize.height(), patch, 0, 0,
                       platform::RasterOp::SRCCOPY);
    }
    void drawPin(const WorldMap& map, QPoint cell)
    {
        seen_.mapaPines[cell] = *map.placeAt(cell);
        lay(buffer_, hex::cellOrigin(cell.x(), cell.y()), pictures_->colPines,
            pictures_->colMascarasPines, map.placeAt(cell)->pin);
    }
    void drawRoad(QPoint from, QPoint to)
    {
        buffer_.MoveToEx(hex::cellCentre(from.x(), from.y()));
        buffer_.LineTo(hex::cellCentre(to.x(), to.y()), {2, qRgb(60, 30, 20)});
    }

private:
    static void lay(MemoryDC& dc, QPoint at, const PictureCollection& pictures,
                    const PictureCollection& masks, const QString& name)
    {
        if (const auto mask = masks.value(name)) {
            dc.BitBlt(at.x(), at.y(), 15, 14, *mask, 0, 0, platform::RasterOp::SRCAND);
            dc.BitBlt(at.x(), at.y(), 15, 14, *pictures.value(name), 0, 0,
                      platform::RasterOp::SRCPAINT);
        } else {
            dc.BitBlt(at.x(), at.y(), 15, 14, *pictures.value(name), 0, 0,
                      platform::RasterOp::SRCCOPY);
        }
    }
    void draw(MemoryDC& dc, QRect cells, QPoint corner) const
    {
        for (int y = cells.top(); y <= cells.bottom(); ++y) {
            for (int x = cells.left(); x <= cells.right(); ++x) {
                if (!seen_.contains({x, y}))
                    continue;
                lay(dc, hex::cellOrigin(x, y) - corner, pictures_->colTiles,
                    pictures_->colMascarasTiles, seen_.tileAt({x, y}));
                if (const Place* const place = seen_.placeAt({x, y}))
                    lay(dc, hex::cellOrigin(x, y) - corner, pictures_->colPines,
                        pictures_->colMascarasPines, place->pin);
            }
        }
    }

    const MapPictures* pictures_;
    WorldMap seen_; ///< as far as it is drawn
    MemoryDC buffer_;
};

} // namespace

/// Tiles and pins that overlap their neighbours, changes of every kind, and pieces that come and
/// go.
TEST(MapPicture, PiecesShowWhatOneBufferWould)
{
    std::mt19937 engine(5);
    MapPictures pictures;
    const auto add = [&](PictureCollection& to, PictureCollection& masks, const QString& name) {
        to.insert(name, std::make_shared<MemoryDC>(noise(15, 14, engine())));
        masks.insert(name, name == "b"_L1 ? SIN_MASCARA
                                          : std::make_shared<MemoryDC>(noise(15, 14, engine())));
    };
    const QStringList tiles{u"a"_s, u"b"_s, u"c"_s};
    for (const QString& tile : tiles)
        add(pictures.colTiles, pictures.colMascarasTiles, tile);
    add(pictures.colPines, pictures.colMascarasPines, u"p"_s);
    const auto anyTile = [&] { return tiles[static_cast<qsizetype>(engine() % 3)]; };

    WorldMap map;
    map.mapaTiles = platform::Grid<QString>(152, 190); // more than two pieces each way
    for (QString& tile : map.mapaTiles)
        tile = anyTile();
    // Most happens where four pieces meet.
    const auto anyCell = [&] {
        return QPoint(85 + static_cast<int>(engine() % 16), 66 + static_cast<int>(engine() % 14));
    };
    OneBuffer wanted(pictures, map);
    MapCanvas canvas(pictures);
    canvas.crearBuffer(map.ancho(), map.alto());
    constexpr qint64 onePiece = 5 * 1024 * 1024;
    canvas.hdcBuffer = MapPicture(canvas.hdcBuffer.size(), onePiece);
    canvas.renderMapa(map);
    for (int step = 0; step < 400; ++step) {
        const QPoint cell = anyCell();
        switch (engine() % 5) {
        case 0:
        case 1: {
            const QString before = std::exchange(map.mapaTiles(cell.y(), cell.x()), anyTile());
            canvas.drawPainted({{cell, before}});
            if (!map.placeAt(cell))
                wanted.redraw(map, cell);
            break;
        }
        case 2:
            if (map.mapaPines.erase(cell) > 0) {
                canvas.redrawCell(cell);
                wanted.redraw(map, cell);
            } else {
                map.mapaPines[cell] = {u"p"_s, u"Uno"_s, {}};
                canvas.selectPin(u"p"_s);
                canvas.drawTile(cell.x(), cell.y());
                wanted.drawPin(map, cell);
            }
            break;
        case 3: {
            const QPoint to = anyCell();
            const QRect road =
                QRect(hex::cellCentre(cell.x(), cell.y()), hex::cellCentre(to.x(), to.y()))
                    .normalized()
                    .adjusted(-2, -2, 2, 2);
            canvas.hdcBuffer.drawOver(road, [=](MemoryDC& dc, QPoint corner) {
                dc.MoveToEx(hex::cellCentre(cell.x(), cell.y()) - corner);
                dc.LineTo(hex::cellCentre(to.x(), to.y()) - corner, {2, qRgb(60, 30, 20)});
            });
            wanted.drawRoad(cell, to);
            break;
        }
        default: // a look elsewhere lets pieces go
            canvas.hdcBuffer.part({static_cast<int>(engine() % 2000), 1000, 40, 60});
            EXPECT_LE(canvas.hdcBuffer.bytes(), onePiece);
        }
        if (step % 40 == 0) {
            ASSERT_EQ(canvas.hdcBuffer.image(), wanted.image()) << "step " << step;
        }
    }
    EXPECT_EQ(canvas.hdcBuffer.part(canvas.hdcBuffer.rect()).image(), wanted.image());
    // Many cells at once are drawn with their pieces.
    std::vector<MapChange::Tile> before;
    for (int y = 0; y < map.alto(); ++y) {
        for (int x = 0; x < map.ancho(); x += 2) {
            before.push_back({{x, y}, std::exchange(map.mapaTiles(y, x), anyTile())});
            if (!map.placeAt({x, y}))
                wanted.redraw(map, {x, y});
        }
    }
    canvas.drawPainted(before);
    EXPECT_EQ(canvas.hdcBuffer.image(), wanted.image());
}

TEST(MapPicture, WithoutMemoryForAPieceOthersAreLetGo)
{
    MapPicture picture(QSize(5000, 1000));
    bool isShort = false;
    picture.draw([&](MemoryDC& part, QPoint corner) {
        if (isShort && picture.bytes() > 0)
            throw std::bad_alloc();
        part.fill(qRgb(corner.x() / 100, 0, 0));
    });
    const auto red = [&](int x) { return qRed(picture.part({x, 500, 1, 1}).image().pixel(0, 0)); };
    EXPECT_EQ(red(100), 0);
    EXPECT_EQ(red(1100), 10);
    isShort = true;
    EXPECT_EQ(red(2100), 20);
    EXPECT_EQ(red(100), 0);

    // Where that doesn't help it is told, and the picture goes on as soon as it can.
    picture.draw([&](MemoryDC&, QPoint) {
        if (isShort)
            throw platform::Error(platform::ErrorNumber::TooLarge, u"No hay memoria."_s);
    });
    expectError([&] { red(100); }, platform::ErrorNumber::TooLarge, {u"memoria"_s});
    isShort = false;
    EXPECT_EQ(red(100), 0);
}

TEST(MapPicture, ReducesToTheAverageOfAreas)
{
    const QImage whole = noise(2300, 2100, 9).image();
    MapPicture picture(whole.size());
    const MemoryDC source(whole);
    picture.draw([&](MemoryDC& part, QPoint corner) {
        part.BitBlt(0, 0, part.width(), part.height(), source, corner.x(), corner.y(),
                    platform::RasterOp::SRCCOPY);
    });
    ASSERT_TRUE(picture.isLarge());
    const QSize part(2296, 2100);
    for (const QSize size : {QSize(177, 162), QSize(1, 7), QSize(601, 555)}) {
        ReducedPicture small;
        small.follow(picture, part, size);
        int slices = 0;
        for (; !small.isFilled(); ++slices)
            small.fill(picture, std::chrono::milliseconds(0));
        EXPECT_TRUE(slices > 1 || size.width() == 1);
        EXPECT_EQ(small.surface().image(), reduced(picture.image(), part, size));

        const QRect changed(1020, 1020, 15, 14);
        picture.drawOver(changed, [changed](MemoryDC& dc, QPoint corner) {
            const QPoint to = changed.topLeft() - corner;
            dc.BitBlt(to.x(), to.y(), 15, 14, noise(15, 14, 3), 0, 0, platform::RasterOp::SRCCOPY);
        });
        small.redraw(picture, changed);
        EXPECT_EQ(small.surface().image(), reduced(picture.image(), part, size));
    }
}

TEST(Viewport, ZoomsAroundAPlaceAndReachesEveryEdge)
{
    for (const double screenScale : {1.0, 1.25, 1.5, 2.0}) {
        const int plain = screenScale < 1.5 ? 1 : 2;
        for (const QSize picture : {QSize(15, 21), QSize(1654, 2107), QSize(26, 458745)}) {
            for (const QSize room : {QSize(1, 1), QSize(700, 601), QSize(2400, 1300)}) {
                Viewport view;
                view.setRoom(room, screenScale);
                view.setPicture(picture);
                for (const int zoom : Viewport::zooms) {
                    const QPoint place(room.width() * 2 / 3, room.height() / 3);
                    const QPoint before = view.pictureAt(place);
                    view.setZoom(zoom, place);
                    EXPECT_EQ(view.scale(), zoom * plain);
                    const QPoint after = view.pictureAt(place);
                    const QPoint last = view.lastOrigin();
                    const QPoint origin = view.origin();
                    EXPECT_TRUE(after.x() == before.x() || origin.x() == 0 ||
                                origin.x() == last.x());
                    EXPECT_TRUE(after.y() == before.y() || origin.y() == 0 ||
                                origin.y() == last.y());

                    view.setOrigin({picture.width(), picture.height()});
                    const QPoint end = view.placeOf({picture.width(), picture.height()});
                    EXPECT_LE(end.x(), std::max(room.width(), zoom * plain));
                    EXPECT_LE(end.y(), std::max(room.height(), zoom * plain));
                    EXPECT_EQ(view.pictureAt(view.placeOf(view.origin())), view.origin());
                }
                view.showWhole();
                EXPECT_TRUE(QRect({}, room.expandedTo({1, 1})).contains(view.wholeRect()) ||
                            room.width() == 1 || view.wholeRect().width() == 1);
                EXPECT_LE(view.scale(), plain);
            }
        }
    }
    Viewport view;
    EXPECT_EQ(view.zoomBeside(-1), 1);
    view.setZoom(4, {});
    EXPECT_EQ(view.zoomBeside(1), 6);
    EXPECT_EQ(view.zoomBeside(5), 8);
}
