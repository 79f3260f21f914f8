#pragma once

#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

#include <QString>

/// The climate report of a map: its span of latitudes in degrees, the degrees a row, then a line
/// for each row with a figure for each cell that grows with the distance from the equator and the
/// temperature modifier of the terrain. Every line ends with CR LF. Throws Error when the map has
/// no span of latitudes, or for a tile without a temperature, naming tile and cell.
QString climateReport(const WorldMap& map, const Palette& tiles, const QString& decimalPoint);
