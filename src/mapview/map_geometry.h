#pragma once

#include <QPoint>
#include <QPolygon>
#include <QRect>
#include <QSize>

/// Where the cells of a map lie, whatever their shape. Cells are counted from (0, 0) at the top
/// left (x = column, y = row), pixels are those of the map's whole picture.
class MapGeometry
{
public:
    MapGeometry() = default;
    virtual ~MapGeometry() = default;
    MapGeometry(const MapGeometry&) = delete;
    MapGeometry& operator=(const MapGeometry&) = delete;

    /// The map's columns and rows.
    virtual QSize cells() const = 0;
    /// The size of the map's whole picture.
    virtual QSize pictureSize() const = 0;
    /// What the picture of a cell covers.
    virtual QRect cellRect(QPoint cell) const = 0;
    /// The cell that a pixel belongs to; it may lie outside the map.
    virtual QPoint cellAt(QPoint pixel) const = 0;
    /// The cell that counts as the first one of a view whose corner is a pixel.
    virtual QPoint firstCell(QPoint pixel) const = 0;
    /// The corners of a cell, going round it.
    virtual QPolygon corners(QPoint cell) const = 0;
    /// The cell beyond a side; side i runs from corner i to the next one.
    virtual QPoint across(QPoint cell, int side) const = 0;

    /// The rectangle of the map's cells whose pictures may reach into a part of the picture.
    QRect cellsIn(const QRect& part) const
    {
        return QRect(cellAt(part.topLeft()) - QPoint(1, 1),
                     cellAt(part.bottomRight()) + QPoint(1, 1)) &
               QRect({}, cells());
    }
};
