#pragma once

#include "worldmap/definitions.h"
#include "worldmap/map_change.h"

#include <QRect>

// Pieces of a map that are carried to another place, or to another map. A piece is a small map; its
// first column was an even one, so that its columns stand to each other as they did. Where it holds
// nothing, the map stays as it is.

/// What the map holds in a rectangle of cells, as far as it lies on the map.
WorldMap cutOut(const WorldMap& map, const QRect& cells);

/// What there is in a piece: without its first column, where that holds nothing.
QRect contentOf(const WorldMap& block);

/// A piece as a text for the clipboard. Throws Error (BadCharacter) for what no map file can hold.
QString blockText(const WorldMap& block);

/// Reads such a text; everything in it is checked as in a map file. Throws Error with the reason.
WorldMap readBlock(const QString& text, const MapPictures& pictures);

/// The change that lays a piece over a map, as far as it lies on it, with its corner at a cell of
/// an even column. A place whose name is taken gets a numeral.
MapChange pasteBlock(const WorldMap& map, const WorldMap& block, QPoint corner);
