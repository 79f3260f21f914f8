// kestrune-cli as a script would call it: without a display, by its exit status and output.
#include "support.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <algorithm>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

struct Result {
    int status;
    QString out;
    QString err;
    QByteArray bytes{}; ///< of out
};

Result runProgram(const QString& program, const QStringList& arguments,
                  const QString& errorFile = {})
{
    QProcess process;
    process.setStandardErrorFile(errorFile);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
        environment.remove(name);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    const QByteArray bytes = process.readAllStandardOutput();
    return {process.exitCode(), QString::fromUtf8(bytes),
            QString::fromUtf8(process.readAllStandardError()), bytes};
}

Result run(const QStringList& arguments)
{
    return runProgram(QStringLiteral(KESTRUNE_CLI), arguments);
}

} // namespace

TEST(Cli, DrawsAMapByNameOrByPath)
{
    const TempAppFolder folder;
    const QString png = folder.path(u"m.PNG"_s);
    const QString path = shippedDataFolder() + u"/mapas/Señoríos de Carrasmonte.map"_s;
    QImage drawn;
    for (const QString& map :
         {path, u"Señoríos de Carrasmonte"_s, u"señoríos DE carrasmonte.map"_s, path.chopped(4)}) {
        QFile::remove(png);
        const Result result = run({u"dibujar"_s, u"--png="_s + png, u"--"_s, map});
        EXPECT_EQ(result.status, 0) << result.err.toStdString();
        EXPECT_TRUE(result.out.contains(png));
        const QImage picture(png);
        EXPECT_EQ(picture.size(), QSize(1654, 1057));
        EXPECT_TRUE(drawn.isNull() || drawn == picture);
        drawn = picture;
    }
    const Result piped = run({u"dibujar"_s, path, u"--png"_s, u"-"_s});
    EXPECT_EQ(QImage::fromData(piped.bytes, "PNG"), drawn);
    EXPECT_TRUE(piped.err.contains(u"1654 × 1057"_s));
}

