#include "worldmap/frmMapProperties.h"

#include "generation/name_grammar.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/picture_box.h"
#include "platform/forms/text_guard.h"
#include "worldmap/map_file.h"

#include <QKeyEvent>
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

/// Shows a number in a list. One that the list doesn't offer, as a map may have, stands at its end
/// while it is shown.
void showNumber(QComboBox& list, int number)
{
    constexpr int isExtra = Qt::UserRole;
    if (const int last = list.count() - 1; list.itemData(last, isExtra).toBool())
        list.removeItem(last);
    const QString text = QString::number(number);
    if (list.findText(text) < 0)
        list.addItem(text, true);
    list.setCurrentIndex(list.findText(text));
}

/// Chooses the number nearest to the wanted one among those that are allowed.
void chooseNearest(QComboBox& list, int wanted, const std::function<bool(int)>& isAllowed)
{
    int best = -1;
    const auto distance = [&](int item) { return std::abs(list.itemText(item).toInt() - wanted); };
    for (int item = 0; item < list.count(); ++item) {
        if (isAllowed(list.itemText(item).toInt()) && (best < 0 || distance(item) < distance(best)))
            best = item;
    }
    list.setCurrentIndex(best);
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
    window().setWindowFlags(Qt::Dialog);
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
    QObject::connect(controls.cmdCancelar, &QPushButton::clicked, &window(),
                     [this] { cmdCancelar_Click(); });
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

bool FrmMapProperties::Form_KeyDown(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Escape || event.modifiers() != Qt::NoModifier)
        return false;
    cmdCancelar_Click();
    return true;
}

/// Keeps the north at least a step above the south: the list that the user chose from is set back
/// to the nearest latitude that is, and a message says why.
void FrmMapProperties::latitudeChosen(bool north)
{
    QComboBox& norths = *ui().cmbLatitudNorte;
    QComboBox& souths = *ui().cmbLatitudSur;
    const int lowestNorth = souths.currentText().toInt() + latitudeStep;
    const int highestSouth = norths.currentText().toInt() - latitudeStep;
    if (norths.currentText().toInt() >= lowestNorth) {
        updateZona();
        return;
    }
    if (north) {
        chooseNearest(norths, lowestNorth, [&](int latitude) { return latitude >= lowestNorth; });
        warn(u"No puede seleccionar una latitud norte menor que la latitud sur."_s, Icon::Critical);
    } else {
        chooseNearest(souths, highestSouth, [&](int latitude) { return latitude <= highestSouth; });
        warn(u"No puede seleccionar una latitud sur mayor que la latitud norte."_s, Icon::Critical);
    }
}

void FrmMapProperties::updateZona()
{
    const int span =
        ui().cmbLatitudNorte->currentText().toInt() - ui().cmbLatitudSur->currentText().toInt();
    ui().lblZona->setText(QString::number(span));
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
    hide();
}

void FrmMapProperties::cmdCancelar_Click()
{
    cancelado = true;
    hide();
}
