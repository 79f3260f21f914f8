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

/// Draws overlays one over the other, but for their keys and scale bars.
void drawLayers(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                std::span<const Overlay> overlays);

/// Draws their keys and scale bars into the frame's corners.
void drawKeys(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
              std::span<const Overlay> overlays);

/// Both, the keys over all else.
void drawOverlays(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                  std::span<const Overlay> overlays);
