#include "generation/frmClima.h"

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
