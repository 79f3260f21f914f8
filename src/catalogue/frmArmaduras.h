#pragma once

#include "catalogue/item_editor_form.h"
#include "ui_frmArmaduras.h"

/// The armour editor.
class FrmArmaduras final : public ItemEditorForm<Ui::FrmArmaduras>
{
public:
    FrmArmaduras();

    /// The item key of the item being edited, or empty for a new one.
    QString armaduraEditada;
};

FrmArmaduras& frmArmaduras();
