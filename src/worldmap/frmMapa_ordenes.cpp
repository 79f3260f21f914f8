// What the user can have the map window do: the one table behind its toolbar, menus and shortcuts.

#include "app/frmAbout.h"
#include "app/frmManual.h"
#include "app/frmVersiones.h"
#include "catalogue/frmPrinc.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmMinimap.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"
#include "worldmap/map_file.h"

using namespace Qt::StringLiterals;

namespace {

const std::vector<platform::Menu>& menus()
{
    static const std::vector<platform::Menu> all{{u"&Archivo"_s,
                                                  {u"nuevo"_s,
                                                   u"abrir"_s,
                                                   u"guardar"_s,
                                                   u"guardarComo"_s,
                                                   u"versiones"_s,
                                                   {},
                                                   u"exportar"_s,
                                                   u"importar"_s,
                                                   {},
                                                   u"catalogo"_s}},
                                                 {u"&Edición"_s,
                                                  {u"deshacer"_s,
                                                   u"rehacer"_s,
                                                   {},
                                                   u"seleccionar"_s,
                                                   u"copiar"_s,
                                                   u"cortar"_s,
                                                   u"pegar"_s,
                                                   u"copiarImagen"_s,
                                                   {},
                                                   u"buscarLugar"_s,
                                                   u"lugarSiguiente"_s,
                                                   u"lugarAnterior"_s,
                                                   u"editarLugar"_s,
                                                   u"moverLugar"_s,
                                                   u"cambiarPin"_s,
                                                   u"eliminarLugar"_s}},
                                                 {u"&Ver"_s,
                                                  {u"acercar"_s,
                                                   u"alejar"_s,
                                                   u"tamanoNatural"_s,
                                                   u"mapaEntero"_s,
                                                   {},
                                                   u"nombres"_s,
                                                   u"rejilla"_s,
                                                   u"coordenadas"_s,
                                                   u"climaColor"_s,
                                                   u"habitantes"_s,
                                                   u"barraEscala"_s,
                                                   {},
                                                   u"minimapa"_s,
                                                   u"tiles"_s,
                                                   u"pines"_s,
                                                   {},
                                                   u"panelSiguiente"_s}},
                                                 {u"&Mapa"_s,
                                                  {u"generar"_s,
                                                   u"propiedades"_s,
                                                   u"redimensionar"_s,
                                                   {},
                                                   u"rellenar"_s,
                                                   u"pincelMayor"_s,
                                                   u"pincelMenor"_s,
                                                   u"cuentagotas"_s,
                                                   {},
                                                   u"caminos"_s,
                                                   u"clima"_s}},
                                                 {u"A&yuda"_s, {u"manual"_s, u"acercaDe"_s}}};
    return all;
}

} // namespace

std::vector<platform::Command> FrmMapa::commands()
{
    std::vector<platform::Command> all = documentCommands();
    for (std::vector<platform::Command> further :
         {modeCommands(), toolCommands(), placeCommands(), overlayCommands(), exchangeCommands(),
          ui().imgMapa->commands()})
        all.insert(all.end(), std::make_move_iterator(further.begin()),
                   std::make_move_iterator(further.end()));
    return all;
}

