#pragma once

#include <QString>

/// Whether a tile is water: its name tells.
inline bool isWater(const QString& tile)
{
    return tile.contains(u'M');
}
