#include "generation/world_generator.h"

#include "app/procs.h"
#include "generation/name_grammar.h"
#include "generation/settlements.h"
#include "generation/water.h"
#include "platform/core/random_source.h"
#include "worldmap/map_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

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

/// Maps whose sides stand further apart than this are long.
constexpr int longestUsual = 4;

/// One run of subdividirAlturas over a grid.
class Subdivision
{
public:
    explicit Subdivision(HeightGrid& grid)
        : grid_(grid),
          amplitudes_(static_cast<std::size_t>(grid.rows()))
    {
        const int alto = grid.rows() - 1;
        const int ancho = grid.columns() - 1;
        isLong_ = std::max(alto, ancho) > longestUsual * std::min(alto, ancho);
        for (int rows = 0; rows <= alto; ++rows)
            amplitudes_[static_cast<std::size_t>(rows)] =
                roundedQuotient(rows * fullAmplitude, alto);
    }

    void divide(int r0, int r1, int c0, int c1)
    {
        if (r1 - r0 < 2 && c1 - c0 < 2)
            return;
        displaceMidpoints(r0, r1, c0, c1);
        const int rm = (r0 + r1) / 2;
        const int cm = (c0 + c1) / 2;
        if (r1 - r0 <= 2 && c1 - c0 <= 2)
            return; // no quarter can be split
        // Of a rectangle that can't be split one way, two quarters lie on an edge of the other two.
        // They are gone through as well, because their draws belong to the worlds of the usual
        // sizes; on a long map they would take a time that grows with the square of its length.
        const bool upper = !isLong_ || rm > r0;
        const bool left = !isLong_ || cm > c0;
        if (upper && left)
            divide(r0, rm, c0, cm);
        if (upper)
            divide(r0, rm, cm, c1);
        if (left)
            divide(rm, r1, c0, cm);
        divide(rm, r1, cm, c1);
    }

private:
    void displaceMidpoints(int r0, int r1, int c0, int c1)
    {
        const int a = grid_(r0, c0);
        const int b = grid_(r0, c1);
        const int c = grid_(r1, c0);
        const int d = grid_(r1, c1);
        const int amplitude = amplitudes_[static_cast<std::size_t>(r1 - r0)];
        // A mean of corners plus an offset, where no neighbouring rectangle has filled the cell.
        const auto fill = [&](int row, int column, int sum, int corners) {
            const double draw = random_.next(); // needed or not, so that one seed gives one world
            std::int16_t& height = grid_(row, column);
            if (height == 0)
                height = static_cast<std::int16_t>(roundedQuotient(
                    sum + corners * Procs::inRange(-amplitude, amplitude, draw), corners));
        };
        const int rm = (r0 + r1) / 2;
        const int cm = (c0 + c1) / 2;
        fill(r0, cm, a + b, 2);
        fill(r1, cm, c + d, 2);
        fill(rm, c0, a + c, 2);
        fill(rm, c1, b + d, 2);
        fill(rm, cm, a + b + c + d, 4);
    }

    HeightGrid& grid_;
    platform::RandomSource& random_ = platform::randomSource();
    std::vector<int> amplitudes_; ///< the largest offsets, by the rows that a rectangle spans
    bool isLong_ = false;
};

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
    Subdivision(grid).divide(r0, r1, c0, c1);
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
    const HeightGrid elevation = randomField(map.alto(), map.ancho());
    const HeightGrid vegetation = randomField(map.alto(), map.ancho());
    map.mapaPines.clear();
    for (int row = 0; row < map.alto(); ++row) {
        for (int column = 0; column < map.ancho(); ++column)
            map.mapaTiles(row, column) =
                vegetationTile(vegetation(row, column), elevationTile(elevation(row, column)));
    }
}

void generarMundo(WorldMap& map, const Palette& pins)
{
    generarTerreno(map);
    colocarPoblados(map, pins);
    map.nombre = asMapName(Procs::generarNombre(1, Procs::placeNames));
    map.latNorte = latitude;
    map.latSur = -latitude;
}
