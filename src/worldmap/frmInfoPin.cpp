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
    window().setWindowFlags(Qt::Dialog);
    platform::guardText(*ui().txtNombre);
    platform::guardText(*ui().txtInfo);
    ui().cmdGenerarNombre->setIcon(platform::pixelIcon({QImage(u":/pictures/dado.gif"_s)}));
    ui().txtNombre->setFocus();
    QObject::connect(ui().cmdGenerarNombre, &QToolButton::clicked, &window(),
                     [this] { platform::runCommand([this] { cmdGenerarNombre_Click(); }); });
}

bool FrmInfoPin::Form_KeyDown(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Escape || event.modifiers() != Qt::NoModifier)
        return false;
    hide();
    return true;
}

void FrmInfoPin::cmdGenerarNombre_Click()
{
    ui().txtNombre->setText(asPlaceName(Procs::generarNombre(1, Procs::placeNames)));
}
