// Choosing a rectangle of cells on the map window, and carrying it elsewhere by the clipboard.

#include "platform/forms/application.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmTiles.h"
#include "worldmap/map_block.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

void FrmMapa::setSelecting(bool on)
{
    tools_.isSelecting = on;
    tools_.isPicking = false;
    tools_.moving.reset();
    showTools();
}

/// For when another tool is taken in hand. What is selected stays so.
void FrmMapa::stopSelecting()
{
    tools_.isSelecting = false;
    (*commands_)[u"seleccionar"_s].setChecked(false);
}

void FrmMapa::select(const std::optional<QRect>& cells)
{
    if (tools_.selection == cells)
        return;
    tools_.selection = cells;
    commands_->update();
    showTools();
}

void FrmMapa::copySelection()
{
    if (!tools_.selection)
        return;
    const platform::WaitCursor wait;
    QGuiApplication::clipboard()->setText(blockText(cutOut(mapa(), *tools_.selection)));
}

/// What is cut out is left painted with the tile of the palette, without places.
void FrmMapa::cutSelection()
{
    if (!tools_.selection)
        return;
    const QString tile = frmTiles().selectedName();
    selectTile(tile); // fails, with nothing changed, for a tile without a picture
    copySelection();
    documento.clear(*tools_.selection & QRect(0, 0, mapa().ancho(), mapa().alto()), tile);
}

/// Pastes at the pointer or, where that isn't over the map, at the selection or in the view's
/// corner. What was pasted is selected.
void FrmMapa::pasteClipboard()
{
    const platform::WaitCursor wait;
    const WorldMap block = readBlock(QGuiApplication::clipboard()->text(), workspace().pictures);
    QPoint corner(currX, currY);
    if (tools_.pointerInView && mouseOnMap())
        corner = mapCell();
    else if (tools_.selection)
        corner = tools_.selection->topLeft();
    corner.rx() -= corner.x() % 2; // so that odd columns stay odd
    documento.paste(block, corner);
    const QRect pasted =
        contentOf(block).translated(corner) & QRect(0, 0, mapa().ancho(), mapa().alto());
    select(pasted.isEmpty() ? std::nullopt : std::optional(pasted));
}
