// The tools of the map window beside its modes: brush, fill, eyedropper; and what shows which tool
// it is: status line, pointer, and outlines over the view.

#include "worldmap/frmMapa.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"
#include "worldmap/map_area.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QColor roadStartColor(46, 125, 50);
constexpr QColor roadEndColor(198, 40, 40);

constexpr ToolPointer arrow{Qt::ArrowCursor};
constexpr ToolPointer movePointer{Qt::DragMoveCursor};
constexpr ToolPointer openHand{Qt::OpenHandCursor};
constexpr ToolPointer closedHand{Qt::ClosedHandCursor};
constexpr ToolPointer brush{Qt::BitmapCursor, "pincel", {1, 22}};
constexpr ToolPointer bucket{Qt::BitmapCursor, "relleno", {5, 22}};
constexpr ToolPointer dropper{Qt::BitmapCursor, "cuentagotas", {1, 22}};
constexpr ToolPointer crossHair{Qt::BitmapCursor, "seleccion", {8, 8}};
constexpr ToolPointer pin{Qt::BitmapCursor, "lugar", {11, 22}};
constexpr ToolPointer signpost{Qt::BitmapCursor, "camino", {11, 22}};

QCursor cursorOf(const ToolPointer& pointer, double screenScale)
{
    if (!pointer.picture)
        return pointer.shape;
    const QImage picture(u":/pictures/puntero_%1.gif"_s.arg(QLatin1String(pointer.picture)));
    return platform::pixelCursor(picture, pointer.hotSpot, screenScale);
}

/// A definition as people know it: what its notes say, and its name.
QString spoken(const Palette& palette, const QString& name)
{
    const platform::ListItem* const item = palette.items.find(name);
    const bool saysMore = item && !item->text().isEmpty() && item->text() != name;
    return saysMore ? u"%1 (%2)"_s.arg(item->text(), name) : name;
}

} // namespace

void FrmMapa::setAccion(Accion mode)
{
    accion = mode;
    if (mode != NoEditing)
        stopSelecting();
    tools_.isPicking = false;
    tools_.moving.reset();
    tools_.outcome.clear();
    commands_->update();
    showTools();
}

bool FrmMapa::Form_KeyDown(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Escape && event.modifiers() == Qt::NoModifier && leaveTool();
}

/// Takes one thing back at a time: what waits for a click, the selection, the tool, the mode.
/// Returns whether there was one.
bool FrmMapa::leaveTool()
{
    documento.endStroke();
    if (tools_.moving || tools_.isPicking) {
        tools_.moving.reset();
        tools_.isPicking = false;
    } else if (tools_.selection) {
        select({});
    } else if (tools_.isSelecting) {
        (*commands_)[u"seleccionar"_s].trigger();
    } else if (accion != NoEditing) {
        const QString key = accion == PaintTiles  ? u"tiles"_s
                            : accion == SetPlaces ? u"pines"_s
                                                  : u"caminos"_s;
        if (QAction& button = (*commands_)[key]; button.isChecked())
            button.trigger();
        setAccion(NoEditing);
    } else {
        return false;
    }
    showTools();
    return true;
}

void FrmMapa::goToMap()
{
    window().activateWindow();
    ui().imgMapa->setFocus(Qt::ShortcutFocusReason);
}

/// Hands the keyboard on: from the map to the list of places, the palettes that are open, and back.
void FrmMapa::goToNextPane()
{
    QList<QWidget*> panes{ui().imgMapa, ui().lvLugares};
    if (frmTiles().isVisible())
        panes.append(frmTiles().ui().lvTiles);
    if (frmPines().isVisible())
        panes.append(frmPines().ui().lvPines);
    QWidget* const next = panes.at((panes.indexOf(QApplication::focusWidget()) + 1) % panes.size());
    next->window()->activateWindow();
    next->setFocus(Qt::ShortcutFocusReason);
}

