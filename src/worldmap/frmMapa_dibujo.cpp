// What the map window draws when its document changes.

#include "worldmap/frmMapa.h"
#include "worldmap/frmMinimap.h"
#include "worldmap/hex_geometry.h"

#include <algorithm>
#include <iterator>

/// Draws painted cells. Under a place the new terrain shows when the map is next drawn whole.
void FrmMapa::showTiles(const std::vector<QPoint>& cells)
{
    std::vector<QPoint> drawn;
    std::copy_if(cells.begin(), cells.end(), std::back_inserter(drawn),
                 [this](QPoint cell) { return !mapa().placeAt(cell); });
    redrawCells(mapa(), drawn);
    showEdits(drawn);
}

/// Draws new pins over what is there, a road too; a cell that lost its pin, or is as it was before,
/// is drawn anew. A place that keeps its pin changes nothing in the picture.
void FrmMapa::showPlaces(const std::vector<MapDocument::PlaceChange>& changes, bool isNews)
{
    loadLugares();
    if (isLocationStale())
        hideLocation();
    std::vector<QPoint> drawn;
    for (const auto& [cell, pinBefore, hasNewTile] : changes) {
        const Place* const place = mapa().placeAt(cell);
        if ((place ? place->pin : QString()) == pinBefore && !hasNewTile)
            continue;
        drawn.push_back(cell);
        if (isNews && place && pinBefore.isEmpty() && !hasNewTile) {
            selectPin(place->pin);
            drawTile(hdcBuffer, cell.x(), cell.y());
        } else {
            redrawCells(mapa(), {&cell, 1});
        }
    }
    showEdits(drawn);
}

/// Brings cells that were drawn into the back buffer onto the screen and into the minimap.
void FrmMapa::showEdits(const std::vector<QPoint>& cells)
{
    constexpr std::size_t few = 64;
    if (cells.size() > few) {
        drawMinimap();
        copyView();
        return;
    }
    const QSize cellSize(hex::cellWidth, hex::cellHeight);
    for (const QPoint cell : cells) {
        const QPoint corner = hex::cellOrigin(cell.x(), cell.y());
        const QPoint inView = corner - hex::cellOrigin(currX, currY);
        ui().imgMapa->dc().BitBlt(inView.x(), inView.y(), hex::cellWidth, hex::cellHeight,
                                  hdcBuffer, corner.x(), corner.y(), platform::RasterOp::SRCCOPY);
        ui().imgMapa->update(QRect(inView, cellSize));
        frmMinimap().redraw(forMinimap_, hdcBuffer, QRect(corner, cellSize));
    }
}
