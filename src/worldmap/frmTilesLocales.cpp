#include "worldmap/frmTilesLocales.h"

FrmTilesLocales& frmTilesLocales()
{
    return platform::FormRegistry::shared<FrmTilesLocales>();
}