void FrmMapa::changeBrush(int by)
{
    tools_.brushRadius = std::clamp(tools_.brushRadius + by, 0, MapTools::largestBrush);
    showTools();
}

/// Chooses what is under the pointer or, where that isn't over the map, what the next click meets.
void FrmMapa::pickUp()
{
    tools_.moving.reset();
    if (tools_.pointerInView && mouseOnMap())
        pickUp(mapCell());
    else
        tools_.isPicking = true;
    showTools();
}

/// Chooses a cell's tile, or in place mode its place's pin, in the palette.
void FrmMapa::pickUp(QPoint cell)
{
    tools_.isPicking = false;
    if (accion == PaintTiles)
        frmTiles().choose(mapa().tileAt(cell));
    else if (const Place* const place = mapa().placeAt(cell))
        frmPines().choose(place->pin);
}

std::vector<Overlay> FrmMapa::overlays()
{
    std::vector<Overlay> all = mapOverlays_;
    const auto outline = [&](const std::vector<QPoint>& cells) {
        QRect bounds;
        for (const QPoint cell : cells)
            bounds |= QRect(cell, QSize(1, 1));
        all.emplace_back(CellOutline{bounds, cells});
    };
    if (tools_.selection)
        all.emplace_back(CellOutline{*tools_.selection, {}, true});
    if (inicioX != -1)
        all.emplace_back(CellMark{{inicioX, inicioY}, roadStartColor});
    if (finX != -1)
        all.emplace_back(CellMark{{finX, finY}, roadEndColor});
    const bool isPointed = tools_.pointerInView && mouseOnMap();
    const bool isBrush = accion == PaintTiles && !tools_.isFilling && !tools_.isSelecting;
    const bool isMoving = tools_.gesture == MapTools::Gesture::Place &&
                          mapa().placeAt(tools_.pressed) && mapCell() != tools_.pressed;
    if (isPointed && isBrush && !tools_.isPicking)
        outline(cellsAround(mapa(), mapCell(), tools_.brushRadius));
    else if (isPointed && (tools_.moving || isMoving))
        outline({mapCell()});
    if (const std::optional<QPoint> cursor = ui().imgMapa->cursor())
        all.emplace_back(CellCursor{*cursor});
    return all;
}

void FrmMapa::loadStart()
{
    ui().frameInicio->offer(u"Aún no hay ningún mapa.\n¿Por dónde quiere empezar?"_s,
                            {{u"cmdNuevo"_s, u"&Nuevo"_s, ui().nuevo},
                             {u"cmdAbrir"_s, u"A&brir"_s, ui().abrir},
                             {u"cmdGenerar"_s, u"&Generar"_s, ui().generar}},
                            *ui().imgMapa);
}

/// What can be done to have a map, as long as there is none and nothing is being done on it.
void FrmMapa::showStart()
{
    QWidget& panel = *ui().frameInicio;
    const bool isWanted = accion == NoEditing && !tools_.isSelecting && documento.isStartingGrid();
    if (isWanted != panel.isHidden())
        return;
    if (panel.isAncestorOf(window().focusWidget())) // or a list would get the tools' keys
        ui().imgMapa->setFocus();
    panel.setVisible(isWanted);
}

void FrmMapa::showTools()
{
    showStart();
    const Place* const place = mouseOnMap() ? mapa().placeAt(mapCell()) : nullptr;
    ui().imgMapa->setToolTip(place ? place->name : QString());
    const MapView& view = *ui().imgMapa;
    const bool isZoomTold = tools_.isZoomNew || !view.viewport().isNatural();
    QStringList state{clickText(), cellText(), capas_.statusText(tools_.selection),
                      isZoomTold ? view.zoomText() : QString()};
    state.removeAll(QString());
    ui().lblEstado->setText(state.join(u"  ·  "_s));
    if (const ToolPointer& pointer = toolPointer(); tools_.pointer != &pointer) {
        tools_.pointer = &pointer;
        ui().imgMapa->setCursor(cursorOf(pointer, ui().imgMapa->devicePixelRatioF()));
    }
    ui().imgMapa->setOverlays(overlays());
}

