// The document commands of the map window: new, open and save.

#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmMapProperties.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"
#include "worldmap/map_file.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using platform::MsgBox::Icon;

void FrmMapa::newMapa()
{
    const QString tile = frmTiles().selectedName();
    selectTile(tile);

    WorldMap fresh = *this;
    fresh.mapaTiles = platform::Grid<QString>(alto, ancho, tile);
    fresh.mapaPines = platform::Grid<QString>(alto, ancho);
    fresh.mapaCambiado = true;
    showDocument(std::move(fresh));
}

/// "nuevo": the properties dialog, then a new map of what it says.
void FrmMapa::newFromProperties()
{
    Ui::FrmMapProperties& dialog = frmMapProperties().ui();
    dialog.cmbAncho->setEnabled(true);
    dialog.cmbAlto->setEnabled(true);
    frmMapProperties().showModal();
    if (frmMapProperties().cancelado)
        return;

    const QString tile = frmTiles().selectedName();
    selectTile(tile); // both fail before anything is changed
    ancho = dialog.cmbAncho->currentText().toInt();
    alto = dialog.cmbAlto->currentText().toInt();
    latNorte = dialog.cmbLatitudNorte->currentText().toInt();
    latSur = dialog.cmbLatitudSur->currentText().toInt();
    notasMapa = dialog.txtNotas->toPlainText();
    nombre = dialog.txtNombre->text();
    newMapa();
}

/// "propiedades": the properties of the document, whose size stays.
void FrmMapa::editProperties()
{
    Ui::FrmMapProperties& dialog = frmMapProperties().ui();
    dialog.txtNombre->setText(nombre);
    dialog.txtNotas->setPlainText(notasMapa);
    frmMapProperties().setSize(ancho, alto);
    frmMapProperties().setLatitudes(latNorte, latSur);
    dialog.cmbAncho->setEnabled(false);
    dialog.cmbAlto->setEnabled(false);
    frmMapProperties().showModal();
    if (frmMapProperties().cancelado)
        return;
    notasMapa = dialog.txtNotas->toPlainText();
    latNorte = dialog.cmbLatitudNorte->currentText().toInt();
    latSur = dialog.cmbLatitudSur->currentText().toInt();
    setNombre(dialog.txtNombre->text());
}

void FrmMapa::openMapa()
{
    FrmListaArchivos& list = frmListaArchivos();
    list.camino = u"mapas"_s;
    list.mascara = u"*.map"_s;
    list.icono = 1;
    list.caminoArchivo.clear(); // closing the list by its box leaves it as it is
    list.showModal();
    if (list.caminoArchivo.isEmpty())
        return;

    const platform::WaitCursor wait;
    WorldMap opened = readDrawableMap(list.caminoArchivo, *this);
    opened.mapaCambiado = mapaCambiado;
    opened.accion = NoEditing;
    showDocument(std::move(opened));
}

/// Makes a whole new document the window's own and draws it, seen from its top left corner.
void FrmMapa::showDocument(WorldMap document)
{
    // A road begun on the old map ends with it.
    document.inicioX = document.inicioY = document.finX = document.finY = -1;
    // The one step that can fail, for want of memory, comes before anything is replaced.
    MapCanvas::crearBuffer(document.ancho, document.alto);
    static_cast<WorldMap&>(*this) = std::move(document);
    currX = 0;
    currY = 0;
    loadLugares();
    renderMapa();
    drawMinimap();
    scrollMapa();
    setNombre(nombre);
}

/// Asks whether to save a changed document that is about to be replaced. A save that fails throws,
/// so that the document stays.
void FrmMapa::askToSave()
{
    if (mapaCambiado &&
        platform::MsgBox::show(u"El mapa ha cambiado. ¿Desea guardarlo?"_s, u"Advertencia"_s,
                               Icon::Question,
                               platform::MsgBox::Buttons::YesNo) == platform::MsgBox::Answer::Yes)
        saveMapa();
}

void FrmMapa::saveMapa()
{
    if (nombre.isEmpty()) {
        platform::MsgBox::show(u"Debe ingresar un nombre para el mapa"_s, u"Error"_s,
                               Icon::Critical);
        mapaCambiado = false;
        return;
    }
    const platform::WaitCursor wait;
    writeMapFile(*this);
    mapaCambiado = false;
}

void FrmMapa::loadLugares()
{
    lugares.clear();
    for (int y = 0; y < alto; ++y) {
        for (int x = 0; x < ancho; ++x) {
            const QString& cell = mapaPines(y, x);
            if (cell.isEmpty())
                continue;
            const Place place = Place::fromStored(cell);
            platform::ListItem& item = lugares.add(place.name, place.name);
            item.setIcon(frmPines().palette.images.positionOf(place.pin));
            item.setSubItem(u"notas"_s, place.notes);
            item.setSubItem(u"x"_s, QString::number(x));
            item.setSubItem(u"y"_s, QString::number(y));
        }
    }
    lugares.sortAgain();
}
