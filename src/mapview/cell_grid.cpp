#include "mapview/cell_grid.h"

#include <QLineF>
#include <QList>
#include <QPainter>

namespace {

constexpr QColor lineColour(12, 10, 8, 100);
constexpr int smallestCell = 6;

} // namespace

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellGrid& /*grid*/)
{
    const QSizeF cell = QSizeF(geometry.cellRect({0, 0}).size()) * frame.scale;
    if (std::min(cell.width(), cell.height()) < smallestCell * frame.unit)
        return;
    QList<QLineF> lines;
    const QRect cells = geometry.cellsIn(frame.part);
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column) {
            const QPolygon corners = geometry.corners({column, row});
            const auto count = static_cast<int>(corners.size());
            for (int side = 0; side < count; ++side) {
                // A side between two cells is drawn by the one that is counted first.
                const QPoint beyond = geometry.across({column, row}, side);
                const bool isLater = beyond.y() > row || (beyond.y() == row && beyond.x() > column);
                if (isLater || !cells.contains(beyond))
                    lines.emplaceBack(frame.at(corners[side]),
                                      frame.at(corners[(side + 1) % count]));
            }
        }
    }
    painter.setPen(QPen(lineColour, frame.unit, Qt::SolidLine, Qt::FlatCap));
    painter.drawLines(lines);
}
