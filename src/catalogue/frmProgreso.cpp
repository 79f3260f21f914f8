#include "catalogue/frmProgreso.h"

FrmProgreso& frmProgreso()
{
    return platform::FormRegistry::shared<FrmProgreso>();
}

FrmProgreso::Run::Run(int steps)
{
    frmProgreso().ui().pbProgreso->setRange(0, steps);
    frmProgreso().ui().pbProgreso->setValue(0);
    frmProgreso().show();
}

FrmProgreso::Run::~Run()
{
    frmProgreso().hide();
}

void FrmProgreso::advance()
{
    ui().pbProgreso->setValue(ui().pbProgreso->value() + 1);
}
