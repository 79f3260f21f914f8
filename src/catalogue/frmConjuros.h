#pragma once

#include "catalogue/item_editor_form.h"
#include "ui_frmConjuros.h"

/// The spell editor.
class FrmConjuros final : public ItemEditorForm<Ui::FrmConjuros>
{
public:
    FrmConjuros();

    /// The item key of the item being edited, or empty for a new one.
    QString conjuroEditado;
};

FrmConjuros& frmConjuros();
