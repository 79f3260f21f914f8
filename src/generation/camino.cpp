#include "generation/camino.h"

#include "generation/path_finding.h"
#include "worldmap/hex_geometry.h"

void drawCamino(platform::MemoryDC& buffer, const QString& route)
{
    constexpr platform::Pen pen{2, qRgb(60, 30, 20)};
    const std::vector<QPoint> cells = PathFinding::routeCells(route);
    if (cells.empty())
        return;
    buffer.MoveToEx(hex::cellCentre(cells.front().x(), cells.front().y()));
    for (const QPoint cell : cells)
        buffer.LineTo(hex::cellCentre(cell.x(), cell.y()), pen);
}
