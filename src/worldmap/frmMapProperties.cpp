#include "worldmap/frmMapProperties.h"

#include "generation/name_grammar.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/picture_box.h"
#include "platform/forms/text_guard.h"
#include "worldmap/map_file.h"

#include <algorithm>
#include <cstdlib>
#include <functional>

using namespace Qt::StringLiterals;
using platform::MsgBox::Icon;

namespace {

// Item i of the north list is 90 - 15 i, of the south list 75 - 15 i.
constexpr int northernmost = 90;
constexpr int latitudeStep = 15;
constexpr int latitudeCount = 12;
constexpr int firstNorth = 3; // 45
constexpr int firstSouth = 8; // -45

constexpr int isExtra = Qt::UserRole;

/// Takes the number away that showNumber added to a list, if there is one.
void removeExtra(QComboBox& list)
{
    if (const int last = list.count() - 1; list.itemData(last, isExtra).toBool())
        list.removeItem(last);
}

/// Shows a number in a list. One that the list doesn't offer, as a map may have, stands at its end
/// while it is shown.
void showNumber(QComboBox& list, int number)
{
    removeExtra(list);
    const QString text = QString::number(number);
    if (list.findText(text) < 0)
        list.addItem(text, true);
    list.setCurrentIndex(list.findText(text));
}

int shownNumber(const QComboBox& list)
{
    return list.currentText().toInt();
}

/// Chooses the number nearest to the wanted one among those that are allowed. Returns whether there
/// is one.
bool chooseNearest(QComboBox& list, int wanted, const std::function<bool(int)>& isAllowed)
{
    int best = -1;
    const auto distance = [&](int item) { return std::abs(list.itemText(item).toInt() - wanted); };
    for (int item = 0; item < list.count(); ++item) {
        if (isAllowed(list.itemText(item).toInt()) && (best < 0 || distance(item) < distance(best)))
            best = item;
    }
    if (best >= 0)
        list.setCurrentIndex(best);
    return best >= 0;
}

void warn(const QString& text, Icon icon)
{
    platform::MsgBox::show(text, u"Advertencia"_s, icon);
}

} // namespace

FrmMapProperties& frmMapProperties()
{
    return platform::FormRegistry::shared<FrmMapProperties>();
}

void FrmMapProperties::Form_Load()
{
    Ui::FrmMapProperties& controls = ui();
    for (QComboBox* const sizes : {controls.cmbAlto, controls.cmbAncho})
        sizes->addItems({u"50"_s, u"75"_s, u"100"_s, u"150"_s});
    for (int i = 0; i < latitudeCount; ++i) {
        const int north = northernmost - latitudeStep * i;
        controls.cmbLatitudNorte->addItem(QString::number(north));
        controls.cmbLatitudSur->addItem(QString::number(north - latitudeStep));
    }
    controls.cmbLatitudNorte->setCurrentIndex(firstNorth);
    controls.cmbLatitudSur->setCurrentIndex(firstSouth);
    updateZona();

    platform::guardText(*controls.txtNombre);
    platform::guardText(*controls.txtNotas);
    controls.cmdGenerarNombre->setIcon(platform::pixelIcon({QImage(u":/pictures/dado.gif"_s)}));
    QObject::connect(controls.cmbLatitudNorte, &QComboBox::currentIndexChanged, &window(),
                     [this] { latitudeChosen(true); });
    QObject::connect(controls.cmbLatitudSur, &QComboBox::currentIndexChanged, &window(),
                     [this] { latitudeChosen(false); });
    QObject::connect(controls.cmdGenerarNombre, &QToolButton::clicked, &window(),
                     [this] { platform::runCommand([this] { cmdGenerarNombre_Click(); }); });
    QObject::connect(controls.cmdAceptar, &QPushButton::clicked, &window(),
                     [this] { cmdAceptar_Click(); });
    QObject::connect(controls.cmdCancelar, &QPushButton::clicked, &dialog(), &QDialog::reject);
}

void FrmMapProperties::fill(const MapProperties& properties, QSize size)
{
    ui().txtNombre->setText(properties.nombre);
    ui().txtNotas->setPlainText(properties.notasMapa);
    setSize(size.width(), size.height());
    setLatitudes(properties.latNorte, properties.latSur);
}

void FrmMapProperties::allowSize(bool allowed)
{
    ui().cmbAncho->setEnabled(allowed);
    ui().cmbAlto->setEnabled(allowed);
}

