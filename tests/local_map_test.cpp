// Random local maps over many seeds, and how they are drawn.
#include "app/procs.h"
#include "localmap/local_canvas.h"
#include "plain_versions.h"
#include "platform/core/random_source.h"
#include "support.h"

#include <QCryptographicHash>
#include <QSet>
#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 50;
constexpr int seeds = 300;

Sketch emptySketch()
{
    return {Rejilla(side, side, ' ')};
}

/// The marks of a whole random map.
Rejilla layOut(int seed)
{
    platform::randomSource().seed(static_cast<std::uint64_t>(seed));
    Sketch sketch = emptySketch();
    const bool riverDownwards = layRiver(sketch);
    layBand(sketch, riverDownwards);
    plantTrees(sketch);
    for (int i = 0; i < 4; ++i)
        build(sketch.rejilla);
    return sketch.rejilla;
}

/// The grid with rows and columns exchanged.
Rejilla turned(const Rejilla& grid)
{
    Rejilla result(grid.columns(), grid.rows());
    for (int y = 0; y < grid.rows(); ++y) {
        for (int x = 0; x < grid.columns(); ++x)
            result(x, y) = grid(y, x);
    }
    return result;
}

/// The one stretch of a mark in a row: where it begins, and how long it is.
std::pair<int, int> stretch(const Rejilla& grid, int row, char cell)
{
    int first = 0;
    while (first < side && grid(row, first) != cell)
        ++first;
    int end = first;
    while (end < side && grid(row, end) == cell)
        ++end;
    for (int x = end; x < side; ++x)
        EXPECT_NE(grid(row, x), cell) << "in two pieces in row " << row;
    return {first, end - first};
}

} // namespace

TEST(LocalMap, BestPlaceIsTheFirstOfTheCheapest)
{
    std::mt19937 engine(11);
    const QByteArray marks("    TTRMBC");
    for (int round = 0; round < 400; ++round) {
        // Few kinds of marks, so that many places cost the same.
        const auto kinds = static_cast<unsigned>(1 + engine() % 10);
        Rejilla grid(12 + round % 9, 11 + round % 13);
        for (char& cell : grid)
            cell = marks[static_cast<qsizetype>(engine() % kinds)];
        const int w = 5 + static_cast<int>(engine() % 5);
        const int h = 5 + static_cast<int>(engine() % 5);
        ASSERT_EQ(bestPlace(grid, {w, h}), bestPlaceAnew(grid, {w, h})) << "round " << round;
    }
}

TEST(LocalMap, RiversDriftFromEdgeToEdge)
{
    QSet<int> widths;
    int downwards = 0;
    for (int seed = 0; seed < seeds; ++seed) {
        SCOPED_TRACE(seed);
        platform::randomSource().seed(static_cast<std::uint64_t>(seed));
        Sketch sketch = emptySketch();
        const bool down = layRiver(sketch);
        downwards += down;
        const Rejilla grid = down ? sketch.rejilla : turned(sketch.rejilla);
        EXPECT_EQ(sketch.marcas, std::count(grid.begin(), grid.end(), 'R'));
        const auto [start, width] = stretch(grid, 0, 'R');
        EXPECT_TRUE(start >= 12 && start <= 36);
        widths.insert(width);
        int before = start;
        for (int row = 0; row < side; row += 2) {
            const auto [first, length] = stretch(grid, row, 'R');
            EXPECT_EQ(stretch(grid, row + 1, 'R'), std::pair(first, length));
            if (first == 0 || first + length == side)
                break; // part of it has drifted out
            EXPECT_EQ(length, width);
            EXPECT_LE(std::abs(first - before), 1);
            before = first;
        }
    }
    EXPECT_EQ(widths, (QSet<int>{5, 6, 7, 8, 9}));
    EXPECT_TRUE(downwards > seeds / 3 && downwards < 2 * seeds / 3);
}

TEST(LocalMap, TheBandLiesAcrossTheRiversCourse)
{
    for (const bool riverDownwards : {true, false}) {
        QSet<bool> atFarEdge;
        QSet<int> depths;
        for (int seed = 0; seed < seeds; ++seed) {
            SCOPED_TRACE(seed);
            platform::randomSource().seed(static_cast<std::uint64_t>(seed));
            Sketch sketch = emptySketch();
            layBand(sketch, riverDownwards);
            // Turned so that the band's depth is along the rows.
            const Rejilla grid = riverDownwards ? turned(sketch.rejilla) : sketch.rejilla;
            EXPECT_EQ(sketch.marcas, std::count(grid.begin(), grid.end(), 'M'));
            const bool far = grid(0, 0) != 'M';
            atFarEdge.insert(far);
            int before = -1;
            for (int row = 0; row < side; ++row) {
                const auto [first, cells] = stretch(grid, row, 'M');
                const int depth = far ? cells : cells - 1;
                if (before >= 0 && (cells > 0 || before > 0)) {
                    EXPECT_LE(std::abs(depth - before), 1);
                }
                if (cells > 0) {
                    EXPECT_EQ(far ? first + cells : first, far ? side : 0);
                }
                if (row == 0)
                    depths.insert(depth);
                before = cells > 0 ? depth : -1;
            }
        }
        EXPECT_EQ(atFarEdge.size(), 2);
        EXPECT_EQ(depths, (QSet<int>{6, 7, 8, 9, 10, 11, 12}));
    }
}

