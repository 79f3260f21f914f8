// Editing on the map window: painting terrain and setting places.

#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/text_guard.h"
#include "worldmap/frmInfoPin.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmMinimap.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"
#include "worldmap/hex_geometry.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

void FrmMapa::imgMapa_MouseMove(QPoint position, Qt::MouseButtons held)
{
    mouseCell = hex::cellAt(position);
    const QPoint cell = mapCell();
    const Place* const place = mouseOnMap() ? mapa().placeAt(cell) : nullptr;
    ui().imgMapa->setToolTip(place ? place->name : QString());
    ui().lblPosicion->setText(u"X:%1 Y:%2"_s.arg(cell.x()).arg(cell.y()));

    if (!(held & Qt::LeftButton) || accion != PaintTiles) {
        dragPosition_.reset();
        return;
    }
    if (!dragPosition_)
        documento.beginStroke();
    const QPoint from = dragPosition_.value_or(position);
    dragPosition_ = position;
    try {
        dragPaint(from, position);
    } catch (...) {
        dragPosition_.reset();
        throw;
    }
}

/// Paints every cell that holds no place on the way between two positions in the view, so that a
/// fast mouse leaves no holes.
void FrmMapa::dragPaint(QPoint from, QPoint to)
{
    const QPoint way = to - from;
    const int steps = std::max({1, std::abs(way.x()), std::abs(way.y())});
    std::vector<QPoint> cells;
    for (int step = 0; step <= steps; ++step) {
        const QPoint viewCell = hex::cellAt(from + way * step / steps);
        const QPoint cell = viewCell + QPoint(currX, currY);
        if (isShown(viewCell) && !mapa().placeAt(cell) &&
            std::find(cells.begin(), cells.end(), cell) == cells.end())
            cells.push_back(cell);
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

void FrmMapa::imgMapa_Click()
{
    if (!mouseOnMap())
        return;
    const QPoint cell = mapCell();
    if (accion == PaintTiles)
        paintTile(cell);
    else if (accion == SetPlaces)
        setPlace(cell);
}

/// Paints a cell with the tile selected in the palette. Under a place only the document changes.
void FrmMapa::paintTile(QPoint cell)
{
    const QString tile = frmTiles().selectedName();
    selectTile(tile); // fails, with nothing changed, for a tile without a picture
    documento.paint({&cell, 1}, tile);
}

/// Asks for the place of a cell and puts it there; an existing one gets a new name and notes.
void FrmMapa::setPlace(QPoint cell)
{
    const Place* const there = mapa().placeAt(cell);
    Place place = there ? *there : Place{frmPines().selectedName(), {}, {}};
    selectPin(place.pin); // fails, with nothing changed, for a pin without a picture

    FrmInfoPin& dialog = frmInfoPin();
    dialog.ui().txtNombre->setText(place.name);
    dialog.ui().txtInfo->setPlainText(place.notes);
    const QPoint corner = hex::cellOrigin(mouseCell.x(), mouseCell.y());
    dialog.moveTo(ui().imgMapa->mapToGlobal(corner + QPoint(hex::cellWidth, hex::cellHeight)));
    const auto isTaken = [&](const QString& name) {
        const QPoint* const other = mapa().cellOf(name);
        return other && *other != cell;
    };
    dialog.showModal();
    while (isTaken(dialog.ui().txtNombre->text())) {
        platform::MsgBox::show(u"Ya hay un lugar con ese nombre."_s, u"Error"_s,
                               platform::MsgBox::Icon::Critical);
        dialog.showModal();
    }
    place.name = dialog.ui().txtNombre->text();
    place.notes = platform::textOf(*dialog.ui().txtInfo);
    if (!place.name.isEmpty())
        documento.setPlace(cell, place);
}

/// Draws painted cells. Under a place the new terrain shows when the map is next drawn whole.
void FrmMapa::showTiles(const std::vector<QPoint>& cells)
{
    std::vector<QPoint> drawn;
    std::copy_if(cells.begin(), cells.end(), std::back_inserter(drawn),
                 [this](QPoint cell) { return !mapa().placeAt(cell); });
    redrawCells(mapa(), drawn);
    showEdits(drawn);
}

/// Draws new pins over what is there, a road too; a cell that lost its pin is drawn anew. A place
/// that keeps its pin changes nothing in the picture.
void FrmMapa::showPlaces(const std::vector<MapDocument::PlaceChange>& changes)
{
    std::vector<QPoint> drawn;
    for (const auto& [cell, pinBefore, hasNewTile] : changes) {
        const Place* const place = mapa().placeAt(cell);
        if ((place ? place->pin : QString()) == pinBefore && !hasNewTile)
            continue;
        drawn.push_back(cell);
        if (place && pinBefore.isEmpty() && !hasNewTile) {
            selectPin(place->pin);
            drawTile(hdcBuffer, cell.x(), cell.y());
        } else {
            redrawCells(mapa(), {&cell, 1});
        }
    }
    showEdits(drawn);
    loadLugares();
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
