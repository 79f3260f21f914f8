#include "generation/frmClima.h"

#include <QKeyEvent>

FrmClima& frmClima()
{
    return platform::FormRegistry::shared<FrmClima>();
}

void FrmClima::Form_Load()
{
    QFont font = ui().txtClima->font();
    font.setPointSizeF(8.25); // which a design can't say
    ui().txtClima->setFont(font);
}

bool FrmClima::Form_KeyDown(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Escape || event.modifiers() != Qt::NoModifier)
        return false;
    hide();
    return true;
}
