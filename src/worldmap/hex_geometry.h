#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <array>

/// Where the hexagonal cells of the world map lie. All lengths are in pixels of the map's picture;
/// a cell is a QPoint (x = column, y = row) counted from 0 at the top left corner.
namespace hex {

inline constexpr int cellWidth = 15;
inline constexpr int cellHeight = 14;
/// From one column to the next; pictures of neighbouring columns overlap by the rest.
inline constexpr int columnPitch = cellWidth * 3 / 4;
/// How far odd columns are shifted down.
inline constexpr int oddColumnShift = cellHeight / 2;

static_assert(columnPitch == 11 && oddColumnShift == 7);

/// Top left corner of a cell's picture.
constexpr QPoint cellOrigin(int x, int y)
{
    return {columnPitch * x, oddColumnShift * (x & 1) + cellHeight * y};
}

/// Centre of a cell's picture.
constexpr QPoint cellCentre(int x, int y)
{
    return cellOrigin(x, y) + QPoint(cellWidth / 2, cellHeight / 2);
}

using Neighbours = std::array<QPoint, 6>;

inline constexpr Neighbours neighboursOfEvenColumn{QPoint(-1, -1), QPoint(1, -1), QPoint(-1, 0),
                                                   QPoint(1, 0),   QPoint(0, -1), QPoint(0, 1)};
inline constexpr Neighbours neighboursOfOddColumn{QPoint(-1, 1), QPoint(1, 1),  QPoint(-1, 0),
                                                  QPoint(1, 0),  QPoint(0, -1), QPoint(0, 1)};

/// The offsets of the six neighbours of a cell of column x, in the order that searches go through.
constexpr const Neighbours& neighbours(int x)
{
    return (x & 1) != 0 ? neighboursOfOddColumn : neighboursOfEvenColumn;
}

/// How many steps from neighbour to neighbour lead from a cell to another.
constexpr int distance(QPoint from, QPoint to)
{
    // Along axes that stand at 120 degrees to each other, steps add up.
    constexpr auto axialRow = [](QPoint cell) { return 2 * cell.y() - cell.x() + (cell.x() & 1); };
    const int columns = to.x() - from.x();
    const int rows = (axialRow(to) - axialRow(from)) / 2;
    constexpr auto absolute = [](int value) { return value < 0 ? -value : value; };
    return (absolute(columns) + absolute(rows) + absolute(columns + rows)) / 2;
}

/// Size of a whole map, by which its proportions are reckoned.
constexpr QSize mapSize(int columns, int rows)
{
    return {columnPitch * columns, oddColumnShift + cellHeight * rows};
}

/// Size of the picture of a whole map: the last column's pictures reach beyond where the next
/// column would begin.
constexpr QSize pictureSize(int columns, int rows)
{
    return mapSize(columns, rows) + QSize(cellWidth - columnPitch, 0);
}

/// What a rectangle of cells takes of the picture of the map: as much as a map of its size would,
/// with halves of neighbours.
constexpr QRect zonePicture(const QRect& cells)
{
    return {QPoint(columnPitch * cells.x(), cellHeight * cells.y()),
            pictureSize(cells.width(), cells.height())};
}

/// The cell under a point, relative to the cell at the top left corner of the view, whose column
/// must be even. A strip where two columns overlap belongs to the right-hand one. The result may
/// lie outside the map.
constexpr QPoint cellAt(QPoint point)
{
    constexpr auto floorDivide = [](int a, int b) { return a / b - (a % b < 0 ? 1 : 0); };
    const int column = floorDivide(point.x(), columnPitch);
    const int odd = column & 1;
    return {column, floorDivide(point.y() + oddColumnShift * odd, cellHeight) - odd};
}

} // namespace hex
