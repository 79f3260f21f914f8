#pragma once

#include "platform/core/grid.h"
#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

#include <QStringList>
#include <cstdint>

/// A field of heights over the map, with one spare row and column that take no part.
using HeightGrid = platform::Grid<std::int16_t>;

/// The names of the tiles that the generator paints; the tile definitions must hold them all.
const QStringList& generatedTiles();

/// Makes the map a random world of its own size: terrain, settlements, a name, latitudes. Its notes
/// stay. Throws Error when the place-name grammar
/// fails; the map is then half made.
void generarMundo(WorldMap& map, const Palette& pins);

/// The first step: paints every cell and removes every place.
void generarTerreno(WorldMap& map);

/// Fills the rectangle of rows r0 to r1 and columns c0 to c1 by recursive midpoint displacement
/// from its four corners. A cell counts as filled when it isn't 0. Takes a time that grows with the
/// number of cells, whatever their shape.
void subdividirAlturas(HeightGrid& grid, int r0, int r1, int c0, int c1);

/// Rescales the heights so that they run from 0 to hi - lo.
void normalizarAlturas(HeightGrid& grid, int lo, int hi);

/// The tile of a normalised height.
const QString& elevationTile(int height);
/// The tile of a cell under a normalised vegetation: forest, or the tile it has.
const QString& vegetationTile(int vegetation, const QString& tile);
