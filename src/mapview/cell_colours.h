#pragma once

#include "mapview/map_frame.h"
#include "mapview/map_geometry.h"
#include "platform/core/grid.h"

#include <QImage>
#include <QStringList>
#include <optional>
#include <vector>

class QPainter;

/// A figure for each cell, by (row, column); nothing where there is none.
using CellFigures = platform::Grid<std::optional<float>>;

/// Which end of the ramp is light.
enum class LightEnd { Highest, Lowest };

/// The cells' figures as colours, with their key.
struct CellColours {
    QImage picture;    ///< a pixel a cell, transparent where a cell has no figure
    QString title;     ///< of the key
    QStringList scale; ///< the key's figures, evenly from the lowest to the highest of the map
    LightEnd lightEnd = LightEnd::Highest;
    bool areDiscs = false;         ///< in the cells, to be seen beside other colours
    std::vector<QPoint> uncovered; ///< row by row: left as they are where pins can be made out

    bool operator==(const CellColours&) const = default;
};

/// The colours of a map's figures. The key's are written with that many decimals.
CellColours cellColours(const CellFigures& figures, const QString& title, int decimals,
                        LightEnd lightEnd = LightEnd::Highest);

/// A colour of the ramp from its dark end, 0, to its light one, 1: lighter all the way, so that it
/// reads without telling colours apart.
QRgb rampColour(double share);

QSizeF colourKeySize(double unit);
void drawColourKey(QPainter& painter, const CellColours& colours, const QRectF& box, double unit);

/// Draws the key into the frame's bottom left corner, above that many others, if there is room.
void drawKey(QPainter& painter, const MapFrame& frame, const CellColours& colours, int keysBelow);

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellColours& colours);
