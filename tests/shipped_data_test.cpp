// The files that ship with the program, checked as a user's program would read them.
#include "art/contrast.h"
#include "support.h"
#include "worldmap/definitions.h"
#include "worldmap/map_file.h"

#include <QDir>
#include <QSet>
#include <array>

using namespace Qt::StringLiterals;

namespace {

class ShippedData : public testing::Test
{
protected:
    void SetUp() override
    {
        app.addShippedData();
        loadDefinitions(tiles, pictures.colTiles, pictures.colMascarasTiles);
        loadDefinitions(pins, pictures.colPines, pictures.colMascarasPines);
    }

    TempAppFolder app;
    Palette tiles{tilesKind()};
    Palette pins{pinesKind()};
    MapPictures pictures;
};

// How far row y of a cell's shape is inset on either side, in pixels.
constexpr std::array cellInsets{4, 3, 3, 2, 1, 1, 0, 0, 1, 1, 2, 3, 3, 4};

bool insideCell(int x, int y)
{
    const int inset = cellInsets[static_cast<std::size_t>(y)];
    return x >= inset && x < 15 - inset;
}

std::vector<art::Rgb> cellPixels(const QImage& tile)
{
    std::vector<art::Rgb> pixels;
    for (int y = 0; y < 14; ++y) {
        for (int x = 0; x < 15; ++x) {
            const QColor colour = tile.pixelColor(x, y);
            if (insideCell(x, y))
                pixels.push_back({static_cast<std::uint8_t>(colour.red()),
                                  static_cast<std::uint8_t>(colour.green()),
                                  static_cast<std::uint8_t>(colour.blue())});
        }
    }
    return pixels;
}

} // namespace

TEST_F(ShippedData, MapsOpenAndSaveByteForByte)
{
    const QStringList maps = QDir(app.path(u"mapas"_s)).entryList({u"*.map"_s}, QDir::Files);
    ASSERT_GE(maps.size(), 2);
    QSet<std::pair<int, int>> sizes;
    for (const QString& name : maps) {
        SCOPED_TRACE(name.toStdString());
        const QByteArray bytes = app.read(u"mapas/"_s + name);
        const WorldMap map = readMapFile(
            app.path(u"mapas/"_s + name),
            [&](const QString& t) { return pictures.colTiles.contains(t); },
            [&](const QString& p) { return pictures.colPines.contains(p); });
        EXPECT_EQ(map.nombre + u".map"_s, name);
        ASSERT_TRUE(QFile::remove(app.path(u"mapas/"_s + name)));
        saveMapFile(map);
        EXPECT_TRUE(app.read(u"mapas/"_s + name) == bytes);
        sizes.insert({map.alto(), map.ancho()});
        for (const auto& [cell, place] : map.mapaPines)
            EXPECT_FALSE(map.tileAt(cell).contains(u'M')) << place.name.toStdString();
    }
    EXPECT_EQ(sizes.size(), maps.size()) << "maps of different sizes were meant";
}

