#include "mapview/cell_marks.h"

#include <QLineF>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace {

// A light line on a dark one is seen on every terrain.
constexpr QColor darkLine(20, 16, 12, 190);
constexpr QColor lightLine(255, 246, 214);
constexpr int darkWidth = 3;
constexpr int lightWidth = 1;
constexpr int markRadius = 4;
constexpr int markLine = 2;
constexpr QColor cursorColor(255, 214, 10);
constexpr int cursorDark = 5;
constexpr int cursorLight = 2;

bool comesBefore(QPoint a, QPoint b)
{
    return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
}

/// The sides of a cell that lead out of the outlined cells.
void addSides(QList<QLineF>& lines, const MapGeometry& geometry, const MapFrame& frame,
              const CellOutline& outline, QPoint cell)
{
    const QPolygon corners = geometry.corners(cell);
    const auto count = static_cast<int>(corners.size());
    for (int side = 0; side < count; ++side) {
        if (!outline.contains(geometry.across(cell, side)))
            lines.emplaceBack(frame.at(corners[side]), frame.at(corners[(side + 1) % count]));
    }
}

} // namespace

bool CellOutline::contains(QPoint cell) const
{
    return bounds.contains(cell) &&
           (cells.empty() || std::binary_search(cells.begin(), cells.end(), cell, comesBefore));
}

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellOutline& outline)
{
    QList<QLineF> lines;
    const QRect looked = outline.bounds & geometry.cellsIn(frame.part);
    if (!outline.cells.empty()) {
        for (const QPoint cell : outline.cells)
            addSides(lines, geometry, frame, outline, cell);
    } else {
        for (int row = looked.top(); row <= looked.bottom(); ++row) {
            for (int column = looked.left(); column <= looked.right(); ++column)
                addSides(lines, geometry, frame, outline, {column, row});
        }
    }
    painter.setPen(QPen(darkLine, darkWidth * frame.unit, Qt::SolidLine, Qt::RoundCap));
    painter.drawLines(lines);
    painter.setPen(
        QPen(lightLine, lightWidth * frame.unit, outline.isDashed ? Qt::DotLine : Qt::SolidLine));
    painter.drawLines(lines);
}

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellMark& mark)
{
    if (!geometry.cellsIn(frame.part).contains(mark.cell))
        return;
    painter.setPen(QPen(lightLine, markLine * frame.unit));
    painter.setBrush(mark.color);
    const QPointF middle = frame.at(geometry.corners(mark.cell).boundingRect().center());
    const double radius = std::max(markRadius * frame.unit, markRadius * frame.scale);
    painter.drawEllipse(middle, radius, radius);
}

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellCursor& cursor)
{
    QPolygonF outline;
    for (const QPoint corner : geometry.corners(cursor.cell))
        outline.append(frame.at(corner));
    painter.setBrush(Qt::NoBrush);
    for (const auto& [color, width] :
         {std::pair(darkLine, cursorDark), {cursorColor, cursorLight}}) {
        painter.setPen(QPen(color, width * frame.unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolygon(outline);
    }
}