MapProperties FrmMapProperties::properties()
{
    return {ui().txtNombre->text(), shownNumber(*ui().cmbLatitudNorte),
            shownNumber(*ui().cmbLatitudSur), platform::textOf(*ui().txtNotas)};
}

QSize FrmMapProperties::mapSize()
{
    return {shownNumber(*ui().cmbAncho), shownNumber(*ui().cmbAlto)};
}

void FrmMapProperties::setSize(int columns, int rows)
{
    showNumber(*ui().cmbAncho, columns);
    showNumber(*ui().cmbAlto, rows);
}

void FrmMapProperties::setLatitudes(int north, int south)
{
    // Without a word to each other: one after the other they could look like a wrong choice.
    const QSignalBlocker quietNorth(ui().cmbLatitudNorte);
    const QSignalBlocker quietSouth(ui().cmbLatitudSur);
    showNumber(*ui().cmbLatitudNorte, north);
    showNumber(*ui().cmbLatitudSur, south);
    updateZona();
}

void FrmMapProperties::offerListedValues()
{
    Ui::FrmMapProperties& controls = ui();
    const QSignalBlocker quietNorth(controls.cmbLatitudNorte);
    const QSignalBlocker quietSouth(controls.cmbLatitudSur);
    for (QComboBox* const sizes : {controls.cmbAncho, controls.cmbAlto}) {
        const int wanted = shownNumber(*sizes);
        removeExtra(*sizes);
        sizes->setCurrentIndex(std::max(0, sizes->findText(QString::number(wanted))));
    }
    QComboBox& norths = *controls.cmbLatitudNorte;
    QComboBox& souths = *controls.cmbLatitudSur;
    const bool isListed = !norths.currentData(isExtra).toBool() &&
                          !souths.currentData(isExtra).toBool() &&
                          norths.currentIndex() <= souths.currentIndex();
    removeExtra(norths);
    removeExtra(souths);
    if (!isListed) {
        norths.setCurrentIndex(firstNorth);
        souths.setCurrentIndex(firstSouth);
    }
    updateZona();
}

/// Keeps the north at least a step above the south: the list that the user chose from is set back
/// to the nearest latitude that is, and a message says why. Where the other list shows a latitude
/// of the map's own that leaves no choice, that one gives way.
void FrmMapProperties::latitudeChosen(bool north)
{
    QComboBox& norths = *ui().cmbLatitudNorte;
    QComboBox& souths = *ui().cmbLatitudSur;
    if (shownNumber(norths) - shownNumber(souths) >= latitudeStep) {
        updateZona();
        return;
    }
    const auto raiseNorth = [&] {
        const int lowest = shownNumber(souths) + latitudeStep;
        return chooseNearest(norths, lowest, [&](int latitude) { return latitude >= lowest; });
    };
    const auto lowerSouth = [&] {
        const int highest = shownNumber(norths) - latitudeStep;
        return chooseNearest(souths, highest, [&](int latitude) { return latitude <= highest; });
    };
    // Each sets off a new choice, which updates the span.
    if (!(north ? raiseNorth() : lowerSouth())) {
        north ? lowerSouth() : raiseNorth();
        updateZona();
        return;
    }
    warn(north ? u"No puede seleccionar una latitud norte menor que la latitud sur."_s
               : u"No puede seleccionar una latitud sur mayor que la latitud norte."_s,
         Icon::Critical);
}

void FrmMapProperties::updateZona()
{
    ui().lblZona->setText(
        QString::number(shownNumber(*ui().cmbLatitudNorte) - shownNumber(*ui().cmbLatitudSur)));
}

void FrmMapProperties::cmdGenerarNombre_Click()
{
    ui().txtNombre->setText(asMapName(Procs::generarNombre(1, Procs::placeNames)));
}

void FrmMapProperties::cmdAceptar_Click()
{
    const QString name = ui().txtNombre->text();
    if (name.isEmpty()) {
        warn(u"No ha ingresado un nombre para el mapa. Debe hacerlo para continuar."_s,
             Icon::Warning);
        return;
    }
    if (const std::optional<QString> problem = mapNameProblem(name)) {
        warn(u"El mapa no puede llamarse así: %1."_s.arg(*problem), Icon::Warning);
        return;
    }
    cancelado = false;
    dialog().accept();
}
