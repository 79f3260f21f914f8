#pragma once

#include "worldmap/hex_geometry.h"

#include <QPoint>
#include <QString>

// What a map of the tile editor Tiled and ours have in common.
namespace tmx {

// Tiled's own measures: with them, its columns and rows are as far apart as ours.
inline constexpr int tileSize = 14;
inline constexpr int hexSide = 8;

inline const QString terrainLayer = QStringLiteral("Terreno");
inline const QString placesLayer = QStringLiteral("Lugares");
inline const QString placeType = QStringLiteral("lugar");

/// Where Tiled has an object that shows a picture in a cell: by its lower left corner.
constexpr QPoint objectAt(QPoint cell)
{
    return hex::cellOrigin(cell.x(), cell.y()) + QPoint(0, hex::cellHeight);
}

} // namespace tmx
