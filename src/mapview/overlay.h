#pragma once

#include "mapview/map_geometry.h"

#include <QColor>
#include <QPointF>
#include <QRect>
#include <variant>
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

/// Something drawn over the view of a map that is no part of its picture.
using Overlay = std::variant<CellOutline, CellMark>;

/// Where a painter draws a part of a map's picture: from its own (0, 0) on.
struct MapFrame {
    QRect part;       ///< of the picture, in its pixels
    double scale = 1; ///< units of the painter to a pixel of the picture
    double unit = 1;  ///< units of the painter to a pixel of a plain screen, for lines and letters

    /// Where a point of the picture is, in units of the painter.
    QPointF at(QPointF pixel) const { return (pixel - part.topLeft()) * scale; }
};

/// Draws an overlay as far as it can be seen in the frame.
void drawOverlay(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                 const Overlay& overlay);
