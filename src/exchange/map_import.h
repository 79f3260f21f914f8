#pragma once

#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

/// A map with what a file brings into it: places and, from a map of the tile editor, the terrain.
/// By the file's suffix, csv or tmx. Throws Error that names all that doesn't fit, with its lines.
WorldMap importedInto(const WorldMap& map, const QString& path, const MapPictures& pictures);

/// The places of a table, for a map of that size. Throws as importedInto.
Places readCsvPlaces(const QString& path, QSize map, const MapPictures& pictures);
/// A map of the tile editor. Throws as importedInto.
WorldMap readTmx(const QString& path, const MapPictures& pictures);
