// What is reckoned from a map's terrain and notes: its scale, inhabitants, climate as colours,
// journeys; and which names are the important ones.
#include "generation/climate.h"
#include "generation/journey.h"
#include "platform/core/spanish_number.h"
#include "support.h"
#include "worldmap/inhabitants.h"
#include "worldmap/map_overlays.h"
#include "worldmap/map_scale.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

void addTile(Palette& tiles, const QString& name, const QString& inhabitants, const QString& cost)
{
    platform::ListItem& tile = tiles.items.add(name, {});
    tile.setSubItem(u"habitantes"_s, inhabitants);
    tile.setSubItem(u"costo"_s, cost);
    tile.setSubItem(u"temperatura"_s, cost);
}

/// Two rows: land, sea, land; hills, a tile without figures, an unpainted cell.
struct Land {
    Land()
    {
        addTile(tiles, u"tierra"_s, u"12,5"_s, u"2"_s);
        addTile(tiles, u"mar"_s, u"0"_s, u"-1"_s);
        addTile(tiles, u"colina"_s, u"2.5"_s, u"4"_s);
        addTile(tiles, u"raro"_s, u"muchos"_s, u"1"_s);
        map.mapaTiles = platform::Grid<QString>(2, 3);
        const QStringList names{u"tierra"_s, u"mar"_s,  u"tierra"_s,
                                u"colina"_s, u"raro"_s, QString()};
        std::copy(names.begin(), names.end(), map.mapaTiles.begin());
    }

    Palette tiles{tilesKind()};
    WorldMap map;
};

} // namespace

TEST(SpanishNumber, HasPointsFromFiveDigitsOnAndAComma)
{
    using platform::spanishNumber;
    EXPECT_EQ(spanishNumber(2250000), u"2.250.000"_s);
    EXPECT_EQ(spanishNumber(34600.4), u"34.600"_s);
    EXPECT_EQ(spanishNumber(2380), u"2380"_s);
    EXPECT_EQ(spanishNumber(-12345.678, 2), u"-12.345,68"_s);
    EXPECT_EQ(spanishNumber(12.5, 3), u"12,5"_s);
    EXPECT_EQ(spanishNumber(9.96, 1), u"10"_s);
    EXPECT_EQ(spanishNumber(100), u"100"_s);
    EXPECT_EQ(spanishNumber(-0.04, 1), u"0"_s);
}

TEST(MapScale, IsReadFromTheNotes)
{
    const std::initializer_list<std::pair<QString, double>> table{
        {u"Escala: 10 km"_s, 10},
        {u"Notas.\nESCALA :2,5km por casilla.\nMás."_s, 2.5},
        {u"Notas.\r\n  escala 7.5 Kilómetros\r\n"_s, 7.5},
        {u"Escala = 500 m"_s, 0.5},
        {u"Escala: 1 kilometro"_s, 1},
        {u"Escala: 0 km\nEscala: 3 km"_s, 3},
        {u"Escala: diez km"_s, 0},
        {u"Escala: 10"_s, 0},
        {u"Escala: 10 kmh"_s, 0},
        {u"Escala: 10 km²"_s, 0},
        {u"Escala: 10 millas"_s, 0},
        {u"La escala: 10 km"_s, 0},
        {u"Escala: -4 km"_s, 0},
        {QString(), 0},
    };
    for (const auto& [notes, kilometres] : table)
        EXPECT_DOUBLE_EQ(kilometresPerCell(notes).value_or(0), kilometres) << notes.toStdString();
}

