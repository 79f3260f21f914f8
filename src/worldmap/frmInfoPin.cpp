#include "worldmap/frmInfoPin.h"

#include "generation/name_grammar.h"
#include "platform/forms/application.h"
#include "platform/forms/picture_box.h"
#include "platform/forms/text_guard.h"
#include "worldmap/map_file.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

FrmInfoPin& frmInfoPin()
{
    return platform::FormRegistry::shared<FrmInfoPin>();
}

void FrmInfoPin::Form_Load()
{
    platform::guardText(*ui().txtNombre);
    platform::guardText(*ui().txtInfo);
    ui().cmdGenerarNombre->setIcon(platform::pixelIcon({QImage(u":/pictures/dado.gif"_s)}));
    ui().txtNombre->setFocus();
    QObject::connect(ui().cmdGenerarNombre, &QToolButton::clicked, &window(),
                     [this] { platform::runCommand([this] { cmdGenerarNombre_Click(); }); });
}

bool FrmInfoPin::Form_KeyDown(const QKeyEvent& event)
{
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (isEnter && event.modifiers().testFlag(Qt::ControlModifier) &&
        window().focusWidget() == ui().txtInfo) {
        ui().txtInfo->insertPlainText(u"\n"_s); // as Enter alone does, and as in the catalogue
        return true;
    }
    return false;
}

void FrmInfoPin::cmdGenerarNombre_Click()
{
    ui().txtNombre->setText(asPlaceName(Procs::generarNombre(1, Procs::placeNames)));
}
