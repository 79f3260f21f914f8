#include "worldmap/frmMapProperties.h"

#include "generation/name_grammar.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/picture_box.h"
#include "platform/forms/text_guard.h"
#include "worldmap/map_file.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;
using platform::MsgBox::Icon;

namespace {

// Item i of the north list is 90 - 15 i, of the south list 75 - 15 i: the same position in both is
// the smallest span allowed.
constexpr int northernmost = 90;
constexpr int latitudeStep = 15;
constexpr int latitudeCount = 12;
constexpr int firstNorth = 3; // 45
constexpr int firstSouth = 8; // -45

void showNumber(QComboBox& list, int number)
{
    list.setCurrentIndex(list.findText(QString::number(number)));
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

/// Keeps the north list's position at or before the south list's: the list that the user chose from
/// is set back, and a message says why.
void FrmMapProperties::latitudeChosen(bool north)
{
    QComboBox& norths = *ui().cmbLatitudNorte;
    QComboBox& souths = *ui().cmbLatitudSur;
    if (norths.currentIndex() < 0 || souths.currentIndex() < 0)
        return;
    if (norths.currentIndex() <= souths.currentIndex()) {
        updateZona();
        return;
    }
    if (north) {
        norths.setCurrentIndex(souths.currentIndex());
        warn(u"No puede seleccionar una latitud norte menor que la latitud sur."_s, Icon::Critical);
    } else {
        souths.setCurrentIndex(norths.currentIndex());
        warn(u"No puede seleccionar una latitud sur mayor que la latitud norte."_s, Icon::Critical);
    }
}

void FrmMapProperties::updateZona()
{
    if (ui().cmbLatitudNorte->currentIndex() < 0 || ui().cmbLatitudSur->currentIndex() < 0)
        return;
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
