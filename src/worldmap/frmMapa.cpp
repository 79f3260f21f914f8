#include "worldmap/frmMapa.h"

#include "catalogue/frmPrinc.h"
#include "platform/forms/application.h"
#include "platform/forms/window_bars.h"
#include "worldmap/frmMinimap.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"
#include "worldmap/hex_map_geometry.h"

using namespace Qt::StringLiterals;

namespace {

// Margins of the window's layout, in pixels.
constexpr int gap = 8;
constexpr int bannerTop = 6;    // below the toolbar
constexpr int framesTop = 48;   // below the toolbar
constexpr int framesSpace = 64; // height that toolbar and frames leave free
constexpr int mapaMargins = 32;
constexpr int lugaresMargins = 24;

} // namespace

FrmMapa& frmMapa()
{
    return platform::FormRegistry::shared<FrmMapa>();
}

FrmMapa::FrmMapa() : MapCanvas(workspace().pictures) {}

void FrmMapa::Form_Load()
{
    followDocument();
    lugares.setColumns({{u"lugar"_s, u"Lugar"_s, 2100},
                        {u"notas"_s, u"Notas"_s, 1050},
                        {u"x"_s, u"X"_s, 700},
                        {u"y"_s, u"Y"_s, 700}});
    ui().lvLugares->setItems(lugares, frmPines().palette.images);
    ui().txtFiltroLugares->filter(*ui().lvLugares);
    loadBanner();
    loadCommands();
    loadPlaceMenus();
    platform::addRoomForBars(window(), *ui().menuBar, *ui().lblEstado);
    connectView();
    loadOverlays();
    loadStart();
    frmTiles().closed = [this] { ui().tiles->trigger(); };
    QObject::connect(ui().lvLugares, &QAbstractItemView::doubleClicked, &window(),
                     [this] { platform::runCommand([this] { lvLugares_DblClick(); }); });
    QObject::connect(ui().avisos, &platform::NoticeBar::changed, &window(),
                     [this] { Form_Resize(); });
    frmPines().closed = [this] { ui().pines->trigger(); };
    watchUnsavedWork();
    // Without its definitions the window can draw nothing, but it comes up and says why.
    platform::runCommand([this] { loadTiles(); });
    platform::runCommand([this] { loadPines(); });
}

void FrmMapa::connectView()
{
    MapView* const view = ui().imgMapa;
    view->setScene({.picture = &hdcBuffer,
                    .geometry =
                        [this] {
                            return std::make_unique<HexMapGeometry>(
                                QSize(mapa().ancho(), mapa().alto()));
                        },
                    .currX = &currX,
                    .currY = &currY,
                    .spoken = [this](QPoint cell) { return spokenCell(cell); },
                    .followsDrag =
                        [this] {
                            return tools_.gesture == MapTools::Gesture::Stroke ||
                                   tools_.gesture == MapTools::Gesture::Select;
                        }});
    view->setFocus(); // so that keys are the tools', not those of a text box
    QObject::connect(view, &MapView::pointed, &window(),
                     [this](QPoint pixel, Qt::MouseButtons held, Qt::KeyboardModifiers keys) {
                         platform::runCommand([&] { imgMapa_MouseMove(pixel, held, keys); });
                     });
    QObject::connect(view, &MapView::moved, &window(),
                     [this] { platform::runCommand([this] { viewMoved(); }); });
    QObject::connect(view, &MapView::mouseLeft, &window(), [this] { imgMapa_MouseLeave(); });
    QObject::connect(view, &MapView::clicked, &window(),
                     [this] { platform::runCommand([this] { imgMapa_Click(); }); });
    QObject::connect(view, &MapView::released, &window(), [this](Qt::MouseButton button) {
        platform::runCommand([&] { imgMapa_MouseUp(button); });
    });
    QObject::connect(view, &MapView::wentThere, &window(),
                     [this] { platform::runCommand([this] { takeBackClick(); }); });
    QObject::connect(view, &MapView::zoomChanged, &window(), [this] {
        tools_.isZoomNew = true;
        (*commands_)[u"mapaEntero"_s].setChecked(ui().imgMapa->viewport().isWhole());
        commands_->update();
        showTools();
    });
}

/// The view was moved by itself: what belongs to the part that it showed follows.
void FrmMapa::viewMoved()
{
    hideLocation();
    drawMinimap();
}

void FrmMapa::loadTiles()
{
    workspace().loadTiles();
    frmTiles().selectFirst();
}

void FrmMapa::loadPines()
{
    workspace().loadPines();
    frmPines().selectFirst();
}

void FrmMapa::Form_Activate()
{
    if (!hdcBuffer.isNull())
        return;
    crearBuffer();
    renderMapa();
    scrollMapa();
    drawMinimap();
}

void FrmMapa::Form_Unload()
{
    frmTiles().hide();
    frmPines().hide();
    frmMinimap().hide();
    hdcBuffer = {};
    workspace().pictures = {};
    platform::endProgram();
}

void FrmMapa::Form_Resize()
{
    Ui::FrmMapa& controls = ui();
    const QRect inner =
        platform::layOutBars(window(), *controls.menuBar, *controls.avisos, *controls.lblEstado);
    const int width = inner.width();

    const int toolbarHeight = controls.Toolbar->sizeHint().height();
    const int toolbarBottom = inner.top() + toolbarHeight;
    controls.Toolbar->setGeometry(0, inner.top(), width, toolbarHeight);
    controls.picScroll->move(controls.picScroll->x(), toolbarBottom + bannerTop);
    layOutBanner();

    const int framesHeight = inner.height() - toolbarHeight - framesSpace;
    const int lugaresWidth = controls.frameLugares->width();
    const int mapaWidth = width - 2 * gap - lugaresWidth;
    controls.frameMapa->setGeometry(0, toolbarBottom + framesTop, mapaWidth, framesHeight);
    controls.frameLugares->setGeometry(mapaWidth + gap, toolbarBottom + framesTop, lugaresWidth,
                                       framesHeight);
    controls.lvLugares->resize(controls.lvLugares->width(), framesHeight - lugaresMargins);
    controls.lblPosicion->resize(mapaWidth - 2 * gap, controls.lblPosicion->height());
    controls.imgMapa->resize(mapaWidth - 2 * gap, framesHeight - mapaMargins);
    controls.frameInicio->standIn(controls.imgMapa->geometry());
    showStart();
    hideLocation();
    controls.imgMapa->showMap();
    drawMinimap();
}

void FrmMapa::drawMinimap()
{
    if (hdcBuffer.isNull())
        return;
    const MapView& view = *ui().imgMapa;
    frmMinimap().draw(forMinimap_, {hdcBuffer, hex::mapSize(mapa().ancho(), mapa().alto()),
                                    view.seenSize(), view.cornerInCell()});
}

void FrmMapa::scrollMapa()
{
    hideLocation();
    ui().imgMapa->showFromCell();
}

void FrmMapa::crearBuffer()
{
    MapCanvas::crearBuffer(mapa().ancho(), mapa().alto());
    ui().imgMapa->clear();
}

void FrmMapa::renderMapa()
{
    MapCanvas::renderMapa(mapa());
}
