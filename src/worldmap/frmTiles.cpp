#include "worldmap/frmTiles.h"

FrmTiles& frmTiles()
{
    return platform::FormRegistry::shared<FrmTiles>();
}
