#include "worldmap/world_map.h"

Place Place::fromStored(const QString& cell)
{
    return {cell.section(u';', 0, 0), cell.section(u';', 1, 1), cell.section(u';', 2)};
}
