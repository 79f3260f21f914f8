#include "localmap/frmMapaLocal.h"

#include "app/frmAbout.h"
#include "app/frmManual.h"
#include "localmap/local_generator.h"
#include "localmap/local_map_geometry.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/twips.h"
#include "platform/forms/window_bars.h"
#include "worldmap/frmMinimap.h"
#include "worldmap/frmTilesLocales.h"

using namespace Qt::StringLiterals;

namespace {

// Margins of the window's layout, in pixels.
constexpr int gap = 8;
constexpr int framesSpace = 64; // height that the frames leave free
constexpr int mapaMargins = 32;
constexpr int lugaresMargins = 24;

} // namespace

FrmMapaLocal& frmMapaLocal()
{
    return platform::FormRegistry::shared<FrmMapaLocal>();
}

void FrmMapaLocal::Form_Load()
{
    static_cast<LocalMap&>(*this) = LocalMap();
    loadCommands();
    connectView();
    platform::addRoomForBars(window(), *ui().menuBar, *ui().lblEstado);
    frmTilesLocales().closed = [this] {
        if (isLoaded())
            ui().tiles->setChecked(false);
    };
    QObject::connect(ui().avisos, &platform::NoticeBar::changed, &window(),
                     [this] { Form_Resize(); });
    platform::runCommand([this] { loadTilesLocales(); });
}

void FrmMapaLocal::connectView()
{
    MapView* const view = ui().imgMapa;
    view->setScene(
        {.picture = &hdcBuffer,
         .geometry = [this] { return std::make_unique<LocalMapGeometry>(QSize(ancho, alto)); },
         .currX = &currX,
         .currY = &currY,
         .spoken = [this](QPoint cell) { return spokenCell(cell); }});
    view->setFocus();
    QObject::connect(view, &MapView::moved, &window(),
                     [this] { platform::runCommand([this] { drawMinimap(); }); });
    QObject::connect(view, &MapView::pointed, &window(), [this] { showState(); });
    QObject::connect(view, &MapView::zoomChanged, &window(), [this] {
        (*commands_)[u"mapaEntero"_s].setChecked(ui().imgMapa->viewport().isWhole());
        commands_->update();
        showState();
    });
}

/// The zoom, the keyboard's cursor and what is under it.
void FrmMapaLocal::showState()
{
    const MapView& view = *ui().imgMapa;
    QStringList state{view.viewport().isNatural() ? QString() : view.zoomText()};
    std::vector<Overlay> overlays;
    if (const std::optional<QPoint> cursor = view.cursor()) {
        state.append(spokenCell(*cursor));
        overlays.emplace_back(CellCursor{*cursor});
    }
    state.removeAll(QString());
    ui().lblEstado->setText(state.join(u"  ·  "_s));
    ui().imgMapa->setOverlays(std::move(overlays));
}

/// What a screen reader says of a cell.
QString FrmMapaLocal::spokenCell(QPoint cell) const
{
    if (!mapaLocal.contains(cell.y(), cell.x()))
        return {};
    const QString& tile = mapaLocal(cell.y(), cell.x());
    const platform::ListItem* const item = workspace().localTiles.items.find(tile);
    return u"Fila %1, columna %2, %3"_s.arg(QString::number(cell.y()), QString::number(cell.x()),
                                            item && !item->text().isEmpty() ? item->text() : tile);
}

void FrmMapaLocal::loadTilesLocales()
{
    workspace().loadTilesLocales();
    frmTilesLocales().selectFirst();
}

void FrmMapaLocal::Form_Activate()
{
    if (!hdcBuffer.isNull())
        return;
    crearBuffer(ancho, alto);
    scrollMapa();
    drawMinimap();
}

void FrmMapaLocal::Form_Unload()
{
    hdcBuffer = {};
    workspace().localPictures = {};
    if (frmTilesLocales().isVisible())
        frmTilesLocales().hide();
    if (frmMinimap().isVisible())
        frmMinimap().dismiss();
}

void FrmMapaLocal::Form_Resize()
{
    Ui::FrmMapaLocal& controls = ui();
    const QRect inner =
        platform::layOutBars(window(), *controls.menuBar, *controls.avisos, *controls.lblEstado);
    controls.Toolbar->setGeometry(0, inner.top(), inner.width(), controls.Toolbar->height());

    // The frames follow the window's size with what the system puts around it.
    const QSize border = window().frameGeometry().size() - window().size();
    const int outerWidth = inner.width() + border.width();
    const int outerHeight = inner.height() + border.height();
    const int mapaWidth = outerWidth - 2 * gap - controls.frameLugares->width();
    const int framesHeight =
        outerHeight - platform::pixelsFromTwips(controls.Toolbar->height()) - framesSpace;
    const int framesTop = inner.top() + controls.Toolbar->height();
    controls.frameMapa->setGeometry(0, framesTop, mapaWidth, framesHeight);
    controls.frameLugares->setGeometry(mapaWidth + gap, framesTop, controls.frameLugares->width(),
                                       framesHeight);
    controls.lvLugares->resize(controls.lvLugares->width(), framesHeight - lugaresMargins);
    controls.imgMapa->resize(mapaWidth - 2 * gap, framesHeight - mapaMargins);
    controls.imgMapa->showMap();
    drawMinimap();
}