std::vector<platform::Command> FrmMapa::documentCommands()
{
    return {
        {.key = u"nuevo"_s,
         .text = u"&Nuevo…"_s,
         .tip = u"Nuevo mapa"_s,
         .shortcuts = {QKeySequence(u"Ctrl+N"_s)},
         .run =
             [this](bool) {
                 askToSave();
                 newFromProperties();
             }},
        {.key = u"abrir"_s,
         .text = u"&Abrir…"_s,
         .tip = u"Abrir mapa"_s,
         .shortcuts = {QKeySequence(u"Ctrl+O"_s)},
         .run =
             [this](bool) {
                 askToSave();
                 openMapa();
             }},
        {.key = u"guardar"_s,
         .text = u"&Guardar"_s,
         .tip = u"Guardar mapa"_s,
         .shortcuts = {QKeySequence(u"Ctrl+S"_s)},
         .run = [this](bool) { saveMapa(); }},
        {.key = u"guardarComo"_s,
         .text = u"Guardar &como…"_s,
         .shortcuts = {QKeySequence(u"Ctrl+Shift+S"_s)},
         .run = [this](bool) { saveAs(); }},
        {.key = u"versiones"_s,
         .text = u"&Versiones anteriores…"_s,
         .run = [this](bool) { frmVersiones().showFor(draftPath(mapa().nombre)); }},
        {.key = u"catalogo"_s,
         .text = u"Abrir ca&tálogo"_s,
         .run = [](bool) { frmPrinc().show(); }},
        {.key = u"deshacer"_s,
         .text = u"&Deshacer"_s,
         .shortcuts = {QKeySequence(u"Ctrl+Z"_s)},
         .run = [this](bool) { documento.undo(); },
         .isPossible = [this] { return documento.canUndo(); },
         .textNow = [this] { return platform::stepText(u"&Deshacer"_s, documento.undoText()); }},
        {.key = u"rehacer"_s,
         .text = u"&Rehacer"_s,
         .shortcuts = {QKeySequence(u"Ctrl+Y"_s), QKeySequence(u"Ctrl+Shift+Z"_s)},
         .run = [this](bool) { documento.redo(); },
         .isPossible = [this] { return documento.canRedo(); },
         .textNow = [this] { return platform::stepText(u"&Rehacer"_s, documento.redoText()); }},
        {.key = u"generar"_s,
         .text = u"&Generar mundo"_s,
         .tip = u"Generar mapa"_s,
         .run =
             [this](bool) {
                 askToSave();
                 generarMapa();
             }},
        {.key = u"propiedades"_s,
         .text = u"&Propiedades…"_s,
         .tip = u"Mostrar propiedades del mapa"_s,
         .run = [this](bool) { editProperties(); }},
        {.key = u"redimensionar"_s,
         .text = u"&Cambiar tamaño…"_s,
         .run = [this](bool) { changeSize(); }},
        {.key = u"clima"_s, .text = u"Mostrar c&lima"_s, .run = [this](bool) { showClima(); }},
        {.key = u"manual"_s,
         .text = u"&Manual"_s,
         .shortcuts = {QKeySequence(Qt::Key_F1)},
         .run = [](bool) { frmManual().showFor(u"frmMapa"_s); }},
        {.key = u"acercaDe"_s,
         .text = u"&Acerca de Kestrune"_s,
         .run = [](bool) { frmAbout().showModal(); }},
    };
}

std::vector<platform::Command> FrmMapa::modeCommands()
{
    return {
        {.key = u"minimapa"_s,
         .text = u"&Minimapa"_s,
         .tip = u"Mostrar minimapa"_s,
         .isTwoState = true,
         .run = [this](bool on) { on ? frmMinimap().serve(forMinimap_) : frmMinimap().hide(); }},
        {.key = u"tiles"_s,
         .text = u"Ventana de &tiles"_s,
         .tip = u"Abrir ventana de tiles"_s,
         .isTwoState = true,
         .run =
             [this](bool on) {
                 setAccion(on ? PaintTiles : NoEditing);
                 frmTiles().showAbove(on, *ui().imgMapa);
             }},
        {.key = u"pines"_s,
         .text = u"Ventana de &pines"_s,
         .tip = u"Abrir ventana de pines"_s,
         .isTwoState = true,
         .run =
             [this](bool on) {
                 setAccion(on ? SetPlaces : NoEditing);
                 frmPines().showAbove(on, *ui().imgMapa, 0.5);
             }},
        {.key = u"caminos"_s,
         .text = u"&Dibujar caminos"_s,
         .tip = u"Dibujar caminos"_s,
         .isTwoState = true,
         .run = [this](bool on) { setAccion(on ? DrawRoads : NoEditing); }},
        {.key = u"panelSiguiente"_s,
         .text = u"Ir al panel &siguiente"_s,
         .shortcuts = {QKeySequence(Qt::Key_F6)},
         .run = [this](bool) { goToNextPane(); }},
    };
}

