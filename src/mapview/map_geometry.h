#pragma once

#include <QPoint>
#include <QPolygon>

/// Where the cells of a map lie, whatever their shape. Cells are counted from (0, 0) at the top
/// left (x = column, y = row), pixels are those of the map's whole picture.
class MapGeometry
{
public:
    MapGeometry() = default;
    virtual ~MapGeometry() = default;
    MapGeometry(const MapGeometry&) = delete;
    MapGeometry& operator=(const MapGeometry&) = delete;

    /// The corners of a cell, going round it.
    virtual QPolygon corners(QPoint cell) const = 0;
    /// The cell beyond a side; side i runs from corner i to the next one.
    virtual QPoint across(QPoint cell, int side) const = 0;
};
