// Tables and maps of the tile editor: out, and back.
#include "exchange/csv_table.h"
#include "exchange/map_import.h"
#include "exported_map_test.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

class MapImportTest : public ExportedMapTest
{
protected:
    /// A map of any size, tiles and places, with texts that files may stumble over.
    void makeMap(unsigned seed)
    {
        std::mt19937 engine(seed);
        const auto below = [&](std::size_t n) { return static_cast<int>(engine() % n); };
        const QStringList texts{
            u"=1+1"_s,          u"''@x"_s,      u"'-"_s,    u"a,b"_s,       u"\"c\""_s,
            u"<d>&amp"_s,       u" blancos "_s, u"ñandú"_s, u"x\ny\n\nz"_s, u"\ttab"_s,
            QString(100, u'ñ'), u"]]>"_s,       u"'"_s};
        const auto anyText = [&] { return texts[below(static_cast<std::size_t>(texts.size()))]; };
        map = {};
        map.nombre = u"Mapa «%1»"_s.arg(seed);
        map.notasMapa = anyText();
        map.latNorte = below(90);
        map.latSur = -below(90);
        map.mapaTiles = platform::Grid<QString>(1 + below(12), 1 + below(12));
        for (QString& tile : map.mapaTiles) {
            if (below(5) != 0)
                tile = tiles.items.at(below(static_cast<std::size_t>(tiles.items.count()))).key();
        }
        for (int i = 0; i < 6; ++i) {
            const QPoint cell(below(static_cast<std::size_t>(map.ancho())),
                              below(static_cast<std::size_t>(map.alto())));
            const QString pin =
                pins.items.at(below(static_cast<std::size_t>(pins.items.count()))).key();
            const QString name = anyText().replace(u'\n', u' ') + QString::number(i);
            map.mapaPines[cell] = {pin, name, anyText()};
        }
    }

    void rewrite(const QString& path, const std::function<void(QByteArray&)>& change) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        change(bytes);
        file.resize(0);
        file.seek(0);
        file.write(bytes);
    }

    void expectRefused(const QString& path, const QStringList& fragments)
    {
        expectError([&] { importedInto(map, path, pictures); }, platform::ErrorNumber::BadFormat,
                    fragments);
    }
};

} // namespace

TEST_F(MapImportTest, WhatWasExportedComesBackEqual)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        makeMap(seed);
        const QSize size(map.ancho(), map.alto());
        EXPECT_EQ(readCsvPlaces(write(u"csv"_s), size, pictures), map.mapaPines);
        const QString tmx = write(u"tmx"_s);
        EXPECT_TRUE(readTmx(tmx, pictures) == map);
        WorldMap empty;
        empty.nombre = u"Otro"_s;
        empty.mapaTiles = platform::Grid<QString>(map.alto(), map.ancho());
        const WorldMap filled = importedInto(empty, tmx, pictures);
        EXPECT_EQ(filled.nombre, u"Otro"_s);
        EXPECT_TRUE(filled.mapaTiles == map.mapaTiles && filled.mapaPines == map.mapaPines);
    }
}

TEST(CsvTable, NoSpreadsheetTakesACellForAFormula)
{
    const std::vector<std::pair<QString, QString>> cases{
        {u"=1"_s, u"'=1"_s},   {u"+1"_s, u"'+1"_s}, {u"-x"_s, u"'-x"_s}, {u"@a"_s, u"'@a"_s},
        {u"'=1"_s, u"''=1"_s}, {u"'a"_s, u"'a"_s},  {u"a=1"_s, u"a=1"_s}};
    for (const auto& [text, cell] : cases) {
        EXPECT_EQ(guardedCell(text), cell);
        EXPECT_EQ(unguardedCell(cell), text);
    }
    EXPECT_EQ(csvLine({u"a,b"_s, u"c\"d"_s, u"e"_s}), u"\"a,b\",\"c\"\"d\",e\r\n"_s);
}

