// The random worlds: terrain, settlements, climate.
#include "app/procs.h"
#include "generation/climate.h"
#include "generation/settlements.h"
#include "generation/world_generator.h"
#include "platform/core/random_source.h"
#include "support.h"
#include "worldmap/map_file.h"

#include <QCryptographicHash>
#include <QSet>
#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array sizes{50, 75, 100, 150};

/// A test over the shipped definitions and grammar.
class GenerationTest : public testing::Test
{
protected:
    GenerationTest()
    {
        loadDefinitions(tiles, pictures, masks);
        loadDefinitions(pins, pictures, masks);
    }

    static WorldMap emptyMap(int alto, int ancho)
    {
        WorldMap map;
        map.mapaTiles = platform::Grid<QString>(alto, ancho);
        return map;
    }

    const platform::ScopedAppFolder app{shippedDataFolder()};
    PictureCollection pictures;
    PictureCollection masks;
    Palette tiles{tilesKind()};
    Palette pins{pinesKind()};
};

/// How many random numbers the work takes; `most` if it takes more.
int drawsOf(const std::function<void()>& work, int most)
{
    platform::RandomSource& random = platform::randomSource();
    random.seed(7);
    work();
    const double next = random.next();
    random.seed(7);
    int draws = 0;
    while (draws < most && random.next() != next)
        ++draws;
    return draws;
}

int rounded(double value)
{
    return static_cast<int>(std::nearbyint(value));
}

} // namespace

TEST_F(GenerationTest, WorldsKeepTheRulesForEverySizeAndSeed)
{
    const QSet<QString> allowed(generatedTiles().begin(), generatedTiles().end());
    EXPECT_EQ(allowed.size(), 11);
    for (int seed = 0; seed < 320; ++seed) {
        const int alto = sizes[static_cast<std::size_t>(seed / 4 % 4)];
        const int ancho = sizes[static_cast<std::size_t>(seed % 4)];
        SCOPED_TRACE(testing::Message() << alto << " x " << ancho << ", seed " << seed);
        WorldMap map = emptyMap(alto, ancho);
        map.notasMapa = u"mías"_s;
        platform::randomSource().seed(static_cast<std::uint64_t>(seed));
        generarMundo(map, pins);

        ASSERT_EQ(map.mapaTiles.rows(), alto);
        ASSERT_EQ(map.mapaTiles.columns(), ancho);
        ASSERT_TRUE(std::all_of(map.mapaTiles.begin(), map.mapaTiles.end(),
                                [&](const QString& tile) { return allowed.contains(tile); }));
        QSet<QString> names;
        for (const auto& [cell, place] : map.mapaPines) {
            names.insert(place.name);
            EXPECT_FALSE(map.tileAt(cell).contains(u'M'));
            EXPECT_TRUE(place.notes.isEmpty() && !place.name.isEmpty());
            EXPECT_TRUE(pins.items.find(place.pin));
        }
        const int places = static_cast<int>(map.mapaPines.size());
        EXPECT_EQ(names.size(), places);
        EXPECT_GE(places, 1);
        EXPECT_LE(places, rounded(alto * ancho * 0.001) + 1);
        EXPECT_EQ(map.latNorte, 45);
        EXPECT_EQ(map.latSur, -45);
        EXPECT_EQ(map.notasMapa, u"mías"_s);
        EXPECT_FALSE(map.nombre.isEmpty());
    }
}