/// What a click does now, or what came of the last one, in a few words.
QString FrmMapa::clickText()
{
    if (!tools_.outcome.isEmpty())
        return tools_.outcome;
    if (tools_.moving) {
        const Place* const place = mapa().placeAt(*tools_.moving);
        return u"Pulse la casilla libre para «%1»"_s.arg(place ? place->name : QString());
    }
    if (tools_.isPicking)
        return accion == PaintTiles ? u"Pulse una casilla para elegir su tile"_s
                                    : u"Pulse un lugar para elegir su pin"_s;
    if (tools_.isSelecting)
        return tools_.selection ? u"%1 × %2 casillas seleccionadas"_s.arg(tools_.selection->width())
                                      .arg(tools_.selection->height())
                                : u"Arrastre para seleccionar casillas"_s;
    if (accion == PaintTiles && tools_.isFilling)
        return u"Rellenar con "_s + spoken(workspace().tiles, frmTiles().chosen());
    if (accion == PaintTiles)
        return u"Pintar "_s + spoken(workspace().tiles, frmTiles().chosen()) +
               (tools_.brushRadius > 0 ? u", radio %1"_s.arg(tools_.brushRadius) : QString());
    if (accion == SetPlaces) {
        const Place* const place = mouseOnMap() ? mapa().placeAt(mapCell()) : nullptr;
        return place ? u"Editar «%1» o arrastrarlo"_s.arg(place->name)
                     : u"Poner un lugar: "_s + spoken(workspace().pins, frmPines().chosen());
    }
    if (accion != DrawRoads)
        return {};
    if (inicioX != -1)
        return u"Elija el final (botón derecho)"_s;
    return finX != -1 ? u"Elija el comienzo (botón izquierdo)"_s
                      : u"Elija el comienzo (botón izquierdo) y el final (botón derecho)"_s;
}

/// The cell under the pointer, its terrain and its place.
QString FrmMapa::cellText() const
{
    if (!tools_.pointerInView || !mouseOnMap())
        return {};
    const QPoint cell = mapCell();
    return u"X:%1 Y:%2"_s.arg(cell.x()).arg(cell.y()) + described(cell);
}

QString FrmMapa::described(QPoint cell) const
{
    QString text;
    if (!mapa().tileAt(cell).isEmpty())
        text += u"  "_s + spoken(workspace().tiles, mapa().tileAt(cell));
    if (const Place* const place = mapa().placeAt(cell))
        text += u"  «%1»"_s.arg(place->name);
    return text;
}

/// What a screen reader says of a cell.
QString FrmMapa::spokenCell(QPoint cell) const
{
    if (!mapa().contains(cell))
        return {};
    const QString tile = mapa().tileAt(cell);
    const Place* const place = mapa().placeAt(cell);
    return u"Fila %1, columna %2, "_s.arg(cell.y()).arg(cell.x()) +
           (tile.isEmpty() ? u"vacía"_s : spoken(workspace().tiles, tile)) +
           (place ? u", lugar: %1"_s.arg(place->name) : QString());
}

const ToolPointer& FrmMapa::toolPointer() const
{
    if (tools_.moving)
        return movePointer;
    if (tools_.gesture == MapTools::Gesture::Place && mapa().placeAt(tools_.pressed))
        return closedHand;
    if (tools_.isPicking)
        return dropper;
    if (tools_.isSelecting)
        return crossHair;
    if (accion == PaintTiles)
        return tools_.isFilling ? bucket : brush;
    if (accion == DrawRoads)
        return signpost;
    if (accion != SetPlaces)
        return arrow;
    return mouseOnMap() && mapa().placeAt(mapCell()) ? openHand : pin;
}
