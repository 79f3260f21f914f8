#pragma once

#include "catalogue/item_editor_form.h"
#include "ui_frmEquipo.h"

/// The equipment editor.
class FrmEquipo final : public ItemEditorForm<Ui::FrmEquipo>
{
public:
    FrmEquipo();

    /// The item key of the item being edited, or empty for a new one.
    QString equipoEditado;
};

FrmEquipo& frmEquipo();