TEST_F(GenerationTest, OneSeedGivesOneWorld)
{
    const TempAppFolder own;
    own.write(u"gramaticas/Nombres de lugares.txt"_s, "[a]\r\n1|  Vega \r\n\xD1u; el r\xEDo\r\n");
    Palette palette(pinesKind());
    for (const QString& name : {u"Aldea"_s, u"Mina"_s, u"Torre"_s})
        palette.items.add(name, {}).setIcon(1);
    const struct {
        int alto;
        int ancho;
        std::uint64_t seed;
        QString tiles;
        QString places;
    } cases[]{{5, 7, 2,
               u"T4;T4;T1;T1;T4;T3;T4;"
               "P2;M2;M2;T1;M3;M2;M2;"
               "M3;M3;M1;M1;M1;M2;M2;"
               "T4;T2;T1;B1;M3;M3;M2;"
               "T4;M2;M1;M2;M2;T1;T4;"_s,
               u"3;0;Mina;Ñu, el río;|3;1;Mina;  Vega ;|"_s},
              {5, 7, 3,
               u"B1;M2;M3;T1;T2;B2;M3;"
               "T3;P2;T2;T3;T2;M2;M2;"
               "B1;T1;T2;T3;M3;T1;M2;"
               "T4;T3;T3;T2;M3;T1;M3;"
               "T1;T3;T1;M2;M1;M3;T1;"_s,
               u"0;3;Aldea;Ñu, el río;|0;5;Aldea;  Vega ;|"_s},
              {6, 3, 1, u"T1;M3;T1;T2;T2;M3;T1;T2;M1;T3;T3;M2;B2;T4;T1;T2;P2;T1;"_s,
               u"0;2;Aldea;  Vega ;|4;1;Torre;Ñu, el río;|"_s}};
    for (const auto& c : cases) {
        WorldMap map = emptyMap(c.alto, c.ancho);
        platform::randomSource().seed(c.seed);
        generarMundo(map, palette);
        const QString text = platform::fromWindows1252(mapFileBytes(map));
        EXPECT_EQ(text, u"Vega\r\n%1;%2\r\n45;-45\r\n\r\n%3\r\n%4\r\n"_s.arg(
                            QString::number(c.alto), QString::number(c.ancho), c.tiles, c.places));
    }
    // A larger one, and the next after it, by digest.
    platform::randomSource().seed(12);
    QByteArrayList digests;
    for (int i = 0; i < 2; ++i) {
        WorldMap map = emptyMap(75, 50);
        generarMundo(map, palette);
        digests.append(
            QCryptographicHash::hash(mapFileBytes(map), QCryptographicHash::Sha1).toHex().left(12));
    }
    EXPECT_EQ(digests, (QByteArrayList{"c4dcbe142148", "d979012acb09"}))
        << digests.join(' ').toStdString();
}

