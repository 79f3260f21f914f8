#include "support.h"
#include "worldmap/map_file.h"

#include <QDir>
#include <QFile>
#include <random>

using namespace Qt::StringLiterals;
using platform::ErrorNumber;

namespace {

bool isTile(const QString& name)
{
    return name == u"M1"_s || name == u"T1"_s || name == u"Ñandú"_s;
}

bool isPin(const QString& name)
{
    return name == u"Aldea"_s || name == u"Torre"_s;
}

WorldMap read(const TempAppFolder& app, const QString& file)
{
    return readMapFile(app.path(file), isTile, isPin);
}

WorldMap randomMap(int rows, int columns, unsigned seed)
{
    std::mt19937 engine(seed);
    WorldMap map;
    map.nombre = u"Año %1 — %2×%3"_s.arg(seed).arg(rows).arg(columns);
    map.latNorte = 45;
    map.latSur = -45;
    map.notasMapa = u"Una línea\notra, con «comillas» y 100 %1 €"_s;
    map.mapaTiles = platform::Grid<QString>(rows, columns);
    const QStringList tiles{u"M1"_s, u"T1"_s, u"Ñandú"_s, QString()};
    for (QString& tile : map.mapaTiles)
        tile = tiles[static_cast<qsizetype>(engine() % 4)];
    int places = 0;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            if (engine() % 20 == 0)
                map.mapaPines[{column, row}] = {u"Aldea"_s, u"Lugar %1"_s.arg(++places),
                                                u"nota\n\nlarga"_s};
        }
    }
    return map;
}

} // namespace

TEST(MapFile, WritesTheSixLines)
{
    const TempAppFolder app;
    WorldMap map;
    map.nombre = u"Isla Añil"_s;
    map.latNorte = 15;
    map.latSur = -30;
    map.notasMapa = u"uno\r\ndos"_s;
    map.mapaTiles = platform::Grid<QString>(2, 3, u"M1"_s);
    map.mapaTiles(1, 0) = u"T1"_s;
    map.mapaTiles(0, 2).clear();
    map.mapaPines[{2, 1}] = {u"Torre"_s, u"Faro"_s, u"se ve\nde lejos"_s};
    map.mapaPines[{0, 0}] = {u"Aldea"_s, u"Puerto"_s, {}};
    saveMapFile(map);
    EXPECT_EQ(app.read(u"mapas/Isla Añil.map"_s), "Isla A\xF1il\r\n2;3\r\n15;-30\r\nuno\xB6"
                                                  "dos\r\nM1;M1;;T1;M1;M1;\r\n"
                                                  "0;0;Aldea;Puerto;|1;2;Torre;Faro;se ve\xB6"
                                                  "de lejos|\r\n");

    map.mapaPines.clear();
    saveMapFile(map);
    EXPECT_TRUE(app.read(u"mapas/Isla Añil.map"_s).endsWith(";M1;\r\n\r\n"));
    EXPECT_EQ(QDir(app.path(u"mapas"_s)).entryList(QDir::Files).size(), 1);
}

TEST(MapFile, RoundTripsEverySizeByteForByte)
{
    const TempAppFolder app;
    unsigned seed = 0;
    for (const auto& [rows, columns] :
         {std::pair{1, 1}, std::pair{50, 75}, std::pair{75, 50}, std::pair{150, 150}}) {
        const WorldMap map = randomMap(rows, columns, ++seed);
        saveMapFile(map);
        const QString file = u"mapas/%1.map"_s.arg(map.nombre);
        const QByteArray bytes = app.read(file);
        const WorldMap again = read(app, file);
        EXPECT_EQ(again.nombre, map.nombre);
        EXPECT_TRUE(again == map);
        saveMapFile(again);
        EXPECT_EQ(app.read(file), bytes);
    }
}

