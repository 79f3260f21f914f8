// The overlays of the map window: their commands, and what they show of the map.

#include "worldmap/frmMapa_capas.h"

#include "app/workspace.h"
#include "generation/climate.h"
#include "platform/core/error.h"
#include "platform/forms/application.h"
#include "worldmap/frmMapa.h"
#include "worldmap/map_overlays.h"
#include "worldmap/map_scale.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QString names = u"nombres"_s;
const QString grid = u"rejilla"_s;
const QString numbers = u"coordenadas"_s;
const QString climate = u"climaColor"_s;
const QString inhabitants = u"habitantes"_s;
const QString scaleBar = u"barraEscala"_s;

constexpr int manyCells = 100'000; ///< finding figures for more takes a time that is felt
constexpr int restMilliseconds = 250;

} // namespace

/// From the lowest to the highest.
const QStringList& MapaCapas::keys()
{
    static const QStringList all{climate, inhabitants, grid, numbers, names, scaleBar};
    return all;
}

void MapaCapas::turn(const QString& key, bool on)
{
    on_.remove(key);
    if (!on)
        return;
    find(key);
    on_.insert(key);
}

void MapaCapas::find(const QString& key)
{
    const Palette& tiles = workspace().tiles;
    if (key == names && !names_)
        names_ = placeNamesOf(*map_, workspace().pins);
    else if (key == climate && !climate_)
        climate_ = besidePlaces(climateColours(climateOf(*map_, tiles)), *map_);
    else if (key == inhabitants && !inhabitants_)
        inhabitants_ = besidePlaces(inhabitantsColours(*map_, tiles), *map_);
}

void MapaCapas::forgetTerrain()
{
    climate_.reset();
    inhabitants_.reset();
    countedCells_.reset();
}

void MapaCapas::forgetPlaces()
{
    names_.reset();
    for (std::optional<CellColours>* const colours : {&climate_, &inhabitants_}) {
        if (*colours)
            *colours = besidePlaces(std::move(**colours), *map_);
    }
}

void MapaCapas::forgetAll()
{
    forgetTerrain();
    names_.reset();
}

std::vector<Overlay> MapaCapas::overlays(QString& problem)
{
    std::vector<Overlay> all;
    for (const QString& key : keys()) {
        if (!isOn(key))
            continue;
        try {
            find(key);
        } catch (const platform::Error& error) {
            on_.remove(key);
            problem = error.description;
            continue;
        }
        if (key == names)
            all.emplace_back(*names_);
        else if (key == grid)
            all.emplace_back(CellGrid{});
        else if (key == numbers)
            all.emplace_back(CellNumbers{});
        else if (key == climate)
            all.emplace_back(*climate_);
        else if (key == inhabitants)
            all.emplace_back(besideClimate(*inhabitants_));
        else if (const std::optional<double> scale = kilometresPerCell(map_->notasMapa))
            all.emplace_back(ScaleBar{*scale});
        else
            on_.remove(key);
    }
    return all;
}

/// Where the climate colours the cells already, inhabitants are discs in them.
CellColours MapaCapas::besideClimate(CellColours colours) const
{
    colours.areDiscs = isOn(climate);
    return colours;
}

QString MapaCapas::statusText(const std::optional<QRect>& cells)
{
    if (!isOn(inhabitants))
        return {};
    if (!countedCells_ || *countedCells_ != cells) {
        counted_ = inhabitantsText(inhabitantsOf(*map_, workspace().tiles, cells),
                                   kilometresPerCell(map_->notasMapa));
        countedCells_ = cells;
    }
    return counted_;
}

// ---- in the window ---------------------------------------------------------------------------

std::vector<platform::Command> FrmMapa::overlayCommands()
{
    const auto command = [this](const QString& key, const QString& text) {
        return platform::Command{.key = key,
                                 .text = text,
                                 .isTwoState = true,
                                 .run = [this, key](bool on) { turnOverlay(key, on); }};
    };
    std::vector<platform::Command> all{
        command(names, u"&Nombres de los lugares"_s), command(grid, u"&Rejilla"_s),
        command(numbers, u"&Coordenadas"_s),          command(climate, u"C&lima en colores"_s),
        command(inhabitants, u"&Habitantes"_s),       command(scaleBar, u"&Barra de escala"_s)};
    all.back().isPossible = [this] { return kilometresPerCell(mapa().notasMapa).has_value(); };
    all.back().textNow = [this] {
        return kilometresPerCell(mapa().notasMapa)
                   ? u"&Barra de escala"_s
                   : u"&Barra de escala (ponga «Escala: 10 km» en las notas del mapa)"_s;
    };
    return all;
}

void FrmMapa::turnOverlay(const QString& key, bool on)
{
    try {
        capas_.turn(key, on);
    } catch (...) {
        (*commands_)[key].setChecked(false);
        throw;
    }
    showOverlays();
    showTools();
}

/// The map changed under the overlays. Those of a large one follow when the hand rests.
void FrmMapa::followOverlays()
{
    if (mapa().ancho() * mapa().alto() < manyCells)
        showOverlays();
    else if (!overlayTimer_.isActive())
        overlayTimer_.start();
}

void FrmMapa::loadOverlays()
{
    overlayTimer_.setSingleShot(true);
    overlayTimer_.setInterval(restMilliseconds);
    QObject::connect(&overlayTimer_, &QTimer::timeout, &window(), [this] {
        platform::runCommand([this] {
            showOverlays();
            showTools();
        });
    });
    const auto follow = [this](auto announcement, auto forget) {
        QObject::connect(&documento, announcement, &window(), [this, forget] {
            platform::runCommand([&] {
                forget();
                followOverlays();
                showTools();
            });
        });
    };
    follow(&MapDocument::tilesChanged, [this] { capas_.forgetTerrain(); });
    follow(&MapDocument::placesChanged, [this] { capas_.forgetPlaces(); });
    follow(&MapDocument::propertiesChanged, [this] { capas_.forgetTerrain(); });
    follow(&MapDocument::replaced, [this] { capas_.forgetAll(); });
}

void FrmMapa::showOverlays()
{
    overlayTimer_.stop();
    QString problem;
    mapOverlays_ = capas_.overlays(problem);
    for (const QString& key : MapaCapas::keys())
        (*commands_)[key].setChecked(capas_.isOn(key));
    if (!problem.isEmpty())
        ui().avisos->tell(QStringList(problem));
}