std::vector<platform::Command> FrmMapa::toolCommands()
{
    const auto isPainting = [this] { return accion == PaintTiles; };
    const auto canPick = [this] { return accion == PaintTiles || accion == SetPlaces; };
    const auto hasSelection = [this] { return tools_.selection.has_value(); };
    return {
        {.key = u"rellenar"_s,
         .text = u"&Rellenar una zona"_s,
         .shortcuts = {QKeySequence(u"G"_s)},
         .isTwoState = true,
         .run =
             [this](bool on) {
                 tools_.isFilling = on;
                 stopSelecting();
                 showTools();
             },
         .isPossible = isPainting},
        {.key = u"pincelMayor"_s,
         .text = u"Pincel &mayor"_s,
         .shortcuts = {QKeySequence(u"]"_s)},
         .run = [this](bool) { changeBrush(1); },
         .isPossible = isPainting},
        {.key = u"pincelMenor"_s,
         .text = u"Pincel me&nor"_s,
         .shortcuts = {QKeySequence(u"["_s)},
         .run = [this](bool) { changeBrush(-1); },
         .isPossible = isPainting},
        {.key = u"cuentagotas"_s,
         .text = u"C&uentagotas"_s,
         .shortcuts = {QKeySequence(u"I"_s)},
         .run = [this](bool) { pickUp(); },
         .isPossible = canPick},
        {.key = u"seleccionar"_s,
         .text = u"&Seleccionar casillas"_s,
         .shortcuts = {QKeySequence(u"S"_s)},
         .isTwoState = true,
         .run = [this](bool on) { setSelecting(on); }},
        {.key = u"copiar"_s,
         .text = u"&Copiar casillas"_s,
         .shortcuts = {QKeySequence(u"Ctrl+C"_s)},
         .run = [this](bool) { copySelection(); },
         .isPossible = hasSelection},
        {.key = u"cortar"_s,
         .text = u"Cor&tar casillas"_s,
         .shortcuts = {QKeySequence(u"Ctrl+X"_s)},
         .run = [this](bool) { cutSelection(); },
         .isPossible = hasSelection},
        {.key = u"pegar"_s,
         .text = u"&Pegar casillas"_s,
         .shortcuts = {QKeySequence(u"Ctrl+V"_s)},
         .run = [this](bool) { pasteClipboard(); }},
    };
}

std::vector<platform::Command> FrmMapa::placeCommands()
{
    return {
        {.key = u"buscarLugar"_s,
         .text = u"&Buscar lugar"_s,
         .shortcuts = {QKeySequence(u"Ctrl+F"_s)},
         .run = [this](bool) { ui().txtFiltroLugares->beginSearch(); }},
        {.key = u"lugarSiguiente"_s,
         .text = u"Lu&gar siguiente"_s,
         .shortcuts = {QKeySequence(u"N"_s)},
         .run = [this](bool) { goToPlace(1); },
         .isPossible = [this] { return !mapa().mapaPines.empty(); }},
        {.key = u"lugarAnterior"_s,
         .text = u"Lugar a&nterior"_s,
         .shortcuts = {QKeySequence(u"Shift+N"_s)},
         .run = [this](bool) { goToPlace(-1); },
         .isPossible = [this] { return !mapa().mapaPines.empty(); }},
        {.key = u"editarLugar"_s,
         .text = u"&Editar el lugar…"_s,
         .shortcuts = {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)},
         .run = [this](bool) { editInHand(); }},
        {.key = u"moverLugar"_s,
         .text = u"&Mover el lugar"_s,
         .run = [this](bool) { moveInHand(); }},
        {.key = u"cambiarPin"_s,
         .text = u"Dar al lugar el p&in elegido"_s,
         .run = [this](bool) { repinInHand(); }},
        {.key = u"eliminarLugar"_s,
         .text = u"E&liminar el lugar"_s,
         .shortcuts = {QKeySequence(Qt::Key_Delete)},
         .run = [this](bool) { removeInHand(); }},
    };
}

void FrmMapa::loadCommands()
{
    commands_.emplace(window(), commands());
    commands_->dress(*ui().Toolbar);
    commands_->fill(*ui().menuBar, menus());
    for (const auto announcement : {&MapDocument::replaced, &MapDocument::propertiesChanged})
        QObject::connect(&documento, announcement, &window(), [this] { commands_->update(); });
    QObject::connect(&documento, &MapDocument::placesChanged, &window(),
                     [this] { commands_->update(); });
    QObject::connect(&documento, &MapDocument::historyChanged, &window(), [this] {
        tools_.outcome.clear();
        commands_->update();
        showTools();
    });
}
