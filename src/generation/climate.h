#pragma once

#include "mapview/cell_colours.h"
#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

#include <QString>

/// The climate of a map's cells.
struct Climate {
    int span = 0;   ///< of latitudes, in degrees, south of north counting as negative
    float step = 0; ///< degrees a row
    /// Whole numbers that grow with the distance from the equator and the temperature modifier of
    /// the terrain; every cell has one.
    CellFigures figures;
};

/// Throws Error when the map has no span of latitudes, or for a tile without a temperature, naming
/// tile and cell.
Climate climateOf(const WorldMap& map, const Palette& tiles);

/// The climate report: the span, the degrees a row, then a line for each row with the figure of
/// each cell. Every line ends with CR LF.
QString climateReport(const Climate& climate, const QString& decimalPoint);
/// The same of a map. Throws as climateOf does.
QString climateReport(const WorldMap& map, const Palette& tiles, const QString& decimalPoint);

/// The figures as colours.
CellColours climateColours(const Climate& climate);
