// The document commands of the map window: new, open and save.

#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/text_guard.h"
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
    newMapa(*this);
}

/// Fills an empty map of the size that it says.
void FrmMapa::newMapa(WorldMap empty)
{
    const QString tile = frmTiles().selectedName();
    selectTile(tile); // fails, with nothing changed, for a tile without a picture
    empty.mapaTiles = platform::Grid<QString>(empty.alto, empty.ancho, tile);
    empty.mapaPines = platform::Grid<QString>(empty.alto, empty.ancho);
    empty.mapaCambiado = true;
    showDocument(std::move(empty), {});
}

/// "nuevo": the properties dialog, then a new map of what it says.
void FrmMapa::newFromProperties()
{
    Ui::FrmMapProperties& dialog = frmMapProperties().ui();
    frmMapProperties().offerListedValues();
    dialog.cmbAncho->setEnabled(true);
    dialog.cmbAlto->setEnabled(true);
    frmMapProperties().showModal();
    if (frmMapProperties().cancelado)
        return;

    WorldMap empty;
    empty.ancho = dialog.cmbAncho->currentText().toInt();
    empty.alto = dialog.cmbAlto->currentText().toInt();
    empty.latNorte = dialog.cmbLatitudNorte->currentText().toInt();
    empty.latSur = dialog.cmbLatitudSur->currentText().toInt();
    empty.notasMapa = platform::textOf(*dialog.txtNotas);
    empty.nombre = dialog.txtNombre->text();
    empty.accion = accion;
    newMapa(std::move(empty));
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
    notasMapa = platform::textOf(*dialog.txtNotas);
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
    const platform::TextFile file = platform::readTextFile(list.caminoArchivo);
    WorldMap opened = readDrawableMap(file, *this);
    opened.mapaCambiado = mapaCambiado;
    opened.accion = NoEditing;
    showDocument(std::move(opened), file.known);
    if (const std::optional<QString> problem = mapNameProblem(nombre))
        ui().avisos->tell(QStringList(u"El mapa no se podrá guardar con el nombre que tiene: %1. "
                                      "Cámbielo en sus propiedades."_s.arg(*problem)));
}

/// Makes a whole new document the window's own and draws it, seen from its top left corner.
void FrmMapa::showDocument(WorldMap document, const platform::KnownFile& file)
{
    // A road begun on the old map keeps the ends that lie on the new one.
    document.inicioX = inicioX;
    document.inicioY = inicioY;
    document.finX = finX;
    document.finY = finY;
    if (!document.mapaTiles.contains(inicioY, inicioX))
        document.inicioX = document.inicioY = -1;
    if (!document.mapaTiles.contains(finY, finX))
        document.finX = document.finY = -1;
    document.currX = 0;
    document.currY = 0;
    // What can fail, for want of memory, comes before anything is replaced.
    MapCanvas drawn = *this;
    drawn.crearBuffer(document.ancho, document.alto);
    drawn.renderMapa(document);
    platform::ListItems places;
    list(document, places);

    static_cast<WorldMap&>(*this) = std::move(document);
    archivo_ = file;
    hdcBuffer = std::move(drawn.hdcBuffer);
    showLugares(places);
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
    ui().avisos->tell(saveMapFile(*this, archivo_));
    mapaCambiado = false;
    ui().lblEstado->setText(u"Guardado: «%1»"_s.arg(nombre));
}
