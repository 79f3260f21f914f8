#include "localmap/local_generator.h"

#include "app/procs.h"

#include <algorithm>

using Procs::RandomInRange;
using Procs::roundedQuotient;

namespace {

constexpr int side = 50;
constexpr int buildings = 4;

// Extents of rivers and buildings: a stretch of n reaches n cells beyond its first one.
constexpr int shortest = 4;
constexpr int longest = 8;

constexpr int treesPerHundred = 9;

/// The neighbours that carry the same mark, as wallTile and riverTile take them.
unsigned sameNeighbours(const Rejilla& rejilla, int row, int column)
{
    const auto same = [&](int y, int x) {
        return rejilla.contains(y, x) && rejilla(y, x) == rejilla(row, column) ? 1u : 0u;
    };
    return same(row, column - 1) | same(row - 1, column) << 1 | same(row, column + 1) << 2 |
           same(row + 1, column) << 3;
}

} // namespace

void Sketch::put(int row, int column, char cell)
{
    if (!rejilla.contains(row, column))
        return;
    rejilla(row, column) = cell;
    ++marcas;
}

bool layRiver(Sketch& sketch)
{
    const int alto = sketch.rejilla.rows();
    const int ancho = sketch.rejilla.columns();
    const int quarter = roundedQuotient(ancho, 4);
    int first = RandomInRange(quarter, 3 * quarter);
    const int width = RandomInRange(shortest, longest);
    const bool downwards = RandomInRange(0, 1) == 0;
    for (int along = 0; along < (downwards ? alto : ancho); along += 2) {
        for (int across = first; across <= first + width; ++across) {
            for (const int step : {along, along + 1})
                downwards ? sketch.put(step, across, mark::river)
                          : sketch.put(across, step, mark::river);
        }
        first += RandomInRange(-1, 1);
    }
    return downwards;
}

void layBand(Sketch& sketch, bool riverDownwards)
{
    enum Side { Top, Bottom, Right, Left };
    const int alto = sketch.rejilla.rows();
    const int ancho = sketch.rejilla.columns();
    const int edge = riverDownwards ? RandomInRange(Top, Bottom) : RandomInRange(Right, Left);
    const int eighth = roundedQuotient(riverDownwards ? alto : ancho, 8);
    int depth = RandomInRange(eighth, 2 * eighth);
    for (int position = 0; position < (riverDownwards ? ancho : alto); ++position) {
        const int across = riverDownwards ? alto : ancho;
        const bool fromZero = edge == Top || edge == Left;
        const int begin = fromZero ? 0 : across - depth;
        const int end = fromZero ? depth : across - 1;
        for (int cell = begin; cell <= end; ++cell)
            riverDownwards ? sketch.put(cell, position, mark::band)
                           : sketch.put(position, cell, mark::band);
        depth += RandomInRange(-1, 1);
    }
}

void plantTrees(Sketch& sketch)
{
    Rejilla& rejilla = sketch.rejilla;
    const int cells = rejilla.rows() * rejilla.columns();
    int trees = treesPerHundred * (cells - sketch.marcas) / 100;
    while (trees > 0) {
        const int x = RandomInRange(0, rejilla.columns() - 1);
        const int y = RandomInRange(0, rejilla.rows() - 1);
        if (rejilla(y, x) != mark::ground)
            continue;
        rejilla(y, x) = mark::tree;
        --trees;
    }
}

void build(Rejilla& rejilla)
{
    const int columns = RandomInRange(shortest, longest) + 1;
    const int rows = RandomInRange(shortest, longest) + 1;
    const QPoint corner = bestPlace(rejilla, {columns, rows});
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const bool isWall = row == 0 || row == rows - 1 || column == 0 || column == columns - 1;
            rejilla(corner.y() + row, corner.x() + column) = isWall ? mark::wall : mark::inside;
        }
    }
}

int buildingCost(char cell)
{
    switch (cell) {
    case mark::tree:
        return 10;
    case mark::river:
    case mark::band:
        return 1000;
    case mark::inside:
        return 300;
    case mark::wall:
        return -10; // so that buildings lean on each other's walls
    default:
        return 1;
    }
}

QPoint bestPlace(const Rejilla& rejilla, QSize building)
{
    // sums(y, x) is the cost of everything above and to the left, so that any rectangle's cost
    // takes four of them.
    platform::Grid<int> sums(rejilla.rows() + 1, rejilla.columns() + 1);
    for (int y = 0; y < rejilla.rows(); ++y) {
        int row = 0;
        for (int x = 0; x < rejilla.columns(); ++x) {
            row += buildingCost(rejilla(y, x));
            sums(y + 1, x + 1) = sums(y, x + 1) + row;
        }
    }
    const int w = building.width();
    const int h = building.height();
    QPoint best;
    int lowest = 100'000;
    for (int y = 0; y + h <= rejilla.rows(); ++y) {
        for (int x = 0; x + w <= rejilla.columns(); ++x) {
            const int cost = sums(y + h, x + w) - sums(y, x + w) - sums(y + h, x) + sums(y, x);
            if (cost < lowest) {
                lowest = cost;
                best = {x, y};
            }
        }
    }
    return best;
}

platform::Grid<QString> nameTiles(const Rejilla& rejilla)
{
    platform::Grid<QString> names(rejilla.rows(), rejilla.columns());
    for (int row = 0; row < rejilla.rows(); ++row) {
        for (int column = 0; column < rejilla.columns(); ++column) {
            const char cell = rejilla(row, column);
            QString& name = names(row, column);
            name = cell == mark::tree ? treeTile(RandomInRange(1, treeKinds))
                                      : grassTile(RandomInRange(1, grassKinds));
            if (cell == mark::wall)
                name = wallTile(sameNeighbours(rejilla, row, column));
            else if (cell == mark::river)
                name = riverTile(sameNeighbours(rejilla, row, column));
        }
    }
    return names;
}

void generarMapaLocal(LocalMap& map)
{
    map.ancho = side;
    map.alto = side;
    map.currX = 0;
    map.currY = 0;
    map.mapaCambiado = true;

    Sketch sketch{Rejilla(map.alto, map.ancho, mark::ground)};
    const bool riverDownwards = layRiver(sketch);
    layBand(sketch, riverDownwards);
    plantTrees(sketch);
    for (int i = 0; i < buildings; ++i)
        build(sketch.rejilla);
    map.mapaLocal = nameTiles(sketch.rejilla);
}