TEST(Cli, RefusesBadCallsAndBadFilesWithNothingHalfWritten)
{
    const TempAppFolder folder;
    const QString png = folder.path(u"m.png"_s);
    folder.write(u"roto.map"_s, "x\r\n1;1\r\n1;2\r\n\r\nLava;\r\n\r\n");
    folder.write(u"bien.map"_s, "x\r\n1;1\r\n1;2\r\n\r\nM1;\r\n\r\n");
    const QString good = folder.path(u"bien.map"_s);
    folder.write(u"mapa.png"_s, folder.read(u"bien.map"_s));
    const auto generate = [](const QString& width, const QString& height, const QString& map) {
        return QStringList{u"generar"_s, u"--ancho"_s, width, u"--alto"_s,
                           height,       u"--mapa"_s,  map};
    };
    struct Case {
        QStringList arguments;
        QString fragment;
    };
    const std::vector<Case> cases{
        {{}, u"Órdenes"_s},
        {{u"volar"_s}, u"«volar»"_s},
        {{u"--nada"_s, u"dibujar"_s}, u"«--nada»"_s},
        {{u"dibujar"_s}, u"--png"_s},
        {{u"dibujar"_s, good}, u"--png"_s},
        {{u"dibujar"_s, good, u"--png"_s}, u"falta el valor de la opción «--png»"_s},
        {{u"dibujar"_s, good, u"--jpg="_s + png}, u"«--jpg»"_s},
        {{u"dibujar"_s, good, u"-x"_s}, u"«-x»"_s},
        {{u"dibujar"_s, good, u"--png"_s, folder.path(u"otro.map"_s)}, u"«.png»"_s},
        {{u"dibujar"_s, good, u"--png"_s, folder.path(u"mapa.png"_s)}, u"es un mapa"_s},
        {{u"dibujar"_s, good, good, u"--png"_s, png}, u"sobra"_s},
        {{u"dibujar"_s, good, u"--png"_s, png, u"--png"_s, png}, u"repetida"_s},
        {{u"dibujar"_s, u"no hay"_s, u"--png"_s, png}, u"«no hay»"_s},
        {{u"dibujar"_s, folder.path(), u"--png"_s, png}, u"carpeta"_s},
        {{u"dibujar"_s, folder.path(u"roto.map"_s), u"--png"_s, png}, u"línea 5"_s},
        {{u"dibujar"_s, good, u"--png"_s, folder.path(u"no/m.png"_s)}, u"No se puede guardar"_s},
        {{u"dibujar"_s, good, u"--png"_s, folder.path()}, u"carpeta"_s},
        {{u"dibujar"_s, good, u"--png"_s, good}, u"el lugar del mapa"_s},
        {{u"dibujar"_s, good, u"--png"_s, png, u"--escala"_s, u"0"_s}, u"1 a 16"_s},
        {{u"generar"_s, u"--ancho"_s, u"5"_s, u"--alto"_s, u"5"_s}, u"--mapa"_s},
        {generate(u"1"_s, u"5"_s, png), u"2 a 1000"_s},
        {generate(u"5"_s, u"1001"_s, png), u"2 a 1000"_s},
        {generate(u"5"_s, u"cinco"_s, png), u"«cinco»"_s},
        {generate(u"5"_s, u"5"_s, png) << u"--semilla"_s << u"-1"_s, u"--semilla"_s},
        {generate(u"5"_s, u"5"_s, png) << u"--nombre"_s << u"a/b"_s, u"«/»"_s},
        {generate(u"5"_s, u"5"_s, png) << u"--norte=91"_s, u"--norte"_s},
        {generate(u"5"_s, u"5"_s, png) << u"--norte=-45"_s, u"mayor que --sur"_s},
        {generate(u"5"_s, u"5"_s, png) << u"--notas=a;b"_s, u"--notas no puede contener «;»"_s},
        {generate(u"5"_s, u"5"_s, png) << u"--notas=\u0416"_s, u"--notas contiene «\u0416»"_s},
        {generate(u"5"_s, u"5"_s, png) << u"--png"_s << png, u"el lugar del mapa"_s},
        {generate(u"5"_s, u"5"_s, png) << u"--png"_s << folder.path(u"no/m.png"_s), u"carpeta"_s},
        {generate(u"5"_s, u"5"_s, folder.path(u"no/m.map"_s)) << u"--png"_s << png, u"carpeta"_s},
        {generate(u"5"_s, u"5"_s, png) << u"x"_s, u"sobra"_s},
        {generate(u"5"_s, u"5"_s, {}), u"vacía"_s},
        {generate(u"5"_s, u"5"_s, u"/dev/full"_s) << u"--png"_s << png, u"corriente"_s},
        {generate(u"5"_s, u"5"_s, folder.path(QString(300, u'x'))), u"demasiado largo"_s},
        {{u"ruta"_s, good, u"--desde"_s, u"0,0"_s}, u"--hasta"_s},
        {{u"ruta"_s, good, u"--desde"_s, u"0,0"_s, u"--hasta"_s, u"1,0"_s}, u"fuera del mapa"_s},
        {{u"ruta"_s, good, u"--desde"_s, u"-1,0"_s, u"--hasta"_s, u"0,0"_s}, u"fuera del mapa"_s},
        {{u"ruta"_s, good, u"--desde"_s, u"0;0"_s, u"--hasta"_s, u"0,0"_s}, u"«0;0»"_s},
        {{u"clima"_s}, u"falta el mapa"_s},
        {{u"clima"_s, folder.path(u"roto.map"_s)}, u"línea 5"_s},
        {{u"local"_s}, u"--texto"_s},
        {{u"local"_s, u"--texto"_s, u"--png"_s, u"-"_s}, u"no caben"_s},
        {{u"local"_s, u"--texto=1"_s}, u"«--texto» no lleva valor"_s},
        {{u"local"_s, u"--png"_s, folder.path(u"no/m.png"_s)}, u"carpeta"_s},
        {{u"local"_s, u"--texto"_s, u"--semilla"_s, u"x"_s}, u"--semilla"_s},
        {{u"nombres"_s}, u"falta"_s},
        {{u"nombres"_s, u"0"_s}, u"«0»"_s},
        {{u"nombres"_s, u"2"_s, u"--gramatica"_s, u"no hay"_s}, u"«no hay»"_s},
        {{u"nombres"_s, u"2"_s, u"--gramatica"_s, good}, u"regla"_s},
        {{u"validar"_s, good, u"no hay"_s}, u"«no hay»"_s}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.arguments.join(u' ').toStdString());
        const Result result = run(c.arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.err.contains(c.fragment)) << result.err.toStdString();
        EXPECT_TRUE(result.out.isEmpty());
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 3);
}

