#pragma once

#include "platform/core/grid.h"
#include "worldmap/definitions.h"

#include <QPoint>
#include <QString>
#include <optional>
#include <vector>

/// Roads over the world map: the cheapest way between two cells, by A* on the hexagonal grid.
namespace PathFinding {

/// What FindPath returns when there is no way.
inline const QString notFound = QStringLiteral("No encontrado");

/// A cell of this cost can't be entered.
inline constexpr int impassable = -1;

/// The cheapest route between two cells of the map, by the costs of entering its tiles, as a route
/// text: "row;column" for each cell from the end back to the start, joined by "|". A route whose
/// cost and estimate together reach 100000 counts as none, and an end outside the map can't be
/// reached. Throws Error, naming tile and cell, when the search comes to a tile without a cost.
QString FindPath(const platform::Grid<QString>& tiles, int startX, int startY, int endX, int endY,
                 const Palette& palette);

/// The estimated cost between two cells: their distance in grid indices, rounded down.
int Heuristic(int x1, int y1, int x2, int y2);

/// The cost of entering a tile; nothing when it isn't defined or its cost isn't a number.
std::optional<int> TileCost(const Palette& palette, const QString& tileName);

/// What a route costs: entering every cell of it but the start, which comes last in its text.
int routeCost(const platform::Grid<QString>& tiles, const QString& route, const Palette& palette);

/// The cells of a route text (x = column, y = row), in its order.
std::vector<QPoint> routeCells(const QString& route);

} // namespace PathFinding