/// The one table behind toolbar, menus and shortcuts.
std::vector<platform::Command> FrmMapaLocal::commands()
{
    const auto idle = [](const QString& key, const QString& text, const QString& tip) {
        // Local maps have no file, no properties and no places.
        return platform::Command{.key = key,
                                 .text = text,
                                 .tip = tip,
                                 .run = [](bool) {},
                                 .isPossible = [] { return false; }};
    };
    std::vector<platform::Command> all{
        idle(u"nuevo"_s, u"&Nuevo…"_s, u"Nuevo mapa"_s),
        idle(u"abrir"_s, u"&Abrir…"_s, u"Abrir mapa"_s),
        idle(u"guardar"_s, u"&Guardar"_s, u"Guardar mapa"_s),
        {.key = u"generar"_s,
         .text = u"&Generar mapa"_s,
         .run =
             [this](bool) {
                 askToSave();
                 generarMapaLocal();
             }},
        idle(u"propiedades"_s, u"&Propiedades…"_s, u"Mostrar propiedades del mapa"_s),
        {.key = u"minimapa"_s,
         .text = u"&Minimapa"_s,
         .tip = u"Mostrar minimapa"_s,
         .isTwoState = true,
         .run = [this](bool on) { on ? frmMinimap().serve(forMinimap_) : frmMinimap().hide(); }},
        {.key = u"tiles"_s,
         .text = u"Ventana de &tiles"_s,
         .tip = u"Abrir ventana de tiles"_s,
         .isTwoState = true,
         .run = [this](bool on) { frmTilesLocales().showAbove(on, *ui().imgMapa); }},
        idle(u"pines"_s, u"Ventana de &pines"_s, u"Abrir ventana de pines"_s),
        {.key = u"manual"_s,
         .text = u"&Manual"_s,
         .shortcuts = {QKeySequence(Qt::Key_F1)},
         .run = [](bool) { frmManual().showFor(u"frmMapaLocal"_s); }},
        {.key = u"acercaDe"_s, .text = u"&Acerca de Kestrune"_s, .run = [](bool) {
             frmAbout().showModal();
         }}};
    for (platform::Command& command : ui().imgMapa->commands())
        all.push_back(std::move(command));
    return all;
}

void FrmMapaLocal::loadCommands()
{
    commands_.emplace(window(), commands());
    commands_->dress(*ui().Toolbar);
    commands_->fill(*ui().menuBar, {{u"&Archivo"_s, {u"nuevo"_s, u"abrir"_s, u"guardar"_s}},
                                    {u"&Ver"_s,
                                     {u"acercar"_s,
                                      u"alejar"_s,
                                      u"tamanoNatural"_s,
                                      u"mapaEntero"_s,
                                      {},
                                      u"minimapa"_s,
                                      u"tiles"_s,
                                      u"pines"_s}},
                                    {u"&Mapa"_s, {u"generar"_s, u"propiedades"_s}},
                                    {u"A&yuda"_s, {u"manual"_s, u"acercaDe"_s}}});
}

void FrmMapaLocal::askToSave()
{
    using namespace platform::MsgBox;
    if (mapaCambiado &&
        platform::MsgBox::show(u"El mapa ha cambiado. ¿Desea guardarlo?"_s, u"Advertencia"_s,
                               Icon::Question, Buttons::YesNo) == Answer::Yes)
        marcarSinCambios();
}

void FrmMapaLocal::generarMapaLocal()
{
    QStringList missing;
    {
        const platform::WaitCursor wait;
        ::generarMapaLocal(*this);
        missing = renderMapa(*this);
        ui().imgMapa->showAnew();
        drawMinimap();
    }
    if (!missing.isEmpty())
        platform::MsgBox::show(
            u"Faltan tiles locales, o sus imágenes, en las definiciones: %1."_s.arg(
                missing.join(u", "_s)),
            u"Error"_s, platform::MsgBox::Icon::Critical);
}

void FrmMapaLocal::drawMinimap()
{
    if (hdcBuffer.isNull())
        return;
    const MapView& view = *ui().imgMapa;
    frmMinimap().draw(forMinimap_,
                      {hdcBuffer, hdcBuffer.size(), view.seenSize(), view.cornerInCell()});
}

void FrmMapaLocal::scrollMapa()
{
    ui().imgMapa->showFromCell();
}