TEST(MapFile, RefusesEveryMalformedFile)
{
    struct Case {
        const char* name;
        QByteArray file;
        QStringList fragments;
    };
    const QByteArray head = "Isla\r\n1;2\r\n45;-45\r\n\r\n";
    const QByteArray tiles = head + "M1;T1;\r\n";
    const std::vector<Case> cases{
        {"empty", "", {u"0"_s}},
        {"five lines", tiles, {u"seis líneas"_s, u"tiene 5"_s}},
        {"seven lines", tiles + "\r\nx\r\n", {u"tiene 7"_s}},
        {"size of one field",
         "Isla\r\n12\r\n4;5\r\n\r\n;\r\n\r\n",
         {u"línea 2"_s, u"dos números"_s}},
        {"letters for a size",
         "Isla\r\n1;dos\r\n4;5\r\n\r\n;\r\n\r\n",
         {u"línea 2"_s, u"el ancho"_s, u"«dos»"_s}},
        {"no rows", "Isla\r\n0;2\r\n4;5\r\n\r\n;\r\n\r\n", {u"línea 2"_s}},
        {"negative size", "Isla\r\n1;-2\r\n4;5\r\n\r\n;\r\n\r\n", {u"línea 2"_s}},
        {"size beyond 16 bits",
         "Isla\r\n1;32768\r\n4;5\r\n\r\n;\r\n\r\n",
         {u"línea 2"_s, u"«32768»"_s}},
        {"letters for a latitude",
         "Isla\r\n1;2\r\n45;sur\r\n\r\nM1;T1;\r\n\r\n",
         {u"línea 3"_s, u"la latitud sur"_s}},
        {"a cell too few", head + "M1;\r\n\r\n", {u"línea 5"_s, u"hay 1 "_s, u"tiene 2"_s}},
        {"a cell too many", head + "M1;T1;M1;\r\n\r\n", {u"línea 5"_s, u"hay 3 "_s}},
        {"last cell not ended", head + "M1;T1;M\r\n\r\n", {u"línea 5"_s}},
        {"undefined tile", head + "M1;Lava;\r\n\r\n", {u"línea 5"_s, u"«Lava»"_s, u"X:1 Y:0"_s}},
        {"undefined pin", tiles + "0;1;Nave;Argos;|\r\n", {u"línea 6"_s, u"«Nave»"_s}},
        {"row outside", tiles + "1;0;Aldea;A;|\r\n", {u"línea 6"_s, u"fuera del mapa"_s}},
        {"column outside", tiles + "0;2;Aldea;A;|\r\n", {u"fuera del mapa"_s}},
        {"negative row", tiles + "-1;0;Aldea;A;|\r\n", {u"fuera del mapa"_s}},
        {"letters for a row", tiles + "x;0;Aldea;A;|\r\n", {u"línea 6"_s, u"«x»"_s}},
        {"four fields", tiles + "0;0;Aldea;A|\r\n", {u"línea 6"_s, u"sino 4"_s}},
        {"six fields", tiles + "0;0;Aldea;A;b;c|\r\n", {u"sino 6"_s}},
        {"place not ended", tiles + "0;0;Aldea;A;|0;1;Torre;B;\r\n", {u"línea 6"_s, u"«|»"_s}},
        {"two places in a cell",
         tiles + "0;0;Aldea;A;|0;0;Torre;B;|\r\n",
         {u"ya tiene un lugar"_s}},
        {"two places of a name", tiles + "0;0;Aldea;A;|0;1;Torre;A;|\r\n", {u"repite el nombre"_s}},
        {"place without name", tiles + "0;0;Aldea;;|\r\n", {u"no tiene nombre"_s}}};
    const TempAppFolder app;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        app.write(u"m.map"_s, c.file);
        expectError([&] { read(app, u"m.map"_s); }, ErrorNumber::BadFormat,
                    QStringList{u"m.map"_s, u"línea"_s} + c.fragments);
    }
    app.write(u"m.map"_s, tiles + "0;0;Aldea;A;|\r\n"); // and the good one is good
    EXPECT_EQ(read(app, u"m.map"_s).placeAt({0, 0})->name, u"A"_s);
}

TEST(MapFile, RefusesWhatIsTooLargeBeforeMakingRoomForIt)
{
    const TempAppFolder app;
    app.write(u"m.map"_s, "Isla\r\n32767;32767\r\n4;5\r\n\r\nM1;\r\n\r\n");
    expectError([&] { read(app, u"m.map"_s); }, ErrorNumber::TooLarge,
                {u"línea 2"_s, u"4.000.000"_s, u"32767"_s});
    app.write(u"m.map"_s, QByteArray(100 * 1024 * 1024, ';'));
    expectError([&] { read(app, u"m.map"_s); }, ErrorNumber::TooLarge, {u"m.map"_s, u"100 MB"_s});
    QDir().mkpath(app.path(u"carpeta.map"_s));
    expectError([&] { read(app, u"carpeta.map"_s); }, ErrorNumber::FileUnreadable,
                {u"carpeta.map"_s});
}

