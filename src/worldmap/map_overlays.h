#pragma once

#include "mapview/cell_colours.h"
#include "mapview/place_names.h"
#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

/// How important a pin's places are where there isn't room for all names, 0 first. Pins whose name
/// or notes speak of a capital, city, town or village come in this order; the palette's other pins
/// follow as it lists them, then those that it doesn't know.
int pinImportance(const Palette& pins, const QString& pin);

/// The names of a map's places. To be made anew when places or pins change, and only then: the
/// value remembers its layouts.
PlaceNames placeNamesOf(const WorldMap& map, const Palette& pins);

/// Colours that leave a map's places free, so that their pins can be seen.
CellColours besidePlaces(CellColours colours, const WorldMap& map);

/// The inhabitants of a map's terrain, as colours.
CellColours inhabitantsColours(const WorldMap& map, const Palette& tiles);
