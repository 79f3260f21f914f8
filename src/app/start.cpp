#include "app/start.h"

#include "app/frmAbout.h"
#include "app/procs_windows.h"
#include "app/workspace.h"
#include "catalogue/frmPrinc.h"
#include "platform/core/random_source.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"
#include "worldmap/frmTilesLocales.h"

void Main()
{
    platform::randomSource().seedFromClock();

    frmPrinc().window();
    Procs::loadArmas();
    Procs::loadArmaduras();
    Procs::loadEquipo();
    Procs::loadConjuros();

    frmTiles().createColumns();
    frmPines().createColumns();
    frmTilesLocales().createColumns();

    frmAbout().showModal();
    frmMapa().show();
    workspace().recovery.begin();
    workspace().diskWatch.begin();
}