TEST(Cli, GeneratesOneWorldFromOneSeed)
{
    const TempAppFolder folder;
    for (const auto& name : {u"1/a.png"_s, u"2/a.png"_s})
        folder.write(name, "");
    const auto generate = [&](const QString& name, const QStringList& more) {
        return run(QStringList{u"generar"_s, u"--ancho"_s, u"60"_s, u"--alto=40"_s, u"--mapa"_s,
                               folder.path(name)} +
                   more);
    };
    const Result first = generate(u"1/m.map"_s, {u"--semilla"_s, u"77"_s, u"--png"_s,
                                                 folder.path(u"1/a.png"_s), u"--escala"_s, u"2"_s});
    EXPECT_EQ(first.status, 0) << first.err.toStdString();
    EXPECT_TRUE(first.err.isEmpty()) << first.err.toStdString();
    EXPECT_EQ(QImage(folder.path(u"1/a.png"_s)).size(), QSize(1328, 1134));
    EXPECT_TRUE(first.out.contains(u"1328 × 1134"_s)) << first.out.toStdString();
    EXPECT_EQ(generate(u"2/m.map"_s, {u"--semilla"_s, u"77"_s}).status, 0);
    EXPECT_EQ(folder.read(u"1/m.map"_s), folder.read(u"2/m.map"_s));
    EXPECT_TRUE(folder.read(u"1/m.map"_s).startsWith("m\r\n40;60\r\n45;-45\r\n\r\n"));

    // The seed that is told gives the same again; the picture goes out alone.
    const Result any = generate(u"3.mapa"_s, {u"--png=-"_s});
    EXPECT_EQ(QImage::fromData(any.bytes, "PNG").size(), QSize(664, 567));
    EXPECT_TRUE(any.err.startsWith("Semilla: "_L1)) << any.err.toStdString();
    const QString seed = any.err.section(u'\n', 0, 0).section(u' ', 1);
    EXPECT_EQ(generate(u"4"_s, {u"--semilla="_s + seed, u"--nombre=3.mapa"_s}).status, 0);
    EXPECT_EQ(folder.read(u"3.mapa"_s), folder.read(u"4"_s));

    EXPECT_EQ(generate(u"d.map"_s, {u"--nombre"_s, u"N\u0303andú"_s, u"--norte"_s, u"80"_s,
                                    u"--sur=-10"_s, u"--notas=uno\ndos"_s})
                  .status,
              0);
    EXPECT_TRUE(folder.read(u"d.map"_s)
                    .startsWith("\xD1"
                                "and\xFA\r\n40;60\r\n80;-10\r\nuno\xB6"
                                "dos\r\n"));
    EXPECT_EQ(generate(u"CON.map"_s, {}).status, 0);
    EXPECT_FALSE(folder.read(u"CON.map"_s).startsWith("CON\r\n")) << "no map can have that name";
    EXPECT_EQ(run({u"validar"_s, folder.path(u"1/m.map"_s), folder.path(u"CON.map"_s)}).status, 0);
}

