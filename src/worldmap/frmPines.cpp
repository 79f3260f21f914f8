#include "worldmap/frmPines.h"

FrmPines& frmPines()
{
    return platform::FormRegistry::shared<FrmPines>();
}
