#pragma once

#include "mapview/map_frame.h"
#include "mapview/map_geometry.h"

class QPainter;

/// A bar of a round length in the frame's bottom right corner.
struct ScaleBar {
    double kilometresPerCell = 1; ///< from one cell's centre to the next

    bool operator==(const ScaleBar&) const = default;
};

/// The longest length of 1, 2 or 5 with zeros that isn't longer than another one.
double roundLength(double most);

void drawBar(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
             const ScaleBar& bar);
