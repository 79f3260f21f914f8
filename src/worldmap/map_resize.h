#pragma once

#include "worldmap/world_map.h"

#include <QMargins>
#include <QSize>
#include <QStringList>
#include <optional>

// A change of a map's size: rows and columns added at each side, or cut where negative. At the left
// it is always an even number of columns, because every odd column lies half a cell lower.

/// The size, in columns and rows, that a map would have; it may be impossible.
QSize resizedSize(const WorldMap& map, const QMargins& added);

/// Why a map can't be resized so, as a Spanish sentence; nothing if it can.
std::optional<QString> resizeProblem(const WorldMap& map, const QMargins& added);

/// The names of the places that would fall off the map, in row-major order of their cells.
QStringList lostPlaces(const WorldMap& map, const QMargins& added);

/// The map resized, with new cells of that tile; what is left of it keeps its tiles and places.
/// Throws Error (TooLarge) where there is a problem.
WorldMap resized(const WorldMap& map, const QMargins& added, const QString& tile);
