// What the map window does with places: setting and editing them, moving, removing, changing pins.

#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/text_guard.h"
#include "worldmap/frmInfoPin.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"

#include <QKeyEvent>
#include <QMenu>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QStringList placeKeys{u"editarLugar"_s, u"moverLugar"_s, u"cambiarPin"_s, u"eliminarLugar"_s};

} // namespace

/// Asks for the place of a cell that can be seen and puts it there.
void FrmMapa::setPlace(QPoint cell)
{
    const QRect inView = ui().imgMapa->cellInWidget(cell);
    const QPoint beside = inView.topLeft() + QPoint(inView.width(), inView.height());
    editPlace(cell, ui().imgMapa->mapToGlobal(beside));
}

/// Asks for the place of a cell; one that is there gets a new name and notes.
void FrmMapa::editPlace(QPoint cell, QPoint dialogPosition)
{
    const Place* const there = mapa().placeAt(cell);
    Place place = there ? *there : Place{frmPines().selectedName(), {}, {}};
    selectPin(place.pin); // fails, with nothing changed, for a pin without a picture

    FrmInfoPin& dialog = frmInfoPin();
    dialog.ui().txtNombre->setText(place.name);
    dialog.ui().txtInfo->setPlainText(place.notes);
    dialog.moveTo(dialogPosition);
    const auto isTaken = [&](const QString& name) {
        const QPoint* const other = mapa().cellOf(name);
        return other && *other != cell;
    };
    dialog.showModal();
    while (isTaken(dialog.ui().txtNombre->text())) {
        platform::MsgBox::show(u"Ya hay un lugar con ese nombre."_s, u"Error"_s,
                               platform::MsgBox::Icon::Critical);
        dialog.showModal();
    }
    place.name = dialog.ui().txtNombre->text();
    place.notes = platform::textOf(*dialog.ui().txtInfo);
    if (!place.name.isEmpty())
        documento.setPlace(cell, place);
}

/// The place that commands are for: the one selected in the list, if that has the focus; else, with
/// the pointer over the view, the one under it in place mode and none in the others; else the one
/// selected. One that the filter hides isn't meant. Where there is none, the status line asks for
/// one.
std::optional<QPoint> FrmMapa::placeInHand()
{
    tools_.outcome.clear();
    platform::ListView& list = *ui().lvLugares;
    const platform::ListItem* const selected = list.selectedItem();
    const bool isInList = selected && list.isShown(*selected);
    if (isInList && (list.hasFocus() || !tools_.pointerInView))
        return cellOf(*selected);
    if (accion == SetPlaces && tools_.pointerInView && mouseOnMap() && mapa().placeAt(mapCell()))
        return mapCell();
    tools_.outcome = u"Elija antes un lugar en la lista"_s;
    showTools();
    return std::nullopt;
}

/// Takes the keyboard's cursor to the next place, row by row, or to the one before; round and
/// round.
void FrmMapa::goToPlace(int way)
{
    const Places& places = mapa().mapaPines;
    if (places.empty())
        return;
    MapView& view = *ui().imgMapa;
    const QPoint from = view.spokenCell();
    auto next = way > 0 ? places.upper_bound(from) : places.lower_bound(from);
    if (way < 0)
        next = std::prev(next == places.begin() ? places.end() : next);
    else if (next == places.end())
        next = places.begin();
    window().activateWindow();
    view.setFocus();
    view.setCursorCell(next->first);
}

void FrmMapa::editInHand()
{
    if (const std::optional<QPoint> cell = placeInHand()) {
        const QWidget& list = *ui().lvLugares;
        editPlace(*cell, list.mapToGlobal(QPoint(0, list.height() / 2)));
    }
}