TEST(Cli, TellsHowFarItHasComeOnATerminal)
{
#ifdef Q_OS_UNIX
    const TempAppFolder folder;
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    const auto generate = [&](const QString& cells, const QString& errorFile) {
        return runProgram(QStringLiteral(KESTRUNE_CLI),
                          {u"generar"_s, u"--ancho"_s, cells, u"--alto"_s, cells, u"--semilla=1"_s,
                           u"--mapa"_s, folder.path(u"m.map"_s)},
                          errorFile);
    };
    const QString name = QString::fromLocal8Bit(ptsname(terminal));
    EXPECT_EQ(generate(u"20"_s, name).status, 0);
    EXPECT_EQ(generate(u"500"_s, name).status, 0);
    QByteArray told(1000, '\0');
    told.truncate(std::max<qsizetype>(0, read(terminal, told.data(), 1000)));
    close(terminal);
    EXPECT_TRUE(told.startsWith("\rTerreno")) << told.toStdString();
    EXPECT_TRUE(told.endsWith(" \r")) << "the line is gone in the end";
    EXPECT_EQ(told.count("Terreno"), 1) << "small maps take no time";
    EXPECT_TRUE(generate(u"500"_s, {}).err.isEmpty());
#endif
}

TEST(Cli, AnswersFromAMap)
{
    const TempAppFolder folder;
    folder.write(u"m.map"_s, "Vado\r\n2;5\r\n30;-30\r\n\r\n"
                             "T2;T2;M1;T2;P2;T2;T2;T1;T2;T2;\r\n"
                             "0;0;Aldea;Vado;|0;4;Mina;\xC1"
                             "spera, al sol;una\xB6otra|\r\n");
    const Result places = run({u"lugares"_s, folder.path(u"m"_s)});
    EXPECT_EQ(places.status, 0) << places.err.toStdString();
    EXPECT_EQ(places.out, u"0;0;Aldea;Vado;\n0;4;Mina;Áspera, al sol;una¶otra\n"_s);
    const QString map = folder.path(u"m.map"_s);
    const QString png = folder.path(u"m.png"_s);
    const Result route =
        run({u"ruta"_s, map, u"--desde"_s, u"0,0"_s, u"--hasta"_s, u"4,0"_s, u"--png"_s, png});
    EXPECT_EQ(route.status, 0) << route.err.toStdString();
    EXPECT_EQ(route.out.section(u'\n', 0, 0), u"0;4|0;3|1;2|0;1|0;0"_s);
    EXPECT_TRUE(route.out.contains(u"\nCasillas: 5\nCosto: 28\n"_s)) << route.out.toStdString();
    const Result back = run({u"ruta"_s, map, u"--desde"_s, u"áspera, al SOL"_s, u"--hasta=Vado"_s});
    EXPECT_EQ(back.out, u"0;0|0;1|1;2|0;3|0;4\nCasillas: 5\nCosto: 8\n"_s)
        << "leaving a dear cell costs nothing";
    EXPECT_EQ(QImage(png).pixel(7 + 44, 7), qRgb(60, 30, 20));
    const Result none = run({u"ruta"_s, map, u"--desde"_s, u"0,0"_s, u"--hasta"_s, u"2,0"_s,
                             u"--png"_s, folder.path(u"no.png"_s)});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, u"No encontrado\n"_s);
    EXPECT_FALSE(QFile::exists(folder.path(u"no.png"_s)));

    const Result climate = run({u"clima"_s, map});
    EXPECT_EQ(climate.status, 0);
    EXPECT_EQ(climate.out.section(u'\n', 0, 1), u"60\n30"_s);
    EXPECT_EQ(climate.out.count(u'\n'), 4);

    folder.write(u"g.txt"_s, "[a]\r\nCa\xF1"
                             "ada\r\n");
    const Result names = run({u"nombres"_s, u"3"_s, u"--gramatica"_s, folder.path(u"g.txt"_s)});
    EXPECT_EQ(names.out, u"Cañada\nCañada\nCañada\n"_s);
    const Result seeded = run({u"nombres"_s, u"7"_s, u"--semilla=3"_s});
    EXPECT_EQ(seeded.out.count(u'\n'), 7);
    EXPECT_EQ(run({u"nombres"_s, u"--semilla"_s, u"3"_s, u"7"_s}).out, seeded.out);
}

