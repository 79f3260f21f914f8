#include "catalogue/frmArmaduras.h"

#include "catalogue/editor_kinds_form.h"

FrmArmaduras& frmArmaduras()
{
    return platform::FormRegistry::shared<FrmArmaduras>();
}

FrmArmaduras::FrmArmaduras() : ItemEditorForm(armadurasEditor(), armaduraEditada) {}