TEST(LocalMap, TreesAndBuildingsComeInTheirNumbers)
{
    for (int seed = 0; seed < seeds; ++seed) {
        SCOPED_TRACE(seed);
        platform::randomSource().seed(static_cast<std::uint64_t>(seed));
        Sketch sketch = emptySketch();
        const bool riverDownwards = layRiver(sketch);
        const int river = sketch.marcas;
        layBand(sketch, riverDownwards);
        const Rejilla bare = sketch.rejilla;
        // The band overwrites the river, and its cells count again.
        EXPECT_EQ(sketch.marcas, river + std::count(bare.begin(), bare.end(), 'M'));
        plantTrees(sketch);
        int trees = 0;
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                trees += sketch.rejilla(y, x) == 'T';
                EXPECT_TRUE(sketch.rejilla(y, x) == bare(y, x) || bare(y, x) == ' ');
            }
        }
        EXPECT_EQ(trees, 9 * (2500 - sketch.marcas) / 100);
    }
    // One building on open ground covers a rectangle of five to nine cells a side.
    QSet<int> sides;
    for (int seed = 0; seed < 100; ++seed) {
        platform::randomSource().seed(static_cast<std::uint64_t>(seed));
        Rejilla ground(side, side, ' ');
        build(ground);
        const auto [x, width] = stretch(ground, 0, 'C');
        EXPECT_EQ(x, 0) << "the first of equal places";
        const auto [y, height] = stretch(turned(ground), 0, 'C');
        sides += {width, height};
        EXPECT_EQ(std::count(ground.begin(), ground.end(), 'C'), 2 * (width + height) - 4);
        EXPECT_EQ(std::count(ground.begin(), ground.end(), 'B'), (width - 2) * (height - 2));
    }
    EXPECT_EQ(sides, (QSet<int>{5, 6, 7, 8, 9}));
}

TEST(LocalMap, NamesAgreeWithTheirNeighbours)
{
    const QStringList known = localTileNames();
    EXPECT_EQ(known.size(), 5 + 23 + 15 + 7);
    const QHash<int, QString> walls{{1, u"f2"_s},  {2, u"f3"_s},  {3, u"c3"_s},  {4, u"f4"_s},
                                    {5, u"r2"_s},  {6, u"c4"_s},  {7, u"t1"_s},  {8, u"f1"_s},
                                    {9, u"c2"_s},  {10, u"r1"_s}, {11, u"t4"_s}, {12, u"c1"_s},
                                    {13, u"t3"_s}, {14, u"t2"_s}, {15, u"x1"_s}};
    const QHash<int, QString> river{{7, u"l1"_s},   {9, u"ee2"_s}, {11, u"l4"_s},
                                    {12, u"ee1"_s}, {13, u"l3"_s}, {14, u"l2"_s}};
    QSet<QString> seen;
    for (int seed = 0; seed < seeds; ++seed) {
        const Rejilla grid = layOut(seed);
        const platform::Grid<QString> names = nameTiles(grid);
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const auto same = [&](int row, int column) {
                    return grid.contains(row, column) && grid(row, column) == grid(y, x);
                };
                const int mask =
                    same(y, x - 1) + 2 * same(y - 1, x) + 4 * same(y, x + 1) + 8 * same(y + 1, x);
                const QString& name = names(y, x);
                seen.insert(name);
                switch (grid(y, x)) {
                case 'C':
                    ASSERT_EQ(name, walls.value(mask) + u't');
                    break;
                case 'R':
                    ASSERT_EQ(name, river.value(mask, u"i1"_s));
                    break;
                default:
                    ASSERT_EQ(name.at(0), grid(y, x) == 'T' ? u'a' : u'p');
                    ASSERT_TRUE(known.contains(name)) << name.toStdString();
                }
            }
        }
    }
    for (const QString& name : known) {
        if (!QStringList{u"f1t"_s, u"f2t"_s, u"f3t"_s, u"f4t"_s}.contains(name)) {
            EXPECT_TRUE(seen.contains(name)) << name.toStdString(); // ends come up but rarely
        }
    }
}

