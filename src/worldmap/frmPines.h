#pragma once

#include "ui_frmPines.h"
#include "worldmap/palette_form.h"

/// The palette of pins that mark places on the world map.
class FrmPines final : public PaletteForm<Ui::FrmPines, &Ui::FrmPines::lvPines>
{
public:
    FrmPines() : PaletteForm(workspace().pins) {}
};

FrmPines& frmPines();