TEST(Cli, MakesALocalMapAsPictureOrText)
{
    const TempAppFolder folder;
    const QString png = folder.path(u"l.png"_s);
    EXPECT_EQ(run({u"local"_s, u"--semilla"_s, u"9"_s, u"--png"_s, png}).status, 0);
    const QImage first(png);
    EXPECT_EQ(first.size(), QSize(1600, 1600));
    const Result both = run({u"local"_s, u"--png"_s, png, u"--texto"_s, u"--semilla"_s, u"9"_s});
    EXPECT_EQ(QImage(png), first);
    EXPECT_TRUE(both.err.contains(u"1600 × 1600"_s));
    EXPECT_EQ(run({u"local"_s, u"--texto"_s, u"--semilla=9"_s}).out, both.out);
    EXPECT_EQ(QImage::fromData(run({u"local"_s, u"--semilla=9"_s, u"--png=-"_s}).bytes), first);
    const QStringList rows = both.out.split(u'\n', Qt::SkipEmptyParts);
    EXPECT_EQ(rows.size(), 50);
    for (const QString& row : rows)
        EXPECT_EQ(row.split(u';').size(), 50);
}

TEST(Cli, TellsOfEveryFaultInMaps)
{
    const TempAppFolder folder;
    folder.write(u"malo.map"_s, "x\r\n2;2\r\nnorte;5\r\n\r\nM1;Lava;Lava;M2;\r\n"
                                "9;9;Aldea;Lejos;|0;0;Nave;Cerca;|1;1;Aldea;Bien;|\r\n");
    const Result result = run({u"validar"_s, folder.path(u"malo.map"_s)});
    EXPECT_EQ(result.status, 1);
    for (const QString& fragment : {u"línea 3"_s, u"«Lava» de la casilla X:1 Y:0"_s, u"«9;9;"_s,
                                    u"«Nave»"_s, u"Faltas: 4."_s})
        EXPECT_TRUE(result.out.contains(fragment)) << result.out.toStdString();
    EXPECT_FALSE(result.out.contains(u"Bien"_s));
    const Result shipped = run({u"validar"_s});
    EXPECT_EQ(shipped.status, 0) << shipped.out.toStdString();
}

