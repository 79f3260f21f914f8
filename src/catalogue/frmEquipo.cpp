#include "catalogue/frmEquipo.h"

#include "catalogue/editor_kinds_form.h"

FrmEquipo& frmEquipo()
{
    return platform::FormRegistry::shared<FrmEquipo>();
}

FrmEquipo::FrmEquipo() : ItemEditorForm(equipoEditor(), equipoEditado) {}
