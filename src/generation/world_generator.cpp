#include "generation/world_generator.h"

#include "app/procs.h"
#include "generation/name_grammar.h"
#include "generation/settlements.h"
#include "worldmap/map_file.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

using Procs::RandomInRange;
using Procs::roundedQuotient;

namespace {

struct Band {
    int from; ///< lowest normalised height of the band
    QString tile;
};

const std::array<Band, 9>& elevationBands()
{
    static const std::array<Band, 9> bands{{{240, u"P2"_s},
                                            {230, u"P1"_s},
                                            {200, u"T4"_s},
                                            {170, u"T3"_s},
                                            {135, u"T2"_s},
                                            {100, u"T1"_s},
                                            {70, u"M3"_s},
                                            {30, u"M2"_s},
                                            {0, u"M1"_s}}};
    return bands;
}

struct Forests {
    QString open = u"B1"_s;
    QString dense = u"B2"_s;
};

const Forests& forests()
{
    static const Forests names;
    return names;
}

// Forest grows where vegetation is above these.
constexpr int openForestAbove = 220;
constexpr int denseForestAbove = 240;

// Corners start between these, and heights are normalised to the distance of the other two.
constexpr int lowestCorner = 1;
constexpr int highestCorner = 255;
constexpr int normalLow = 1;
constexpr int normalHigh = 254;

/// The largest offset of a rectangle as high as the whole map.
constexpr int fullAmplitude = 512;

// The world lies around the equator.
constexpr int latitude = 45;

/// A new field of normalised heights for a map.
HeightGrid randomField(int alto, int ancho)
{
    HeightGrid grid(alto + 1, ancho + 1);
    for (const int row : {0, alto - 1}) {
        for (const int column : {0, ancho - 1})
            grid(row, column) =
                static_cast<std::int16_t>(RandomInRange(lowestCorner, highestCorner));
    }
    subdividirAlturas(grid, 0, alto - 1, 0, ancho - 1);
    normalizarAlturas(grid, normalLow, normalHigh);
    return grid;
}

} // namespace

const QStringList& generatedTiles()
{
    static const QStringList names = [] {
        QStringList all;
        for (const Band& band : elevationBands())
            all.append(band.tile);
        return all << forests().open << forests().dense;
    }();
    return names;
}

const QString& elevationTile(int height)
{
    return std::find_if(elevationBands().begin(), elevationBands().end() - 1,
                        [&](const Band& band) { return height >= band.from; })
        ->tile;
}

const QString& vegetationTile(int vegetation, const QString& tile)
{
    if (vegetation <= openForestAbove || isWater(tile))
        return tile;
    return vegetation > denseForestAbove ? forests().dense : forests().open;
}

void subdividirAlturas(HeightGrid& grid, int r0, int r1, int c0, int c1)
{
    if (r1 - r0 < 2 && c1 - c0 < 2)
        return;
    const int a = grid(r0, c0);
    const int b = grid(r0, c1);
    const int c = grid(r1, c0);
    const int d = grid(r1, c1);
    const int amplitude = roundedQuotient((r1 - r0) * fullAmplitude, grid.rows() - 1);
    // A mean of corners plus a random offset. Every value is drawn, needed or not, so that one seed
    // gives one world.
    const auto displaced = [&](int sum, int corners) {
        return static_cast<std::int16_t>(
            roundedQuotient(sum + corners * RandomInRange(-amplitude, amplitude), corners));
    };
    const std::int16_t top = displaced(a + b, 2);
    const std::int16_t bottom = displaced(c + d, 2);
    const std::int16_t left = displaced(a + c, 2);
    const std::int16_t right = displaced(b + d, 2);
    const std::int16_t centre = displaced(a + b + c + d, 4);

    const int rm = (r0 + r1) / 2;
    const int cm = (c0 + c1) / 2;
    // Edges that a neighbouring rectangle has filled stay.
    const auto fill = [&](int row, int column, std::int16_t height) {
        if (grid(row, column) == 0)
            grid(row, column) = height;
    };
    fill(rm, c0, left);
    fill(r0, cm, top);
    fill(rm, c1, right);
    fill(r1, cm, bottom);
    fill(rm, cm, centre);

    subdividirAlturas(grid, r0, rm, c0, cm);
    subdividirAlturas(grid, r0, rm, cm, c1);
    subdividirAlturas(grid, rm, r1, c0, cm);
    subdividirAlturas(grid, rm, r1, cm, c1);
}

void normalizarAlturas(HeightGrid& grid, int lo, int hi)
{
    // From 0, not from a cell's height: a field above 0 keeps its distance from it.
    int min = 0;
    int max = 0;
    for (int row = 0; row < grid.rows() - 1; ++row) {
        for (int column = 0; column < grid.columns() - 1; ++column) {
            min = std::min<int>(min, grid(row, column));
            max = std::max<int>(max, grid(row, column));
        }
    }
    if (min == max)
        return; // all 0
    const double scale = static_cast<double>(std::abs(max - min)) / std::abs(hi - lo);
    for (int row = 0; row < grid.rows() - 1; ++row) {
        for (int column = 0; column < grid.columns() - 1; ++column)
            grid(row, column) =
                static_cast<std::int16_t>(std::floor((grid(row, column) - min) / scale));
    }
}

void generarTerreno(WorldMap& map)
{
    const HeightGrid elevation = randomField(map.alto, map.ancho);
    const HeightGrid vegetation = randomField(map.alto, map.ancho);
    map.mapaTiles = platform::Grid<QString>(map.alto, map.ancho);
    map.mapaPines = platform::Grid<QString>(map.alto, map.ancho);
    for (int row = 0; row < map.alto; ++row) {
        for (int column = 0; column < map.ancho; ++column)
            map.mapaTiles(row, column) =
                vegetationTile(vegetation(row, column), elevationTile(elevation(row, column)));
    }
}

void generarMundo(WorldMap& map, const Palette& pins)
{
    map.accion = NoEditing;
    map.currX = 0;
    map.currY = 0;
    generarTerreno(map);
    colocarPoblados(map, pins);
    map.nombre = asMapName(Procs::generarNombre(1, Procs::placeNames));
    map.latNorte = latitude;
    map.latSur = -latitude;
    map.mapaCambiado = true;
}