TEST_F(MapImportTest, ReadsTablesAsSpreadsheetsSaveThem)
{
    map.mapaTiles = platform::Grid<QString>(5, 5);
    const QString path = folder.path(u"t.csv"_s);
    const Places wanted{{{2, 1}, {u"Aldea"_s, u"Peñón"_s, u"una\ndos"_s}}};
    for (const QByteArray& text :
         {QByteArray("Fila;Columna;Pin;Nombre;Notas\r\n1;2;Aldea;Pe\xF1\xF3n;\"una\r\ndos\"\r\n"),
          QByteArray("notas\tnombre\tpin\tcolumna\tfila\n\"una\ndos\"\tPe\xC3\xB1\xC3\xB3n\tAldea\t"
                     "2\t1")}) {
        folder.write(u"t.csv"_s, text);
        EXPECT_EQ(importedInto(map, path, pictures).mapaPines, wanted);
    }
}

TEST_F(MapImportTest, RefusesTablesThatDoNotFitWithAllTheirFaults)
{
    map.mapaTiles = platform::Grid<QString>(5, 5);
    const QString path = folder.path(u"t.csv"_s);
    folder.write(u"t.csv"_s, "nombre,pin,columna\n");
    expectRefused(path, {u"Línea 1"_s, u"fila"_s});
    folder.write(u"t.csv"_s, "nombre,pin,columna,fila,notas\n"
                             "A,Aldea,1,1,\"x\ny\"\n"
                             "B,Aldea,1,1,\n"
                             "A,Aldea,2,1,\n"
                             "C,NoHay,5,0,\n"
                             "D,NoHay,3,0,\n"
                             "E;F,Aldea,4,0,\xD0\x96\n"
                             ",Aldea,0,0,\n"
                             "G,Aldea,uno,0,\n"
                             "H,Aldea\n"
                             "\"I,Aldea,0,1,\n");
    expectRefused(path, {u"Línea 4: el lugar «B» cae en la casilla de «A»"_s,
                         u"Línea 5: el nombre «A» está repetido"_s, u"Línea 6"_s,
                         u"fuera del mapa"_s, u"Línea 7"_s, u"«NoHay»"_s, u"Línea 8"_s, u"«;»"_s,
                         u"«Ж»"_s, u"Línea 9: un lugar no tiene nombre"_s, u"Línea 10"_s,
                         u"«uno»"_s, u"Línea 11: hay 2 campos"_s, u"Línea 12: las comillas"_s});
    expectError([&] { importedInto(map, folder.path(u"t.xls"_s), pictures); },
                platform::ErrorNumber::BadName, {u".tmx"_s});
}

