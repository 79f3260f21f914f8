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

using namespace Qt::StringLiterals;

void FrmMapa::imgMapa_MouseMove(QPoint position, Qt::MouseButtons held)
{
    mouseCell = hex::cellAt(position);
    const QPoint cell = mapCell();
    const QString place = mouseOnMap() ? mapaPines(cell.y(), cell.x()) : QString();
    ui().imgMapa->setToolTip(place.isEmpty() ? QString() : Place::fromStored(place).name);
    ui().lblPosicion->setText(u"X:%1 Y:%2"_s.arg(cell.x()).arg(cell.y()));

    if (!(held & Qt::LeftButton) || accion != PaintTiles) {
        dragPosition_.reset();
        return;
    }
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
    std::optional<QPoint> last;
    for (int step = 0; step <= steps; ++step) {
        const QPoint viewCell = hex::cellAt(from + way * step / steps);
        if (viewCell == last)
            continue;
        last = viewCell;
        const QPoint cell = viewCell + QPoint(currX, currY);
        if (isShown(viewCell) && mapaPines(cell.y(), cell.x()).isEmpty())
            paintTile(cell);
    }
}

bool FrmMapa::isShown(QPoint viewCell) const
{
    return viewCell.x() >= 0 && viewCell.y() >= 0 &&
           mapaTiles.contains(viewCell.y() + currY, viewCell.x() + currX);
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
    QString& painted = mapaTiles(cell.y(), cell.x());
    if (!mapaPines(cell.y(), cell.x()).isEmpty()) {
        painted = tile;
        return;
    }
    mapaCambiado = true;
    painted = tile;
    redrawCell(*this, cell.x(), cell.y());
    showEdit(cell);
}

/// Asks for the place of a cell and puts it there; an existing one gets a new name and notes.
void FrmMapa::setPlace(QPoint cell)
{
    QString& stored = mapaPines(cell.y(), cell.x());
    const bool isNew = stored.isEmpty();
    Place place = isNew ? Place{frmPines().selectedName(), {}, {}} : Place::fromStored(stored);
    if (isNew)
        selectPin(place.pin);

    FrmInfoPin& dialog = frmInfoPin();
    dialog.ui().txtNombre->setText(place.name);
    dialog.ui().txtInfo->setPlainText(place.notes);
    const QPoint corner = hex::cellOrigin(mouseCell.x(), mouseCell.y());
    dialog.moveTo(ui().imgMapa->mapToGlobal(corner + QPoint(hex::cellWidth, hex::cellHeight)));
    dialog.showModal();
    while (nameIsTaken(dialog.ui().txtNombre->text(), cell)) {
        platform::MsgBox::show(u"Ya hay un lugar con ese nombre."_s, u"Error"_s,
                               platform::MsgBox::Icon::Critical);
        dialog.showModal();
    }
    place.name = dialog.ui().txtNombre->text();
    place.notes = platform::textOf(*dialog.ui().txtInfo);
    if (place.name.isEmpty())
        return;
    stored = place.stored();
    if (isNew) {
        mapaCambiado = true;
        selectPin(place.pin);
        drawTile(hdcBuffer, cell.x(), cell.y()); // over what is there, a road too
        showEdit(cell);
    }
    loadLugares();
}

bool FrmMapa::nameIsTaken(const QString& name, QPoint exceptAt) const
{
    for (int y = 0; y < alto; ++y) {
        for (int x = 0; x < ancho; ++x) {
            if (QPoint(x, y) != exceptAt && !mapaPines(y, x).isEmpty() &&
                Place::fromStored(mapaPines(y, x)).name == name)
                return true;
        }
    }
    return false;
}

/// Brings a cell that was drawn into the back buffer onto the screen and into the minimap.
void FrmMapa::showEdit(QPoint cell)
{
    const QPoint corner = hex::cellOrigin(cell.x(), cell.y());
    const QPoint inView = corner - hex::cellOrigin(currX, currY);
    ui().imgMapa->dc().BitBlt(inView.x(), inView.y(), hex::cellWidth, hex::cellHeight, hdcBuffer,
                              corner.x(), corner.y(), platform::RasterOp::SRCCOPY);
    const QSize cellSize(hex::cellWidth, hex::cellHeight);
    ui().imgMapa->update(QRect(inView, cellSize));
    frmMinimap().redraw(forMinimap_, hdcBuffer, QRect(corner, cellSize));
}