TEST_F(ShippedData, TilesInterlockWithoutHolesOrOverlap)
{
    EXPECT_GE(tiles.items.count(), 24);
    for (auto mask = pictures.colMascarasTiles.cbegin(); mask != pictures.colMascarasTiles.cend();
         ++mask) {
        SCOPED_TRACE(mask.key().toStdString());
        ASSERT_NE(mask.value(), SIN_MASCARA);
        const QImage& picture = pictures.colTiles.value(mask.key())->image();
        ASSERT_EQ(picture.size(), QSize(15, 14));
        ASSERT_EQ(mask.value()->image().size(), QSize(15, 14));
        for (int y = 0; y < 14; ++y) {
            for (int x = 0; x < 15; ++x) {
                ASSERT_EQ(mask.value()->image().pixel(x, y),
                          insideCell(x, y) ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
                ASSERT_TRUE(insideCell(x, y) || picture.pixel(x, y) == qRgb(0, 0, 0));
            }
        }
    }
    // Laid over a field of cells, the shape covers every inner pixel exactly once.
    platform::Grid<int> covered(120, 120);
    for (int row = 0; row < 7; ++row) {
        for (int column = 0; column < 9; ++column) {
            for (int y = 0; y < 14; ++y) {
                for (int x = 0; x < 15; ++x)
                    covered(14 * row + 7 * (column & 1) + y, 11 * column + x) += insideCell(x, y);
            }
        }
    }
    for (int y = 14; y < 90; ++y) {
        for (int x = 15; x < 90; ++x)
            ASSERT_EQ(covered(y, x), 1) << x << ',' << y;
    }
}

TEST_F(ShippedData, TilesAreToldApartByEveryEye)
{
    const art::TileLook red = art::lookAt({{255, 0, 0}}, art::Sight::full);
    EXPECT_NEAR(red.mean.lightness, 53.24, 0.01); // as published
    EXPECT_NEAR(red.mean.a, 80.09, 0.01);
    EXPECT_NEAR(red.mean.b, 67.20, 0.01);
    std::map<std::string, std::vector<art::Rgb>> pixels;
    std::vector<std::string> names;
    for (auto tile = pictures.colTiles.cbegin(); tile != pictures.colTiles.cend(); ++tile) {
        names.push_back(tile.key().toStdString());
        pixels[names.back()] = cellPixels(tile.value()->image());
    }
    for (const art::Sight sight : art::sights) {
        for (const art::TilePair& pair : art::pairsToTellApart(names)) {
            const art::TileLook one = art::lookAt(pixels.at(pair.one), sight);
            const art::TileLook other = art::lookAt(pixels.at(pair.other), sight);
            EXPECT_TRUE(art::toldApart(one, other))
                << pair.one << " and " << pair.other << " differ by "
                << art::lightnessDifference(one, other) << " for sight " << static_cast<int>(sight);
        }
    }
}

TEST_F(ShippedData, DefinitionsServeGeneratorRoadsAndClimate)
{
    for (const auto& name : {u"M1"_s, u"M2"_s, u"M3"_s, u"T1"_s, u"T2"_s, u"T3"_s, u"T4"_s, u"P1"_s,
                             u"P2"_s, u"B1"_s, u"B2"_s})
        EXPECT_TRUE(pictures.colTiles.contains(name)) << name.toStdString();
    for (int i = 0; i < tiles.items.count(); ++i) {
        const platform::ListItem& tile = tiles.items.at(i);
        SCOPED_TRACE(tile.key().toStdString());
        bool cost = false, temperature = false, people = false;
        tile.subItem(u"costo"_s).toInt(&cost);
        tile.subItem(u"temperatura"_s).toInt(&temperature); // the climate report rounds
        tile.subItem(u"habitantes"_s).toDouble(&people);
        EXPECT_TRUE(cost && temperature && people);
        EXPECT_FALSE(tile.text().isEmpty());
    }
    EXPECT_EQ(tiles.items.find(u"M1"_s)->subItem(u"costo"_s), u"-1"_s);
    EXPECT_GT(tiles.items.find(u"Hielo"_s)->subItem(u"temperatura"_s).toInt(),
              tiles.items.find(u"Desierto"_s)->subItem(u"temperatura"_s).toInt())
        << "the report's figure grows away from the equator: positive is colder";
    EXPECT_GE(pins.items.count(), 12);
    for (auto pin = pictures.colPines.cbegin(); pin != pictures.colPines.cend(); ++pin) {
        const auto mask = pictures.colMascarasPines.value(pin.key());
        const auto cell = pictures.colMascarasTiles.value(u"M1"_s);
        ASSERT_NE(mask, SIN_MASCARA) << pin.key().toStdString();
        for (int y = 0; y < pin.value()->height(); ++y) {
            for (int x = 0; x < pin.value()->width(); ++x) {
                const QRgb spared = mask->image().pixel(x, y);
                ASSERT_TRUE((spared & pin.value()->image().pixel(x, y) & 0xffffff) == 0)
                    << "the pin's picture must be black where its mask is white";
                ASSERT_TRUE((cell->image().pixel(x, y) & ~spared & 0xffffff) == 0)
                    << pin.key().toStdString() << " would lose what reaches out of its cell";
            }
        }
    }
}