TEST(MapFile, RefusesToWriteWhatItCouldNotReadBack)
{
    const TempAppFolder app;
    const WorldMap good = randomMap(2, 2, 1);
    saveMapFile(good);
    const QString file = u"mapas/%1.map"_s.arg(good.nombre);
    const QByteArray bytes = app.read(file);
    const auto expectRefused = [&](const std::function<void(WorldMap&)>& spoil,
                                   const QString& fragment) {
        WorldMap map = good;
        spoil(map);
        expectError([&] { saveMapFile(map); }, ErrorNumber::BadCharacter, {good.nombre, fragment});
        EXPECT_EQ(app.read(file), bytes);
    };
    expectRefused([](WorldMap& m) { m.notasMapa = u"a|b"_s; }, u"«|»"_s);
    expectRefused([](WorldMap& m) { m.notasMapa = u"Łódź"_s; }, u"«Ł»"_s);
    expectRefused(
        [](WorldMap& m) {
            m.mapaPines[{0, 0}] = {u"Aldea"_s, u"A"_s, u"b;c"_s};
        },
        u"«;»"_s);
    expectRefused([](WorldMap& m) { m.mapaPines[{0, 0}] = {u"Aldea"_s, u"A|"_s, {}}; }, u"«|»"_s);
    expectRefused([](WorldMap& m) { m.mapaPines[{0, 0}] = {u"Al|dea"_s, u"A"_s, {}}; }, u"«|»"_s);
    expectRefused(
        [](WorldMap& m) {
            m.mapaPines[{0, 0}] = {u"Aldea"_s, u"A\nB"_s, {}};
        },
        u"un salto de línea"_s);
    WorldMap nameless = good;
    nameless.mapaPines[{0, 0}] = {u"Aldea"_s, {}, u"notas"_s};
    expectError([&] { saveMapFile(nameless); }, ErrorNumber::BadFormat,
                {u"no se podría volver a leer"_s, u"no tiene nombre"_s});
    EXPECT_EQ(app.read(file), bytes);

    for (const auto& name :
         {u"a/b"_s, u"a\\b"_s, u"¿qué?"_s, u"x;y"_s, u"nul"_s, u"com7"_s, u" a"_s, u"a."_s, u".."_s,
          u"  "_s, u"dos\nlíneas"_s, u"Łódź"_s, QString(121, u'a')}) {
        SCOPED_TRACE(name.toStdString());
        EXPECT_TRUE(mapNameProblem(name).has_value());
        WorldMap map = good;
        map.nombre = name;
        expectError([&] { saveMapFile(map); }, ErrorNumber::BadName, {u"No se puede guardar"_s});
    }
    for (const auto& name : {u"Ávila d'Oro (2.ª)"_s, u"Nulia"_s, QString(120, u'ñ')})
        EXPECT_EQ(mapNameProblem(name), std::nullopt) << name.toStdString();
    EXPECT_EQ(QDir(app.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{u"mapas"_s});
    WorldMap alike = good; // another map, whose file is another
    alike.nombre = good.nombre.toUpper();
    saveMapFile(alike);
    EXPECT_EQ(app.read(file), bytes);
}

TEST(MapFile, AReadOnlyFolderIsNamedAndTheOldFileKept)
{
    const TempAppFolder app;
    WorldMap map = randomMap(20, 20, 1);
    saveMapFile(map);
    const QString file = u"mapas/%1.map"_s.arg(map.nombre);
    const QByteArray bytes = app.read(file);
    map.notasMapa = u"otras"_s;
    QFile::setPermissions(app.path(file), readOnlyFile);
    QFile::setPermissions(app.path(u"mapas"_s), readOnlyFolder);
    {
        const WithoutPrivileges plainUser;
        expectError([&] { saveMapFile(map); }, ErrorNumber::FileUnwritable,
                    {map.nombre, u"permisos"_s});
    }
    QFile::setPermissions(app.path(u"mapas"_s), openFolder);
    EXPECT_EQ(app.read(file), bytes);
}
