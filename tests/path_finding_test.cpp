// Routes, against a search that scans its lists as plainly as can be.
#include "plain_versions.h"
#include "support.h"

#include <random>

using namespace Qt::StringLiterals;

using platform::Grid;

namespace {

/// Tiles named by their cost.
struct CostPalette : Palette {
    explicit CostPalette(const std::vector<int>& costs) : Palette(tilesKind())
    {
        for (const int cost : costs) {
            const QString name = QString::number(cost);
            items.add(name, name).setSubItem(u"costo"_s, name);
        }
    }
};

std::mt19937 engine(7);

int upTo(int bound)
{
    return static_cast<int>(engine() % static_cast<unsigned>(bound));
}

void expectSameRoute(const Grid<int>& costs, const Palette& palette, QPoint start, QPoint end)
{
    Grid<QString> tiles(costs.rows(), costs.columns());
    std::transform(costs.begin(), costs.end(), tiles.begin(),
                   [](int cost) { return QString::number(cost); });
    ASSERT_EQ(PathFinding::FindPath(tiles, start.x(), start.y(), end.x(), end.y(), palette),
              findPathScanning(costs, start, end))
        << costs.rows() << " x " << costs.columns() << ", from " << start.x() << ',' << start.y()
        << " to " << end.x() << ',' << end.y();
}

} // namespace

TEST(PathFinding, GivesTheRoutesOfAPlainSearchOnThousandsOfMaps)
{
    // Equal costs, few and many different ones, cheap ways round, free cells, walls, huge costs.
    const std::vector<std::vector<int>> mixes{{1},
                                              {3},
                                              {1, 2},
                                              {1, 5, 9},
                                              {0, 1},
                                              {2, 30},
                                              {1, -1},
                                              {1, 2, 3, -1},
                                              {5, 7, 11, 20, -1},
                                              {0},
                                              {9000, 30000, 1},
                                              {-3, 2, 1}};
    for (int round = 0; round < 4000; ++round) {
        const std::vector<int>& mix = mixes[static_cast<std::size_t>(round) % mixes.size()];
        Grid<int> costs(1 + upTo(12), 1 + upTo(12));
        for (int& cost : costs)
            cost = mix[static_cast<std::size_t>(upTo(static_cast<int>(mix.size())))];
        const auto cell = [&] { return QPoint(upTo(costs.columns()), upTo(costs.rows())); };
        expectSameRoute(costs, CostPalette(mix), cell(), cell());
        if (HasFatalFailure())
            return;
    }
    for (const int side : {50, 75, 100, 150}) {
        const std::vector<int> mix{1, 2, 4, 9, -1};
        Grid<int> costs(side, side);
        for (int& cost : costs)
            cost = mix[static_cast<std::size_t>(upTo(5))];
        expectSameRoute(costs, CostPalette(mix), {3, side - 5}, {40, side - 40});
        if (HasFatalFailure())
            return;
    }
}

TEST(PathFinding, KeepsToTheMapAndToWhatCanBeEntered)
{
    using PathFinding::FindPath;
    const CostPalette palette({1, -1, 60000, 99999});
    Grid<QString> tiles(5, 9, u"1"_s);
    EXPECT_EQ(FindPath(tiles, 4, 2, 4, 1, palette), u"1;4|2;4"_s);
    EXPECT_EQ(FindPath(tiles, 4, 2, 4, 2, palette), u"2;4"_s);
    EXPECT_EQ(FindPath(tiles, 0, 2, 8, 2, palette).count(u'|'), 8);
    for (const QPoint outside : {QPoint(-1, 0), QPoint(9, 0), QPoint(0, 5), QPoint(0, -1)}) {
        EXPECT_EQ(FindPath(tiles, outside.x(), outside.y(), 4, 1, palette), u"No encontrado"_s);
        EXPECT_EQ(FindPath(tiles, 4, 1, outside.x(), outside.y(), palette), u"No encontrado"_s);
    }
    for (int y = 0; y < 5; ++y)
        tiles(y, 4) = u"-1"_s;
    EXPECT_EQ(FindPath(tiles, 0, 2, 8, 2, palette), u"No encontrado"_s);
    EXPECT_EQ(FindPath(tiles, 0, 2, 4, 2, palette), u"No encontrado"_s);
    EXPECT_EQ(FindPath(tiles, 4, 2, 6, 2, palette).count(u'|'), 2) << "may start on a wall";
    tiles(2, 4).clear(); // a start without a tile isn't asked for its cost
    EXPECT_EQ(FindPath(tiles, 4, 2, 6, 2, palette).count(u'|'), 2);
    expectError([&] { FindPath(tiles, 0, 2, 8, 2, palette); }, platform::ErrorNumber::NoSuchKey,
                {u"X:4 Y:2"_s});
    tiles(2, 4) = u"60000"_s; // not a number of 16 bits
    expectError([&] { FindPath(tiles, 0, 2, 8, 2, palette); }, platform::ErrorNumber::NoSuchKey,
                {u"«60000»"_s, u"X:4 Y:2"_s});
}

TEST(PathFinding, AFarCheapWayBeatsANearDearOne)
{
    const CostPalette palette({1, 50});
    Grid<QString> tiles(20, 21, u"50"_s);
    for (int x = 0; x < 21; ++x)
        tiles(19, x) = u"1"_s;
    for (int y = 0; y < 20; ++y)
        tiles(y, 0) = tiles(y, 20) = u"1"_s;
    const QString route = PathFinding::FindPath(tiles, 0, 0, 20, 0, palette);
    for (const QPoint cell : PathFinding::routeCells(route))
        EXPECT_EQ(tiles(cell.y(), cell.x()), u"1"_s);
    EXPECT_EQ(PathFinding::routeCost(tiles, route, palette), route.count(u'|'));
    EXPECT_EQ(PathFinding::routeCost(tiles, u"0;1|1;1|0;0"_s, palette), 100) << "without the start";
    // The whole part of the straight line between grid indices.
    EXPECT_EQ(PathFinding::Heuristic(3, 4, 0, 0), 5);
    EXPECT_EQ(PathFinding::Heuristic(0, 0, -2, 3), 3);
}
