// The document commands of the map window: new, open and save.

#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "worldmap/frmListaArchivos.h"
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
    WorldMap opened = readMapFile(
        list.caminoArchivo, [this](const QString& name) { return colTiles.contains(name); },
        [this](const QString& name) { return colPines.contains(name); });
    opened.mapaCambiado = mapaCambiado;
    opened.accion = NoEditing;
    showDocument(std::move(opened));
}

/// Makes a whole new document the window's own and draws it, seen from its top left corner.
void FrmMapa::showDocument(WorldMap document)
{
    // The one step that can fail, for want of memory, comes before anything is replaced.
    MapCanvas::crearBuffer(document.ancho, document.alto);
    static_cast<WorldMap&>(*this) = std::move(document);
    currX = 0;
    currY = 0;
    loadLugares();
    renderMapa();
    scrollMapa();
    setNombre(nombre);
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
