#include "mapview/overlay.h"

#include <QLine>
#include <QPainter>
#include <algorithm>

namespace {

// A light line on a dark one is seen on every terrain.
constexpr QColor darkLine(20, 16, 12, 190);
constexpr QColor lightLine(255, 246, 214);
constexpr int darkWidth = 3;
constexpr int markRadius = 4;

bool comesBefore(QPoint a, QPoint b)
{
    return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
}

/// The sides of a cell that lead out of the outlined cells.
void addSides(QList<QLine>& lines, const MapGeometry& geometry, const CellOutline& outline,
              QPoint cell)
{
    const QPolygon corners = geometry.corners(cell);
    const auto count = static_cast<int>(corners.size());
    for (int side = 0; side < count; ++side) {
        if (!outline.contains(geometry.across(cell, side)))
            lines.emplaceBack(corners[side], corners[(side + 1) % count]);
    }
}

void draw(QPainter& painter, const MapGeometry& geometry, const QRect& visibleCells,
          const CellOutline& outline)
{
    QList<QLine> lines;
    const QRect looked = outline.bounds & visibleCells;
    if (!outline.cells.empty()) {
        for (const QPoint cell : outline.cells)
            addSides(lines, geometry, outline, cell);
    } else {
        for (int row = looked.top(); row <= looked.bottom(); ++row) {
            for (int column = looked.left(); column <= looked.right(); ++column)
                addSides(lines, geometry, outline, {column, row});
        }
    }
    painter.setPen(QPen(darkLine, darkWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawLines(lines);
    painter.setPen(QPen(lightLine, 1, outline.isDashed ? Qt::DotLine : Qt::SolidLine));
    painter.drawLines(lines);
}

void draw(QPainter& painter, const MapGeometry& geometry, const QRect& visibleCells,
          const CellMark& mark)
{
    if (!visibleCells.contains(mark.cell))
        return;
    painter.setPen(QPen(lightLine, 2));
    painter.setBrush(mark.color);
    painter.drawEllipse(geometry.corners(mark.cell).boundingRect().center(), markRadius,
                        markRadius);
}

} // namespace

bool CellOutline::contains(QPoint cell) const
{
    return bounds.contains(cell) &&
           (cells.empty() || std::binary_search(cells.begin(), cells.end(), cell, comesBefore));
}

void drawOverlay(QPainter& painter, const MapGeometry& geometry, const QRect& visibleCells,
                 const Overlay& overlay)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    std::visit([&](const auto& value) { draw(painter, geometry, visibleCells, value); }, overlay);
    painter.restore();
}