TEST(InhabitantsTest, AreKnownByTheTerrain)
{
    const Land land;
    const Inhabitants all = inhabitantsOf(land.map, land.tiles);
    EXPECT_EQ(all.cells, 4);
    EXPECT_EQ(all.unknown, 2);
    EXPECT_DOUBLE_EQ(all.meanDensity().value(), 27.5 / 4);
    // Hexagons of 10 km from side to side have 86.6 km².
    EXPECT_NEAR(all.total(10).value(), 27.5 * 86.60254, 0.01);
    EXPECT_EQ(inhabitantsText(all, 10),
              u"Habitantes: media de 6,9 por km² (3 × 2 casillas); unos 2380 en total; 2 casillas "
              "sin dato"_s);
    const auto part = [&](const QRect& cells) {
        return inhabitantsText(inhabitantsOf(land.map, land.tiles, cells), std::nullopt);
    };
    EXPECT_EQ(part({1, 0, 50, 1}), u"Habitantes: media de 6,3 por km² (2 × 1 casillas)"_s);
    EXPECT_EQ(part({1, 1, 1, 1}), u"Habitantes: sin datos"_s);
    EXPECT_EQ(part({7, 7, 3, 3}), u"Habitantes: sin datos"_s);
    EXPECT_EQ(inhabitantsText({{10, 8}, 79, 1, 79 * 9.96}, 22.5),
              u"Habitantes: media de 10 por km² (10 × 8 casillas); unos 345.000 en total; una "
              "casilla sin dato"_s);

    const CellFigures figures = inhabitantsFigures(land.map, land.tiles);
    EXPECT_EQ(figures(0, 0), 12.5F);
    EXPECT_EQ(figures(0, 1), 0.0F);
    EXPECT_EQ(figures(1, 1), std::nullopt);
    EXPECT_EQ(inhabitantsColours(land.map, land.tiles).scale.last(), u"12,5"_s);
}

TEST(ClimateFigures, AreThoseOfTheReport)
{
    Land land;
    land.map.latNorte = 47;
    land.map.latSur = -20;
    land.map.mapaTiles(1, 2) = u"mar"_s;
    const Climate climate = climateOf(land.map, land.tiles);
    const QStringList lines = climateReport(land.map, land.tiles, u","_s).split(u"\r\n"_s);
    for (int row = 0; row < 2; ++row) {
        const QStringList figures = lines[row + 2].split(u' ');
        for (int column = 0; column < 3; ++column)
            EXPECT_EQ(static_cast<double>(*climate.figures(row, column)),
                      figures[column].toDouble());
    }
    // The coldest cell, of the highest figure, is the darkest.
    const QImage picture = climateColours(climate).picture;
    EXPECT_EQ(picture.pixel(0, 1), rampColour(0));
    EXPECT_EQ(picture.pixel(1, 0), rampColour(1));
}

TEST(JourneyTest, TakesADayForThirtyKilometresOfEasyGround)
{
    Land land;
    land.map.mapaTiles(1, 1) = u"tierra"_s;
    // From (0, 0), whose terrain doesn't count, over hills and land.
    const auto along = [&](const QString& route, double scale) {
        return journeyText(journeyAlong(land.map.mapaTiles, route, land.tiles, scale));
    };
    EXPECT_EQ(along(u"0;2|1;1|1;0|0;0"_s, 30), u"90 km, 4 días a pie"_s);
    EXPECT_EQ(along(u"1;1|0;0"_s, 30), u"30 km, 1 día a pie"_s);
    EXPECT_EQ(along(u"1;0|0;0"_s, 15), u"15 km, 1 día a pie"_s);
    EXPECT_EQ(along(u"1;0|0;0"_s, 7.25), u"7,3 km, 0,5 días a pie"_s);
    EXPECT_EQ(along(u"1;1|0;0"_s, 0.5), u"0,5 km, menos de 0,1 días a pie"_s);
    EXPECT_EQ(along(u"1;1|1;0|0;0"_s, 6000), u"12.000 km, 600 días a pie"_s);
    EXPECT_EQ(along(u"0;0"_s, 10), u"0 km, menos de 0,1 días a pie"_s);
}

TEST(MapOverlays, CitiesAreMoreImportantThanVillagesAndThoseThanTheRest)
{
    Palette pins(pinesKind());
    for (const QString& pin : {u"Aldea"_s, u"Cueva"_s, u"Ciudad"_s, u"Pueblo"_s, u"Mina"_s})
        pins.items.add(pin, {});
    pins.items.add(u"P7"_s, u"Corte del rey"_s);
    const QStringList inOrder{u"P7"_s,    u"Ciudad"_s, u"Pueblo"_s, u"Aldea"_s,
                              u"Cueva"_s, u"Mina"_s,   u"perdido"_s};
    for (int i = 1; i < inOrder.size(); ++i)
        EXPECT_LT(pinImportance(pins, inOrder[i - 1]), pinImportance(pins, inOrder[i])) << i;
    EXPECT_GT(pinImportance(pins, u"Cortejo"_s), pinImportance(pins, u"Mina"_s));
}
