#pragma once

#include "mapview/map_frame.h"
#include "mapview/map_geometry.h"

class QPainter;

/// The outlines of all cells, as long as they are large enough for it.
struct CellGrid {
    bool operator==(const CellGrid&) const = default;
};

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellGrid& grid);
