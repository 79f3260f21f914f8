#include "worldmap/map_area.h"

#include "worldmap/hex_geometry.h"

std::vector<QPoint> cellsAround(const WorldMap& map, QPoint centre, int radius)
{
    std::vector<QPoint> cells;
    for (int row = centre.y() - radius; row <= centre.y() + radius; ++row) {
        for (int column = centre.x() - radius; column <= centre.x() + radius; ++column) {
            const QPoint cell(column, row);
            if (map.contains(cell) && hex::distance(centre, cell) <= radius)
                cells.push_back(cell);
        }
    }
    return cells;
}

std::vector<QPoint> connectedArea(const WorldMap& map, QPoint cell)
{
    const QString& tile = map.tileAt(cell);
    // Most cells of one tile share one text.
    const auto hasTile = [&](QPoint at) {
        const QString& other = map.tileAt(at);
        return other.constData() == tile.constData() || other == tile;
    };
    platform::Grid<char> seen(map.alto(), map.ancho(), 0);
    seen(cell.y(), cell.x()) = 1;
    std::vector<QPoint> area{cell}; // also those whose neighbours are still to be looked at
    for (std::size_t next = 0; next < area.size(); ++next) {
        const QPoint from = area[next];
        for (const QPoint step : hex::neighbours(from.x())) {
            const QPoint to = from + step;
            if (!map.contains(to) || seen(to.y(), to.x()) != 0 || !hasTile(to))
                continue;
            seen(to.y(), to.x()) = 1;
            area.push_back(to);
        }
    }
    return area;
}
