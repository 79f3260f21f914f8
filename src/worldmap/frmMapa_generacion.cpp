// What the map window has generated for it: worlds, roads and the climate report.

#include "generation/camino.h"
#include "generation/climate.h"
#include "generation/frmClima.h"
#include "generation/journey.h"
#include "generation/path_finding.h"
#include "generation/world_generator.h"
#include "platform/forms/application.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_scale.h"

#include <QLocale>
#include <utility>

using namespace Qt::StringLiterals;

void FrmMapa::generarMapa()
{
    for (const QString& tile : generatedTiles())
        selectTile(tile); // fails before anything is changed
    const platform::WaitCursor wait;
    WorldMap fresh = mapa();
    generarMundo(fresh, workspace().pins);
    prepared_ = prepare(fresh);
    setAccion(NoEditing);
    documento.generate(std::move(fresh));
}

/// In road mode the left button marks the start of a road and the right one its end.
void FrmMapa::markRoadEnd(Qt::MouseButton button)
{
    const QPoint cell = mapCell();
    tools_.outcome.clear();
    if (button == Qt::LeftButton) {
        inicioX = cell.x();
        inicioY = cell.y();
    } else if (button == Qt::RightButton) {
        finX = cell.x();
        finY = cell.y();
    }
    if (inicioX == -1 || finX == -1)
        return;
    // Whatever comes of the search, the next road needs two new ends.
    const QPoint start(std::exchange(inicioX, -1), std::exchange(inicioY, -1));
    const QPoint end(std::exchange(finX, -1), std::exchange(finY, -1));
    const platform::WaitCursor wait;
    const QString route = PathFinding::FindPath(mapa().mapaTiles, start.x(), start.y(), end.x(),
                                                end.y(), workspace().tiles);
    if (route == PathFinding::notFound) {
        tools_.outcome = u"No hay camino"_s;
        return;
    }
    drawCamino(route);
    const auto cells = PathFinding::routeCells(route).size() - 1; // all that are entered
    tools_.outcome = u"Coste %1 en %2; %3 en línea recta"_s.arg(
        QString::number(PathFinding::routeCost(mapa().mapaTiles, route, workspace().tiles)),
        cells == 1 ? u"una casilla"_s : u"%1 casillas"_s.arg(cells),
        QString::number(hex::distance(start, end)));
    if (const std::optional<double> scale = kilometresPerCell(mapa().notasMapa))
        tools_.outcome +=
            u"; "_s + journeyText(journeyAlong(mapa().mapaTiles, route, workspace().tiles, *scale));
}

void FrmMapa::drawCamino(const QString& route)
{
    ::drawCamino(hdcBuffer, route);
    hideLocation();
    ui().imgMapa->showMap();
}

void FrmMapa::showClima()
{
    const Climate climate = climateOf(mapa(), workspace().tiles);
    frmClima().setClimate(climateReport(climate, QLocale().decimalPoint()),
                          climateColours(climate));
    frmClima().show();
}
