#pragma once

#include "mapview/cell_colours.h"
#include "mapview/cell_grid.h"
#include "mapview/cell_marks.h"
#include "mapview/cell_numbers.h"
#include "mapview/place_names.h"
#include "mapview/scale_bar.h"

#include <span>
#include <variant>

/// Something drawn over the view of a map that is no part of its picture.
using Overlay = std::variant<CellOutline, CellMark, CellCursor, CellGrid, CellNumbers, CellColours,
                             PlaceNames, ScaleBar>;

/// Draws an overlay as far as it can be seen in the frame.
void drawOverlay(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                 const Overlay& overlay);

/// Draws overlays one over the other, and over them all their keys and scale bars, which stand in
/// the frame's corners.
void drawOverlays(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                  std::span<const Overlay> overlays);
