#include "catalogue/frmConjuros.h"

#include "catalogue/editor_kinds_form.h"

FrmConjuros& frmConjuros()
{
    return platform::FormRegistry::shared<FrmConjuros>();
}

FrmConjuros::FrmConjuros() : ItemEditorForm(conjurosEditor(), conjuroEditado) {}
