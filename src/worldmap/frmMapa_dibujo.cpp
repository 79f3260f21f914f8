// What the map window draws when its document changes.

#include "worldmap/frmMapa.h"
#include "worldmap/frmMinimap.h"
#include "worldmap/hex_geometry.h"

/// Draws painted cells. Under a place the new terrain shows when the map is next drawn whole.
void FrmMapa::showTiles(const std::vector<MapChange::Tile>& before)
{
    drawPainted(before);
    std::vector<QPoint> drawn;
    for (const MapChange::Tile& old : before) {
        if (!mapa().placeAt(old.cell))
            drawn.push_back(old.cell);
    }
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
            drawTile(cell.x(), cell.y());
        } else {
            redrawCell(cell);
        }
    }
    showEdits(drawn);
}

/// Brings cells that were drawn into the back buffer onto the screen and into the minimap.
void FrmMapa::showEdits(const std::vector<QPoint>& cells)
{
    constexpr std::size_t few = 64;
    constexpr qint64 largePart = 1'000'000; // of the picture, in pixels: it takes a time to reduce
    std::vector<QRect> parts;
    QRect all;
    for (const QPoint cell : cells) {
        parts.emplace_back(hex::cellOrigin(cell.x(), cell.y()),
                           QSize(hex::cellWidth, hex::cellHeight));
        all |= parts.back();
    }
    if (parts.size() > few && qint64{all.width()} * all.height() > largePart) {
        ui().imgMapa->showMap();
        drawMinimap();
        return;
    }
    if (parts.size() > few)
        parts = {all};
    for (const QRect& part : parts) {
        ui().imgMapa->showPart(part);
        frmMinimap().redraw(forMinimap_, hdcBuffer, part);
    }
}
