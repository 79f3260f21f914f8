#include "catalogue/frmArmas.h"

#include "catalogue/editor_kinds_form.h"

FrmArmas& frmArmas()
{
    return platform::FormRegistry::shared<FrmArmas>();
}

FrmArmas::FrmArmas() : ItemEditorForm(armasEditor(), armaEditada) {}
