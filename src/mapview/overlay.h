#pragma once

#include "mapview/map_geometry.h"

#include <QColor>
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

/// Draws an overlay with a painter whose coordinates are pixels of the map's whole picture, as far
/// as it lies in a rectangle of cells.
void drawOverlay(QPainter& painter, const MapGeometry& geometry, const QRect& visibleCells,
                 const Overlay& overlay);