TEST_F(MapImportTest, RefusesMapsThatDoNotFitWithAllTheirFaults)
{
    makeMap(1);
    map.mapaTiles = platform::Grid<QString>(3, 4);
    map.mapaPines = {{{1, 1}, {pins.items.at(0).key(), u"Uno"_s, {}}}};
    map.mapaTiles(0, 0) = tiles.items.at(0).key();
    const QString path = folder.path(u"x.tmx"_s);
    const int firstPin = write(u"tmx"_s).isEmpty()
                             ? 0
                             : static_cast<int>(1 + 30); // the sheet of terrains has so many
    struct Case {
        QByteArray from;
        QByteArray to;
        QStringList fragments;
    };
    const QByteArray pinText = QByteArray::number(firstPin);
    const std::vector<Case> cases{
        {"\n1,0,", "\n" + pinText + ",0,", {u"X:0 Y:0"_s, u"es un pin"_s}},
        {"\n1,0,", "\n2147483649,0,", {u"X:0 Y:0"_s, u"volteado"_s}},
        {"\n1,0,", "\n999,x,", {u"999"_s, u"«x»"_s}},
        {"\n1,0,", "\n1,", {u"hay 11 casillas"_s}},
        {"encoding=\"csv\"", "encoding=\"base64\" compression=\"zlib\"", {u"CSV"_s}},
        {"gid=\"" + pinText, "gid=\"1", {u"«Uno»"_s, u"un terreno"_s}},
        {" gid=\"" + pinText + "\"", "", {u"no es un lugar"_s}},
        {"x=\"11\"", "x=\"1100\"", {u"«Uno»"_s, u"fuera del mapa"_s}},
        {"staggeraxis=\"x\"", "staggeraxis=\"y\"", {u"staggeraxis"_s, u"Línea 2"_s}},
        {"tilewidth=\"15\"", "tilewidth=\"16\"", {u"15 × 14"_s}},
        {"infinite=\"0\"", "infinite=\"1\"", {u"infinito"_s}},
        {"<tileset firstgid=\"1\"", "<tileset source=\"a.tsx\" firstgid=\"1\"", {u"incrústelo"_s}},
        {"type=\"M1\"", "type=\"NoHay\"", {u"«NoHay»"_s}},
        {"<objectgroup", "<imagelayer/><objectgroup", {u"imagelayer"_s}},
        {"<objectgroup", "<layer name=\"Otra\"/><objectgroup", {u"«Otra»"_s}},
        {"<map", "<!DOCTYPE m [<!ENTITY a \"b\">]><map", {u"DOCTYPE"_s}},
        {"width=\"4\"", "width=\"40000\"", {u"no es posible"_s}},
        {"<map", "<mapa", {u"no es un mapa"_s}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.to.toStdString());
        write(u"tmx"_s);
        rewrite(path, [&](QByteArray& bytes) {
            const qsizetype at = bytes.indexOf(c.from);
            ASSERT_GE(at, 0);
            bytes.replace(at, c.from.size(), c.to);
        });
        expectRefused(path, QStringList{u"Línea"_s} + c.fragments);
    }
    write(u"tmx"_s);
    map.mapaTiles = platform::Grid<QString>(4, 4);
    expectRefused(path, {u"4 × 3"_s, u"4 × 4"_s});
}

TEST_F(MapImportTest, TakesObjectsFromWhereverTheyWereDragged)
{
    map.mapaTiles = platform::Grid<QString>(9, 9);
    map.mapaPines = {{{3, 4}, {pins.items.at(0).key(), u"Uno"_s, {}}}};
    const QString path = write(u"tmx"_s);
    rewrite(path, [](QByteArray& bytes) {
        bytes.replace("x=\"33\"", "x=\"37.2\"").replace("y=\"77\"", "y=\"72.5\"");
        bytes.replace("type=\"M1\"", "class=\"M1\"");
    });
    EXPECT_TRUE(importedInto(map, path, pictures) == map);
}

TEST_F(MapImportTest, SurvivesFilesThatWereCut)
{
    makeMap(5);
    for (const QString& suffix : {u"csv"_s, u"tmx"_s}) {
        const QString path = write(suffix);
        const qint64 size = QFileInfo(path).size();
        for (qint64 length = 0; length < size; length += 37) {
            write(suffix);
            ASSERT_TRUE(QFile::resize(path, length));
            try {
                const WorldMap read = importedInto(map, path, pictures);
                EXPECT_EQ(suffix, u"csv"_s) << length; // a table may end with any row
                EXPECT_LE(read.mapaPines.size(), map.mapaPines.size());
            } catch (const platform::Error& error) {
                EXPECT_FALSE(error.description.isEmpty());
            }
        }
    }
}

TEST_F(MapImportTest, WritesALineForEachCell)
{
    map.mapaTiles = platform::Grid<QString>(1, 100);
    map.mapaTiles(0, 0) = u"Mar hondo"_s;
    map.mapaPines = {{{1, 0}, {pins.items.at(0).key(), u"La \"Gata\""_s, {}}}};
    QFile file(write(u"txt"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    EXPECT_EQ(lines[0], "0101 Mar_hondo");
    EXPECT_EQ(lines[1], QString(u"0201 vacía \"La 'Gata'\""_s).toUtf8());
    EXPECT_EQ(lines[99], QString(u"100.01 vacía"_s).toUtf8());
    EXPECT_EQ(lines.size(), 101);
}
