#pragma once

#include "mapview/map_frame.h"
#include "mapview/map_geometry.h"

#include <QColor>
#include <QPoint>
#include <QRect>
#include <vector>

class QPainter;

/// A line round some cells.
struct CellOutline {
    QRect bounds;              ///< the cells, or a rectangle that they lie in
    std::vector<QPoint> cells; ///< row by row; without any, all of the bounds
    bool isDashed = false;

    bool contains(QPoint cell) const;
    bool operator==(const CellOutline&) const = default;
};

/// A disc in the middle of a cell.
struct CellMark {
    QPoint cell;
    QColor color;

    bool operator==(const CellMark&) const = default;
};

/// The cell that the keyboard has come to.
struct CellCursor {
    QPoint cell;

    bool operator==(const CellCursor&) const = default;
};

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellOutline& outline);
void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellMark& mark);
void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellCursor& cursor);
