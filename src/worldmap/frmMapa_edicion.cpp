// What the pointer does on the map window: painting terrain, setting places, choosing cells.

#include "worldmap/frmMapa.h"
#include "worldmap/frmTiles.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_area.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using Gesture = MapTools::Gesture;

/// The pointer is at a pixel of the map's picture.
void FrmMapa::imgMapa_MouseMove(QPoint pixel, Qt::MouseButtons held, Qt::KeyboardModifiers keys)
{
    mouseCell = hex::cellAt(pixel - hex::cellOrigin(currX, currY));
    tools_.isZoomNew = false;
    tools_.pointerInView = ui().imgMapa->seen().contains(pixel);
    const QPoint cell = mapCell();
    ui().lblPosicion->setText(u"X:%1 Y:%2"_s.arg(cell.x()).arg(cell.y()));

    const bool left = held.testFlag(Qt::LeftButton);
    if (left && !std::exchange(tools_.leftHeld, true))
        beginGesture(keys);
    tools_.leftHeld = left;
    // Esc or another change, a step back say, ended the stroke: this drag paints nothing more.
    const bool paints = tools_.gesture == Gesture::Stroke || tools_.gesture == Gesture::Fill;
    if (paints && !documento.isInStroke())
        tools_.gesture = Gesture::Used;
    if (left)
        continueGesture(pixel);
    showTools();
}

void FrmMapa::imgMapa_MouseLeave()
{
    if (ui().imgMapa->cursor()) // which is where the pointer was
        return;
    tools_.pointerInView = false;
    showTools();
}

/// The left button was pressed: what its drag and its release do is settled now.
void FrmMapa::beginGesture(Qt::KeyboardModifiers keys)
{
    const bool canPick = accion == PaintTiles || accion == SetPlaces;
    tools_.pressed = mapCell();
    tools_.revisionAtPress = documento.history().revision();
    tools_.strokeEnd.reset();
    tools_.outcome.clear();
    tools_.gesture = Gesture::Used;
    if (tools_.moving) {
        if (mouseOnMap())
            movePlace(*tools_.moving, tools_.pressed);
    } else if (canPick && (tools_.isPicking || keys.testFlag(Qt::AltModifier))) {
        if (mouseOnMap())
            pickUp(tools_.pressed);
    } else if (tools_.isSelecting) {
        tools_.gesture = Gesture::Select;
        select({});
    } else if (accion == PaintTiles) {
        tools_.gesture = tools_.isFilling ? Gesture::Fill : Gesture::Stroke;
        documento.beginStroke();
    } else {
        tools_.gesture = accion == SetPlaces ? Gesture::Place : Gesture::None;
    }
}

void FrmMapa::continueGesture(QPoint pixel)
{
    if (tools_.gesture == Gesture::Select) {
        const QPoint from = nearestShown(tools_.pressed);
        const QPoint to = nearestShown(mapCell());
        select(QRect(QPoint(std::min(from.x(), to.x()), std::min(from.y(), to.y())),
                     QPoint(std::max(from.x(), to.x()), std::max(from.y(), to.y()))));
    } else if (tools_.gesture == Gesture::Stroke) {
        const QPoint from = tools_.strokeEnd.value_or(pixel);
        tools_.strokeEnd = pixel;
        try {
            dragPaint(from, pixel);
        } catch (...) {
            tools_.gesture = Gesture::None; // the click may try again, the drag doesn't
            throw;
        }
    }
}

/// The click was the first of a double click that goes elsewhere: it isn't to paint or to mark.
void FrmMapa::takeBackClick()
{
    if (accion == PaintTiles && documento.history().revision() != tools_.revisionAtPress)
        documento.undo();
    else if (accion == DrawRoads && QPoint(inicioX, inicioY) == tools_.pressed)
        inicioX = inicioY = -1;
}

/// Paints every cell that holds no place on the way between two pixels of the picture, so that a
/// fast mouse leaves no holes.
void FrmMapa::dragPaint(QPoint from, QPoint to)
{
    const QPoint way = to - from;
    const int steps = std::max({1, std::abs(way.x()), std::abs(way.y())});
    std::vector<QPoint> cells;
    QPoint before(-1, -1);
    for (int step = 0; step <= steps; ++step) {
        const QPoint centre = hex::cellAt(from + way * step / steps);
        if (!isShown(centre - QPoint(currX, currY)) || centre == std::exchange(before, centre))
            continue;
        for (const QPoint cell : cellsAround(mapa(), centre, tools_.brushRadius)) {
            if (!mapa().placeAt(cell) && std::find(cells.begin(), cells.end(), cell) == cells.end())
                cells.push_back(cell);
        }
    }
    if (cells.empty())
        return;
    const QString tile = frmTiles().selectedName();
    selectTile(tile); // fails, with nothing changed, for a tile without a picture
    documento.paint(cells, tile);
}

bool FrmMapa::isShown(QPoint viewCell) const
{
    return viewCell.x() >= 0 && viewCell.y() >= 0 &&
           mapa().contains(viewCell + QPoint(currX, currY));
}

QPoint FrmMapa::nearestShown(QPoint mapCell) const
{
    return {std::clamp(mapCell.x(), currX, std::max(currX, mapa().ancho() - 1)),
            std::clamp(mapCell.y(), currY, std::max(currY, mapa().alto() - 1))};
}

void FrmMapa::imgMapa_Click()
{
    if (!mouseOnMap() || tools_.gesture == Gesture::Used || tools_.gesture == Gesture::Select)
        return;
    const QPoint cell = mapCell();
    if (tools_.gesture == Gesture::Fill) {
        if (cell == tools_.pressed) // it isn't dragged
            fillArea(cell);
    } else if (accion == PaintTiles) {
        paintTile(cell);
    } else if (accion == SetPlaces) {
        const bool isDragged = cell != tools_.pressed && mapa().placeAt(tools_.pressed);
        isDragged ? movePlace(tools_.pressed, cell) : setPlace(cell);
    }
}

void FrmMapa::imgMapa_MouseUp(Qt::MouseButton button)
{
    const bool isFree = tools_.gesture == Gesture::None;
    if (button == Qt::LeftButton) {
        tools_.gesture = Gesture::None;
        documento.endStroke();
    }
    if (accion == DrawRoads && mouseOnMap() && isFree && !tools_.isSelecting)
        markRoadEnd(button);
    else if (accion == SetPlaces && mouseOnMap() && button == Qt::RightButton)
        showPlaceMenu(mapCell());
    showTools();
}

/// Paints the cells under the brush with the tile selected in the palette. Under a place only the
/// document changes.
void FrmMapa::paintTile(QPoint cell)
{
    const QString tile = frmTiles().selectedName();
    selectTile(tile); // fails, with nothing changed, for a tile without a picture
    documento.paint(cellsAround(mapa(), cell, tools_.brushRadius), tile);
}

void FrmMapa::fillArea(QPoint cell)
{
    const QString tile = frmTiles().selectedName();
    selectTile(tile); // fails, with nothing changed, for a tile without a picture
    documento.fill(cell, tile);
}
