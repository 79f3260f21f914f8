#pragma once

#include "worldmap/world_map.h"

#include <vector>

/// The cells of a map that are at most so many steps away from a cell, row by row.
std::vector<QPoint> cellsAround(const WorldMap& map, QPoint centre, int radius);

/// A cell and all that hang together with it and have its tile.
std::vector<QPoint> connectedArea(const WorldMap& map, QPoint cell);