TEST(LocalMap, OneSeedGivesOneMap)
{
    const struct {
        std::uint64_t seed;
        QPoint at;     ///< the first of the cells
        QString cells; ///< some of a row
        QByteArray digest;
    } cases[]{{1, {0, 0}, u"p3 p3 p5 p3 p1 c1t r2t r2t"_s, "a8d7ead49a0f"},
              {2, {0, 34}, u"ee1 ee2 p3 a2 ee1 l3 i1 i1"_s, "cf0de13f9389"},
              {5, {22, 49}, u"p4 a11 i1 l1 l1 l1 i1 p5"_s, "d484349fabb4"}};
    for (const auto& c : cases) {
        LocalMap map;
        map.currX = 7;
        map.currY = 9;
        platform::randomSource().seed(c.seed);
        generarMapaLocal(map);
        ASSERT_EQ(QSize(map.mapaLocal.columns(), map.mapaLocal.rows()), QSize(side, side));
        EXPECT_EQ(QPoint(map.currX, map.currY), QPoint());
        EXPECT_TRUE(map.mapaCambiado);
        const QStringList names(map.mapaLocal.begin(), map.mapaLocal.end());
        EXPECT_EQ(names.mid(c.at.y() * side + c.at.x(), 8).join(u' '), c.cells);
        const QByteArray all = names.join(u';').toLatin1();
        EXPECT_EQ(QCryptographicHash::hash(all, QCryptographicHash::Sha1).toHex().left(12),
                  c.digest);
    }
}

TEST(LocalMap, GrassShowsThroughMasksAndWhereTilesAreMissing)
{
    const platform::ScopedAppFolder app(shippedDataFolder());
    LocalPictures pictures;
    LocalCanvas canvas(pictures);
    Palette palette(tilesLocalesKind());
    loadDefinitions(palette, pictures.colTilesLocales, pictures.colMascarasLocales);
    for (const QString& name : localTileNames()) {
        ASSERT_TRUE(pictures.colTilesLocales.contains(name)) << name.toStdString();
        EXPECT_EQ(pictures.colTilesLocales.value(name)->image().size(), QSize(32, 32));
    }
    LocalMap map;
    platform::randomSource().seed(8);
    generarMapaLocal(map);
    platform::randomSource().seed(21);
    EXPECT_TRUE(canvas.renderMapa(map).isEmpty());

    // Two plain passes, the second through AND and OR, give the same pixels.
    platform::randomSource().seed(21);
    platform::MemoryDC plain(32 * side, 32 * side);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            plain.BitBlt(32 * x, 32 * y, 32, 32,
                         *pictures.colTilesLocales.value(u"p%1"_s.arg(Procs::RandomInRange(1, 5))),
                         0, 0, platform::RasterOp::SRCCOPY);
    }
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const auto picture = pictures.colTilesLocales.value(map.mapaLocal(y, x));
            const auto mask = pictures.colMascarasLocales.value(map.mapaLocal(y, x));
            if (mask)
                plain.BitBlt(32 * x, 32 * y, 32, 32, *mask, 0, 0, platform::RasterOp::SRCAND);
            plain.BitBlt(32 * x, 32 * y, 32, 32, *picture, 0, 0,
                         mask ? platform::RasterOp::SRCPAINT : platform::RasterOp::SRCCOPY);
        }
    }
    EXPECT_EQ(canvas.hdcBuffer.image(), plain.image());

    pictures.colTilesLocales.remove(u"i1"_s);
    pictures.colTilesLocales.remove(u"a4"_s);
    QStringList missing = canvas.renderMapa(map);
    missing.sort();
    EXPECT_EQ(missing, (QStringList{u"a4"_s, u"i1"_s}));

    // Nothing of an earlier map shows, whatever is missing; small pictures stand on grass.
    pictures.colTilesLocales[u"i1"_s] =
        std::make_shared<platform::MemoryDC>(QImage(24, 24, QImage::Format_RGB32));
    canvas.renderMapa(map);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            if (map.mapaLocal(y, x) == "i1"_L1) {
                ASSERT_NE(canvas.hdcBuffer.image().pixel(32 * x + 30, 32 * y + 30), 0xff000000);
            }
        }
    }
    for (int kind = 1; kind <= grassKinds; ++kind)
        pictures.colTilesLocales.remove(grassTile(kind));
    LocalCanvas fresh(pictures);
    generarMapaLocal(map);
    canvas.renderMapa(map);
    fresh.renderMapa(map);
    EXPECT_EQ(canvas.hdcBuffer.image(), fresh.hdcBuffer.image());
}
