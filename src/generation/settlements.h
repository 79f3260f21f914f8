#pragma once

#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

/// Puts a random number of named settlements on random dry cells, each with a random pin of the
/// palette, by its order, and a name of its own. A later one may replace an earlier one on its
/// cell. Without pins to choose from, or without dry land, there are none. Throws Error when the
/// place-name grammar fails.
void colocarPoblados(WorldMap& map, const Palette& pins);
