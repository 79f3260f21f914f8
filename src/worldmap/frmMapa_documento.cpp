// The document commands of the map window: new, open and save.

#include "app/frmManual.h"
#include "app/frmVersiones.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/placement.h"
#include "platform/forms/text_guard.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmMapProperties.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmRedimensionar.h"
#include "worldmap/frmTiles.h"
#include "worldmap/map_file.h"
#include "worldmap/map_resize.h"

#include <QInputDialog>
#include <QLineEdit>
#include <QShortcut>

using namespace Qt::StringLiterals;

using platform::MsgBox::Icon;

namespace {

/// Whether a map can have that name; if not, the user is told why.
bool isPossibleName(const QString& name)
{
    const std::optional<QString> problem = mapNameProblem(name);
    if (problem)
        platform::MsgBox::show(u"El mapa no puede llamarse así: %1."_s.arg(*problem),
                               u"Advertencia"_s, Icon::Warning);
    return !problem;
}

} // namespace

void FrmMapa::followDocument()
{
    // The document has changed already: what fails here is told, and must not reach its history.
    const auto follow = [this](auto announcement, auto handler) {
        QObject::connect(&documento, announcement, &window(), [handler](const auto&... what) {
            platform::runCommand([&] { handler(what...); });
        });
    };
    follow(&MapDocument::replaced, [this] { showReplaced(); });
    follow(&MapDocument::tilesChanged,
           [this](const std::vector<MapChange::Tile>& before) { showTiles(before); });
    follow(&MapDocument::placesChanged, [this](const std::vector<MapDocument::PlaceChange>& changes,
                                               bool isNews) { showPlaces(changes, isNews); });
    follow(&MapDocument::propertiesChanged, [this] { showProperties(); });
}

/// Does what can fail before a map becomes the document.
std::unique_ptr<platform::ListItems> FrmMapa::prepare(const WorldMap& map)
{
    auto places = std::make_unique<platform::ListItems>();
    list(map, *places);
    return places;
}

/// Shows a whole map from its top left corner.
void FrmMapa::showReplaced()
{
    const auto places = prepared_ ? std::move(prepared_) : prepare(mapa());
    // A road begun on the old map keeps the ends that lie on the new one.
    if (!mapa().contains({inicioX, inicioY}))
        inicioX = inicioY = -1;
    if (!mapa().contains({finX, finY}))
        finX = finY = -1;
    tools_.selection.reset();
    tools_.moving.reset();
    currX = 0;
    currY = 0;
    crearBuffer();
    renderMapa();
    showLugares(*places);
    hideLocation();
    ui().imgMapa->showAnew();
    drawMinimap();
    showProperties();
    showStart();
}

void FrmMapa::newMapa(const MapProperties& properties, QSize size)
{
    const QString tile = frmTiles().selectedName();
    selectTile(tile); // fails, with nothing changed, for a tile without a picture
    WorldMap fresh;
    static_cast<MapProperties&>(fresh) = properties;
    fresh.mapaTiles = platform::Grid<QString>(size.height(), size.width(), tile);
    prepared_ = prepare(fresh);
    documento.newMapa(std::move(fresh));
}

/// "nuevo": the properties dialog, then a new map of what it says.
void FrmMapa::newFromProperties()
{
    FrmMapProperties& dialog = frmMapProperties();
    dialog.offerListedValues();
    dialog.allowSize(true);
    dialog.showModal();
    if (!dialog.cancelado)
        newMapa(dialog.properties(), dialog.mapSize());
}

/// "propiedades": the properties of the document, whose size stays.
void FrmMapa::editProperties()
{
    FrmMapProperties& dialog = frmMapProperties();
    dialog.fill(mapa(), {mapa().ancho(), mapa().alto()});
    dialog.allowSize(false);
    dialog.showModal();
    if (!dialog.cancelado)
        documento.setProperties(dialog.properties());
}

/// "redimensionar": a map of another size. The view shows the cells that it showed, as far as they
/// are still there.
void FrmMapa::changeSize()
{
    const auto answer = frmRedimensionar().ask(mapa(), frmTiles().chosen());
    if (!answer)
        return;
    const platform::WaitCursor wait;
    MapChange change;
    change.whole = resized(mapa(), answer->added, answer->tile);
    if (*change.whole == mapa())
        return;
    prepared_ = prepare(*change.whole);
    const QPoint first(currX + answer->added.left(), currY + answer->added.top());
    documento.change(std::move(change), u"cambiar el tamaño"_s);
    scrollTo(first);
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
    WorldMap opened = readDrawableMap(file, workspace().pictures);
    prepared_ = prepare(opened);
    setAccion(NoEditing);
    documento.openMapa(std::move(opened), file.known);
    if (const std::optional<QString> problem = mapNameProblem(mapa().nombre))
        ui().avisos->tell(QStringList(u"El mapa no se podrá guardar con el nombre que tiene: %1. "
                                      "Cámbielo en sus propiedades."_s.arg(*problem)));
}

bool FrmMapa::bringBack(const QString& version, const QString& step)
{
    const platform::WaitCursor wait;
    WorldMap map = readDrawableMap(platform::readTextFile(version), workspace().pictures);
    if (map == mapa())
        return false;
    prepared_ = prepare(map);
    setAccion(NoEditing);
    return documento.bringBack(std::move(map), step);
}

/// Asks whether to save a changed document that is about to be replaced. A save that fails throws,
/// so that the document stays.
void FrmMapa::askToSave()
{
    if (documento.mapaCambiado() &&
        platform::MsgBox::show(u"El mapa ha cambiado. ¿Desea guardarlo?"_s, u"Advertencia"_s,
                               Icon::Question,
                               platform::MsgBox::Buttons::YesNo) == platform::MsgBox::Answer::Yes)
        saveMapa();
}

void FrmMapa::saveMapa()
{
    if (mapa().nombre.isEmpty()) {
        platform::MsgBox::show(u"Debe ingresar un nombre para el mapa"_s, u"Error"_s,
                               Icon::Critical);
        documento.giveUpSaving();
        return;
    }
    const platform::WaitCursor wait;
    const platform::Saved saved = documento.saveMapa();
    ui().avisos->tell(saved.notices);
    if (saved.other)
        tellOfOther(*ui().avisos, *saved.other);
    ui().lblEstado->setText(u"Guardado: «%1»"_s.arg(mapa().nombre));
}

/// "guardarComo": asks for another name and saves under it. The file of the old name stays.
void FrmMapa::saveAs()
{
    QString name = mapa().nombre;
    do {
        QInputDialog dialog(&window());
        dialog.setObjectName(u"frmGuardarComo"_s);
        dialog.setWindowTitle(u"Guardar como"_s);
        dialog.setLabelText(u"Nombre del mapa:"_s);
        dialog.setTextValue(name);
        dialog.setOkButtonText(u"Aceptar"_s);
        dialog.setCancelButtonText(u"Cancelar"_s);
        if (auto* const box = dialog.findChild<QLineEdit*>()) {
            box->setObjectName(u"txtNombre"_s);
            platform::guardText(*box);
        }
        const QShortcut help(QKeySequence(Qt::Key_F1), &dialog);
        QObject::connect(&help, &QShortcut::activated, &dialog,
                         [&] { frmManual().showFor(dialog.objectName()); });
        platform::putAboveActiveWindow(dialog);
        if (dialog.exec() != QDialog::Accepted)
            return;
        name = dialog.textValue();
    } while (!isPossibleName(name));

    const QString before = mapa().nombre;
    documento.rename(name);
    try {
        saveMapa();
    } catch (...) {
        documento.rename(before);
        throw;
    }
}