TEST(Terrain, TakesAsLongPerCellInAnyShape)
{
    constexpr int perCell = 15; // a square takes five
    for (const auto& [alto, ancho] : {std::pair(150, 150),
                                      {100, 100},
                                      {50, 150},
                                      {75, 300},
                                      {86, 344},
                                      {129, 513},
                                      {1, 999},
                                      {999, 1},
                                      {2, 999},
                                      {30, 3000},
                                      {3000, 30},
                                      {1, 32'767},
                                      {32'767, 1}}) {
        WorldMap map;
        map.mapaTiles = platform::Grid<QString>(alto, ancho);
        const int most = perCell * alto * ancho + 8;
        ASSERT_LT(drawsOf([&] { generarTerreno(map); }, most), most) << alto << " x " << ancho;
    }
}

TEST(Terrain, IsDrawnFromTheStandardSequence)
{
    for (const std::uint64_t seed : {0ull, 1ull, 77ull, 0xFFFFFFFFFFFFFFFFull}) {
        std::mt19937_64 standard(seed);
        platform::MersenneTwister ours(seed);
        for (int i = 0; i < 2000; ++i)
            ASSERT_EQ(ours.next(), standard()) << seed << ", " << i;
    }
}

TEST(Terrain, BandsBeginWhereTheyShould)
{
    const auto expectBand = [](int from, int to, const QString& tile) {
        EXPECT_EQ(elevationTile(from), tile);
        EXPECT_EQ(elevationTile(to), tile);
    };
    expectBand(240, 253, u"P2"_s);
    expectBand(230, 239, u"P1"_s);
    expectBand(200, 229, u"T4"_s);
    expectBand(170, 199, u"T3"_s);
    expectBand(135, 169, u"T2"_s);
    expectBand(100, 134, u"T1"_s);
    expectBand(70, 99, u"M3"_s);
    expectBand(30, 69, u"M2"_s);
    expectBand(0, 29, u"M1"_s);
    for (const QString& land : {u"T1"_s, u"P2"_s}) {
        EXPECT_EQ(vegetationTile(220, land), land);
        EXPECT_EQ(vegetationTile(221, land), u"B1"_s);
        EXPECT_EQ(vegetationTile(240, land), u"B1"_s);
        EXPECT_EQ(vegetationTile(241, land), u"B2"_s);
    }
    EXPECT_EQ(vegetationTile(253, u"M3"_s), u"M3"_s);
}

TEST(Terrain, HalvesRoundToTheEvenNeighbour)
{
    for (int dividend = -4000; dividend <= 4000; ++dividend) {
        for (const int divisor : {2, 4, 50, 75, 150})
            ASSERT_EQ(Procs::roundedQuotient(dividend, divisor),
                      rounded(static_cast<double>(dividend) / divisor));
    }
}

TEST(Terrain, OffsetsFollowTheRowsARectangleSpans)
{
    // With level corners the middle of an edge shows the offset it was given.
    const auto widest = [](int alto, int rows) {
        int largest = 0;
        for (int seed = 0; seed < 400; ++seed) {
            platform::randomSource().seed(static_cast<std::uint64_t>(seed));
            HeightGrid grid(alto + 1, 5, 600);
            for (int row = 0; row <= alto; ++row)
                grid(row, 1) = 0; // only the middle column is there to be filled
            subdividirAlturas(grid, 0, rows, 0, 2);
            largest = std::max(largest, std::abs(grid(0, 1) - 600));
        }
        return largest;
    };
    for (const auto& [alto, amplitude] : {std::pair(50, 502), {75, 505}, {100, 507}, {150, 509}}) {
        const int found = widest(alto, alto - 1);
        EXPECT_LE(found, amplitude);
        EXPECT_GE(found, amplitude - 8);
    }
    EXPECT_EQ(widest(100, 1), 5);
    EXPECT_EQ(widest(100, 0), 0);
}

TEST(Terrain, SubdividingReachesEveryCellAndNoOther)
{
    const QList<int> sides = QList<int>(sizes.begin(), sizes.end()) + QList<int>{1, 3, 17};
    for (const int alto : sides) {
        for (const int ancho : sides) {
            platform::Grid<char> reached(alto + 1, ancho + 1);
            // A cell may come out as 0 by chance, but not four times.
            for (std::uint64_t seed = 1; seed <= 4; ++seed) {
                platform::randomSource().seed(seed);
                HeightGrid grid(alto + 1, ancho + 1);
                for (const int row : {0, alto - 1}) {
                    for (const int column : {0, ancho - 1})
                        grid(row, column) = 100;
                }
                subdividirAlturas(grid, 0, alto - 1, 0, ancho - 1);
                for (int row = 0; row <= alto; ++row) {
                    for (int column = 0; column <= ancho; ++column) {
                        if (grid(row, column) != 0)
                            reached(row, column) = 1;
                    }
                }
            }
            EXPECT_EQ(std::count(reached.begin(), reached.end(), 1), alto * ancho);
            EXPECT_FALSE(reached(alto, 0) || reached(0, ancho));
        }
    }
}

TEST(Terrain, NormalisingSpansFromZero)
{
    HeightGrid grid(2, 4);
    grid(0, 0) = -100;
    grid(0, 2) = 300;
    grid(1, 1) = 9999; // a spare cell takes no part
    normalizarAlturas(grid, 1, 254);
    EXPECT_EQ(grid(0, 0), 0);
    EXPECT_EQ(grid(0, 1), 63);
    EXPECT_TRUE(grid(0, 2) == 252 || grid(0, 2) == 253);
    EXPECT_EQ(grid(1, 1), 9999);
    HeightGrid high(2, 3);
    high(0, 0) = 100;
    high(0, 1) = 200;
    normalizarAlturas(high, 1, 254);
    EXPECT_EQ(high(0, 0), 126) << "scaled from 0, not from the lowest";
    HeightGrid flat(3, 3);
    normalizarAlturas(flat, 1, 254);
    EXPECT_EQ(flat, HeightGrid(3, 3));
}

TEST_F(GenerationTest, SettlementsTakeWhatThePaletteAndGrammarGive)
{
    const TempAppFolder own;
    own.write(u"gramaticas/Nombres de lugares.txt"_s, "[a]\r\nVega; \r\n");
    WorldMap map = emptyMap(150, 150);
    map.mapaTiles = platform::Grid<QString>(150, 150, u"T1"_s);
    Palette one(pinesKind());
    colocarPoblados(map, one);
    EXPECT_TRUE(map.mapaPines.empty()) << "no pins, no settlements";
    one.items.add(u"Sin imagen"_s, {});
    one.items.add(u"Aldea"_s, {}).setIcon(1);
    platform::randomSource().seed(4);
    while (map.mapaPines.size() < 12) {
        map.mapaPines.clear();
        colocarPoblados(map, one);
    }
    QStringList found;
    for (const auto& [cell, place] : map.mapaPines) {
        EXPECT_EQ(place.pin, u"Aldea"_s);
        found.append(place.name);
    }
    EXPECT_TRUE(found.contains(u"Vega, "_s)) << found.join(u' ').toStdString();
    EXPECT_TRUE(found.contains(u"Vega,  2"_s)) << "a name that is taken gets a numeral";
    EXPECT_EQ(QSet<QString>(found.begin(), found.end()).size(), found.size());
    WorldMap sea = emptyMap(400, 400);
    sea.mapaTiles = platform::Grid<QString>(400, 400, u"M2"_s);
    colocarPoblados(sea, one); // ends, with nowhere to go
    EXPECT_TRUE(sea.mapaPines.empty());
    sea.mapaTiles(123, 321) = u"T1"_s;
    constexpr int most = 12 * 400 * 400;
    EXPECT_LT(drawsOf([&] { colocarPoblados(sea, one); }, most), most) << "looks for it too long";
    EXPECT_TRUE(sea.placeAt({321, 123}));
}

TEST_F(GenerationTest, TheClimateFollowsLatitudeAndTerrain)
{
    const TempAppFolder own;
    Palette plain(tilesKind());
    plain.items.add(u"a"_s, {}).setSubItem(u"temperatura"_s, u"0"_s);
    plain.items.add(u"frío"_s, {}).setSubItem(u"temperatura"_s, u"-4.5"_s);
    plain.items.add(u"raro"_s, {}).setSubItem(u"temperatura"_s, u"tibio"_s);
    WorldMap map = emptyMap(2, 3);
    map.mapaTiles = platform::Grid<QString>(2, 3, u"a"_s);
    map.latNorte = 30;
    map.latSur = -30;
    EXPECT_EQ(climateReport(map, plain, u","_s), u"60\r\n30\r\n0 0 0 \r\n750 750 750 \r\n"_s);
    map.mapaTiles(1, 1) = u"frío"_s; // -4.5 rounds to -4
    map.latSur = -45;
    EXPECT_EQ(climateReport(map, plain, u","_s),
              u"75\r\n37,5\r\n150 150 150 \r\n900 820 900 \r\n"_s);
    map.mapaTiles(0, 2) = u"raro"_s;
    const auto report = [&] { climateReport(map, plain, u","_s); };
    expectError(report, platform::ErrorNumber::NoSuchKey, {u"«raro»"_s, u"X:2 Y:0"_s});
    // Single precision decides figures that fall near a whole number.
    map = emptyMap(100, 1);
    map.mapaTiles = platform::Grid<QString>(100, 1, u"a"_s);
    map.latNorte = 45;
    map.latSur = -45;
    const QStringList lines = climateReport(map, plain, u"."_s).split(u"\r\n"_s);
    EXPECT_EQ(lines[1], u"0.9"_s);
    for (int row = 0; row < 100; ++row)
        EXPECT_EQ(lines[row + 2].toInt(), row < 49 ? 15 * (49 - row) - 1 : 15 * (row - 49)) << row;
    map.latSur = map.latNorte;
    expectError(report, platform::ErrorNumber::BadFormat, {u"latitudes"_s});
}
