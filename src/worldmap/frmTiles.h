#pragma once

#include "ui_frmTiles.h"
#include "worldmap/palette_form.h"

/// The palette of terrain tiles for the world map.
class FrmTiles final : public PaletteForm<Ui::FrmTiles, &Ui::FrmTiles::lvTiles>
{
public:
    FrmTiles() : PaletteForm(workspace().tiles) {}
};

FrmTiles& frmTiles();
