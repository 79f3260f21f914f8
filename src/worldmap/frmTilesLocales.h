#pragma once

#include "ui_frmTilesLocales.h"
#include "worldmap/palette_form.h"

/// The palette of tiles for local maps.
class FrmTilesLocales final
    : public PaletteForm<Ui::FrmTilesLocales, &Ui::FrmTilesLocales::lvTilesLocales>
{
public:
    FrmTilesLocales() : PaletteForm(workspace().localTiles) {}
};

FrmTilesLocales& frmTilesLocales();
