#pragma once

#include "mapview/cell_colours.h"
#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

#include <QRect>
#include <optional>

/// How many people live in some cells of a map.
struct Inhabitants {
    QSize area;              ///< columns and rows that were looked at
    qint64 cells = 0;        ///< those of a known number
    qint64 unknown = 0;      ///< the others
    double sumOfDensity = 0; ///< inhabitants for each km², over all known cells

    std::optional<double> meanDensity() const;
    /// All that live in the known cells, at that many kilometres from cell to cell.
    std::optional<double> total(double kilometresPerCell) const;
};

/// The area of a cell in km², by the way from its centre to the next.
double cellArea(double kilometresPerCell);

/// A tile's inhabitants for each km²; nothing when it isn't defined or has no such number.
std::optional<double> tileInhabitants(const Palette& tiles, const QString& tile);

/// Inhabitants of a part of a map; of all of it by default.
Inhabitants inhabitantsOf(const WorldMap& map, const Palette& tiles,
                          const std::optional<QRect>& part = {});

/// The figure of every cell.
CellFigures inhabitantsFigures(const WorldMap& map, const Palette& tiles);

/// "Habitantes: media de 12,5 por km² (10 × 8 casillas); unos 34.600 en total".
QString inhabitantsText(const Inhabitants& inhabitants, std::optional<double> kilometresPerCell);
