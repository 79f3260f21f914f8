#pragma once

#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

#include <QHash>
#include <QImage>

// Small pictures of maps. They are made of values alone, so that any thread can make them.

/// The colour that stands for each tile, by its name.
using TileColours = QHash<QString, QRgb>;

/// The average colours of a palette's icons, but for the black around them.
TileColours tileColours(const Palette& tiles);

/// A map, a pixel a cell. Tiles without a colour are black.
QImage pixelACell(const WorldMap& map, const TileColours& colours);

/// A picture of a pixel a cell as large as fits into that many pixels, its cells as wide to high as
/// the map draws them: crisp where it is enlarged.
QImage inProportion(const QImage& cells, QSize room);
