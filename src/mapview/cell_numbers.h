#pragma once

#include "mapview/map_frame.h"
#include "mapview/map_geometry.h"

#include <QString>
#include <vector>

class QPainter;

/// Column and row of the cells, as many as there is room for.
struct CellNumbers {
    bool operator==(const CellNumbers&) const = default;
};

/// A cell's number: two digits of column and row each, counted from 1, "0712"; with a point
/// between them where one takes more, "100.07".
QString cellNumber(QPoint cell);

/// A number on the map.
struct CellLabel {
    QRect box; ///< in units of the painter, the halo in it
    QString text;
};

/// The numbers that a frame shows. They never touch: only those of every second, fifth, tenth...
/// column and row are there, by the scale; of those, the ones that reach out of the map's picture
/// or into what is taken by others are left out.
std::vector<CellLabel> cellLabels(const MapGeometry& geometry, const MapFrame& frame,
                                  const std::vector<QRect>& taken = {});

void drawNumbers(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                 const std::vector<QRect>& taken);
