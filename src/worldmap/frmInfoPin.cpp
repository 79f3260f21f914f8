#include "worldmap/frmInfoPin.h"

#include "generation/name_grammar.h"
#include "platform/forms/application.h"
#include "platform/forms/picture_box.h"
#include "platform/forms/text_guard.h"
#include "worldmap/map_file.h"

#include <QKeyEvent>
#include <QShortcut>

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
    // As Enter does; in the catalogue's notes it is the only key that does.
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter})
        QObject::connect(
            new QShortcut(Qt::CTRL | enter, ui().txtInfo, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, ui().txtInfo,
            [this] { ui().txtInfo->insertPlainText(u"\n"_s); });
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