/// In the list the next place is selected then, so that keys can remove one after the other.
void FrmMapa::removeInHand()
{
    const std::optional<QPoint> cell = placeInHand();
    if (!cell)
        return;
    const QString name = mapa().placeAt(*cell)->name;
    platform::ListView& list = *ui().lvLugares;
    QString next; // a name, as the list's order may be another one afterwards
    if (list.hasFocus()) {
        const int beside = list.shownBeside(lugares.positionOf(*lugares.find(name)));
        next = beside == -1 ? QString() : lugares.at(beside).key();
    }
    documento.removePlace(*cell);
    if (const platform::ListItem* const item = lugares.find(next))
        list.select(*item);
    tools_.outcome = u"Eliminado «%1»"_s.arg(name);
    showTools();
}

/// The next click says where to.
void FrmMapa::moveInHand()
{
    tools_.isPicking = false;
    tools_.moving = placeInHand();
    showTools();
}

void FrmMapa::movePlace(QPoint from, QPoint to)
{
    if (!mapa().placeAt(from) || from == to) { // it is gone by now, or stays
        tools_.moving.reset();
    } else if (mapa().placeAt(to)) {
        tools_.outcome = u"Allí ya hay un lugar, «%1»"_s.arg(mapa().placeAt(to)->name);
    } else {
        tools_.moving.reset();
        documento.movePlace(from, to);
    }
}

/// Gives the place the pin that is selected in the palette.
void FrmMapa::repinInHand()
{
    const std::optional<QPoint> cell = placeInHand();
    if (!cell)
        return;
    const QString pin = frmPines().selectedName();
    selectPin(pin); // fails, with nothing changed, for a pin without a picture
    documento.setPin(*cell, pin);
}

/// The menu of the place of a cell, which is selected in the list, so that the commands are for it.
void FrmMapa::showPlaceMenu(QPoint cell)
{
    const Place* const place = mapa().placeAt(cell);
    const platform::ListItem* const item = place ? lugares.find(place->name) : nullptr;
    if (!item)
        return;
    ui().lvLugares->select(*item);
    tools_.pointerInView = false; // the menu has the pointer now
    auto* const menu = new QMenu(&window());
    menu->setObjectName(u"menuLugar"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const QString& key : placeKeys)
        menu->addAction(&(*commands_)[key]);
    const MapView& view = *ui().imgMapa;
    menu->popup(view.cursor() ? view.mapToGlobal(view.cellInWidget(cell).bottomRight())
                              : QCursor::pos());
}

/// What works in the palettes and in the minimap, too. The keys of places are the lists' there.
QList<QAction*> FrmMapa::actionsElsewhere()
{
    QList<QAction*> actions = window().actions();
    actions.removeIf([](const QAction* action) {
        return placeKeys.contains(action->objectName()) || action->objectName() == u"buscarLugar"_s;
    });
    return actions;
}

/// A key that had no use in a palette or in the minimap, which a click there makes the active
/// window. While places are set and the pointer is over the map, those of places are for the one
/// there.
bool FrmMapa::useKeyFromElsewhere(const QKeyEvent& key)
{
    if (Form_KeyDown(key))
        return true;
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (accion != SetPlaces || !tools_.pointerInView) {
        if (isEnter) // what was chosen is to be used now
            goToMap();
        return isEnter;
    }
    const QKeyCombination keys(key.modifiers() & ~Qt::KeypadModifier, Qt::Key(key.key()));
    for (const QString& command : placeKeys) {
        QAction& action = (*commands_)[command];
        if (action.shortcuts().contains(keys)) {
            action.trigger();
            return true;
        }
    }
    return false;
}

/// The list's context menu, and what works in the palettes.
void FrmMapa::loadPlaceMenus()
{
    platform::ListView& list = *ui().lvLugares;
    list.keepLetters();
    list.setContextMenuPolicy(Qt::ActionsContextMenu);
    for (const QString& key : placeKeys)
        list.addAction(&(*commands_)[key]);
    frmTiles().keyUnused = frmPines().keyUnused = forMinimap_.keyUnused;
    for (platform::ListView* const palette : {frmTiles().ui().lvTiles, frmPines().ui().lvPines})
        QObject::connect(palette->selectionModel(), &QItemSelectionModel::currentChanged, &window(),
                         [this] { showTools(); });
    for (QWidget* const palette : {&frmTiles().window(), &frmPines().window()})
        palette->addActions(actionsElsewhere());
}
