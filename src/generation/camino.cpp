#include "generation/camino.h"

#include "generation/path_finding.h"
#include "worldmap/hex_geometry.h"

using platform::MemoryDC;

namespace {

constexpr platform::Pen pen{2, qRgb(60, 30, 20)};

} // namespace

void drawCamino(MapPicture& buffer, const QString& route)
{
    QPolygon centres;
    for (const QPoint cell : PathFinding::routeCells(route))
        centres.append(hex::cellCentre(cell.x(), cell.y()));
    if (centres.isEmpty())
        return;
    const QRect covered =
        centres.boundingRect().adjusted(-pen.width, -pen.width, pen.width, pen.width);
    buffer.drawOver(covered, [centres](MemoryDC& dc, QPoint corner) {
        dc.MoveToEx(centres.first() - corner);
        for (const QPoint centre : centres)
            dc.LineTo(centre - corner, pen);
    });
}
