#include "localmap/frmMapaLocal.h"

#include "localmap/local_generator.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/toolbar.h"
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
    platform::connectToolbar(*ui().Toolbar, [this](const QString& key, bool pressed) {
        platform::runCommand([&] { Toolbar_ButtonClick(key, pressed); });
    });
    // Local maps have no file, no properties and no places.
    for (QAction* const idle : {ui().nuevo, ui().abrir, ui().guardar, ui().propiedades, ui().pines})
        idle->setEnabled(false);
    frmTilesLocales().closed = [this] {
        if (isLoaded())
            ui().tiles->setChecked(false);
    };
    QObject::connect(ui().avisos, &platform::NoticeBar::changed, &window(),
                     [this] { Form_Resize(); });
    platform::runCommand([this] { loadTilesLocales(); });
}

void FrmMapaLocal::loadTilesLocales()
{
    frmTilesLocales().load(colTilesLocales, colMascarasLocales);
}

void FrmMapaLocal::Form_Activate()
{
    if (!hdcBuffer.isNull())
        return;
    crearBuffer(ancho, alto);
    drawMinimap();
    scrollMapa();
}

void FrmMapaLocal::Form_Unload()
{
    static_cast<LocalCanvas&>(*this) = LocalCanvas();
    if (frmTilesLocales().isVisible())
        frmTilesLocales().hide();
    if (frmMinimap().isVisible())
        frmMinimap().dismiss();
}

void FrmMapaLocal::Form_Resize()
{
    Ui::FrmMapaLocal& controls = ui();
    const QRect inner = platform::layOutBars(window(), *controls.avisos, *controls.lblEstado);
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
    drawMinimap();
    scrollMapa();
}

void FrmMapaLocal::Toolbar_ButtonClick(const QString& key, bool pressed)
{
    if (key == "generar"_L1) {
        askToSave();
        generarMapaLocal();
    } else if (key == "minimapa"_L1) {
        pressed ? frmMinimap().serve(forMinimap_) : frmMinimap().hide();
    } else if (key == "tiles"_L1) {
        frmTilesLocales().showAbove(pressed, *ui().imgMapa);
    }
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
        drawMinimap();
        scrollMapa();
    }
    if (!missing.isEmpty())
        platform::MsgBox::show(
            u"Faltan tiles locales, o sus imágenes, en las definiciones: %1."_s.arg(
                missing.join(u", "_s)),
            u"Error"_s, platform::MsgBox::Icon::Critical);
}

void FrmMapaLocal::drawMinimap()
{
    if (!hdcBuffer.isNull())
        frmMinimap().draw(forMinimap_, hdcBuffer, ui().imgMapa->size());
}

void FrmMapaLocal::scrollMapa()
{
    if (hdcBuffer.isNull())
        return;
    platform::PictureBox& view = *ui().imgMapa;
    view.clear();
    view.dc().BitBlt(0, 0, view.width(), view.height(), hdcBuffer, anchoTile * currX,
                     altoTile * currY, platform::RasterOp::SRCCOPY);
    view.refresh();
}
