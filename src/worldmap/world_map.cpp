#include "worldmap/world_map.h"

#include <algorithm>

const QPoint* WorldMap::cellOf(const QString& placeName) const
{
    const auto found = std::find_if(mapaPines.begin(), mapaPines.end(), [&](const auto& entry) {
        return entry.second.name == placeName;
    });
    return found == mapaPines.end() ? nullptr : &found->first;
}