TEST(Cli, TellsOfEveryFaultInTheDataFiles)
{
    const TempAppFolder folder;
    folder.addShippedData();
    const QString program = folder.path(u"kestrune-cli"_s);
    ASSERT_TRUE(QFile::copy(QStringLiteral(KESTRUNE_CLI), program));
    EXPECT_EQ(runProgram(program, {u"validar"_s}).status, 0);
    const auto append = [&](const QString& file, const QByteArray& line) {
        folder.write(file, folder.read(file) + line + "\r\n");
    };
    append(u"ini/tiles.ini"_s, "Barro;ini\\pics\\tiles\\T1.gif;Barro;;1;caro;0");
    append(u"ini/tiles.ini"_s, "Lodo;ini\\pics\\tiles\\nada.gif;Lodo;;1;5;0");
    append(u"ini/pines.ini"_s, "Aldea;ini\\pics\\pines\\Aldea.gif;Otra;");
    append(u"ini/Armas.ini"_s, "Daga;1d4");
    append(u"ini/Equipo.ini"_s, "Cosa;No");
    append(u"ini/Equipo.ini"_s, "Otra cosa;No");
    append(u"ini/Equipo.ini"_s, "Una cosa;No;;;;;de;sobra");
    QFile::remove(folder.path(u"ini/pics/tilesLocales/r1t.gif"_s));
    QFile::remove(folder.path(u"gramaticas/Nombres de lugares.txt"_s));
    for (const auto& name : {u"mapas/cero.map"_s, u"gramaticas/cero.txt"_s, u"ini/cero.gif"_s})
        QFile::link(u"/dev/zero"_s, folder.path(name));
    QFile::link(u"nada"_s, folder.path(u"mapas/suelto.map"_s));
    folder.write(u"gramaticas/incluye.txt"_s, "[a]\r\n{/dev/zero}\r\n{fuera.txt}\r\n");
    folder.write(u"fuera.txt"_s, "[a]\r\n<b>\r\n\xD0\x96\r\n");
    folder.write(u"mapas/Ñu.map"_s, "\xC3\x91u\r\n1;1\r\n0;0\r\n\r\nM1;\r\n\r\n");
    append(u"ini/tiles.ini"_s, "Cero;ini\\cero.gif;Cero;;1;5;0");
    folder.write(u"mapas/Otro.map"_s, "Uno\r\n1;1\r\n10;20\r\n\r\nM1;\r\n\r\n");
    folder.write(u"mapas/a b.map"_s, "a/b\r\n1;1\r\n0;0\r\n\r\nM1;\r\n\r\n");
    const Result result = runProgram(program, {u"validar"_s});
    EXPECT_EQ(result.status, 1);
    for (const QString& fragment : {u"línea 32: el dato «costo» no es un número"_s,
                                    u"nada.gif"_s,
                                    u"«Aldea» está repetido"_s,
                                    u"«Daga» está repetido"_s,
                                    u"línea 147"_s,
                                    u"línea 148"_s,
                                    u"línea 149: sobran datos (hay 8 y caben 6)"_s,
                                    u"r1t.gif"_s,
                                    u"«r1t»"_s,
                                    u"Nombres de lugares.txt"_s,
                                    u"mapas/cero.map"_s,
                                    u"mapas/suelto.map"_s,
                                    u"gramaticas/cero.txt"_s,
                                    u"ini/cero.gif"_s,
                                    u"línea 2: no se puede incluir «/dev/zero»"_s,
                                    u"fuera.txt, línea 2: no existe la regla «b»"_s,
                                    u"fuera.txt, línea 3: «\u0416» no se puede guardar"_s,
                                    u"Ñu.map: está en UTF-8"_s,
                                    u"latitud norte es menor"_s,
                                    u"no es el de su archivo"_s,
                                    u"«/»"_s})
        EXPECT_TRUE(result.out.contains(fragment)) << fragment.toStdString() << " not in\n"
                                                   << result.out.toStdString();
    EXPECT_FALSE(result.out.contains(u"«Lodo» no"_s)) << "told of once is enough";
}

TEST(Cli, LosesNoAnswerSilently)
{
    if (!QFile::exists(u"/dev/full"_s))
        GTEST_SKIP() << "no device that is always full";
    QProcess process;
    process.setStandardOutputFile(u"/dev/full"_s);
    process.start(QStringLiteral(KESTRUNE_CLI), {u"nombres"_s, u"5"_s});
    ASSERT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitCode(), 2);
}

TEST(Cli, ExplainsItself)
{
    for (const QString& asked : {u"--ayuda"_s, u"--help"_s, u"-h"_s}) {
        const Result general = run({asked});
        EXPECT_EQ(general.status, 0);
        EXPECT_TRUE(general.out.contains(u"dibujar MAPA --png ARCHIVO [--escala N]"_s));
        const Result command = run({u"dibujar"_s, asked});
        EXPECT_EQ(command.status, 0);
        EXPECT_TRUE(command.out.contains(u"imagen PNG"_s) && command.out.contains(u"--escala N"_s));
        for (const QString& line : command.out.split(u'\n'))
            EXPECT_LE(line.size(), 100);
    }
    for (const QStringList& words : {QStringList{u"--version"_s}, {u"clima"_s, u"--version"_s}})
        EXPECT_TRUE(run(words).out.startsWith("Kestrune "_L1));
}
