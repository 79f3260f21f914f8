#pragma once

#include "catalogue/item_editor_form.h"
#include "ui_frmArmas.h"

/// The weapon editor.
class FrmArmas final : public ItemEditorForm<Ui::FrmArmas>
{
public:
    FrmArmas();

    /// The item key of the item being edited, or empty for a new one.
    QString armaEditada;
};

FrmArmas& frmArmas();
