// kestrune-cli as a script would call it: without a display, by its exit status and output.
#include "support.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

struct Result {
    int status;
    QString out;
    QString err;
};

Result run(const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
        environment.remove(name);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KESTRUNE_CLI), arguments);
    EXPECT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

TEST(Cli, DrawsAMapByNameOrByPath)
{
    const TempAppFolder folder;
    const QString png = folder.path(u"m.png"_s);
    const Result byName = run({u"dibujar"_s, u"Reinos de Valdehierro"_s, u"--png"_s, png});
    EXPECT_EQ(byName.status, 0) << byName.err.toStdString();
    EXPECT_TRUE(byName.out.contains(png));
    const QImage drawn(png);
    EXPECT_EQ(drawn.size(), QSize(825, 1407));
    const Result byPath = run({u"dibujar"_s, u"--png"_s, png,
                               shippedDataFolder() + u"/mapas/Reinos de Valdehierro.map"_s});
    EXPECT_EQ(byPath.status, 0) << byPath.err.toStdString();
    EXPECT_EQ(QImage(png), drawn);
}

TEST(Cli, RefusesBadCallsAndBadFilesWithNothingHalfWritten)
{
    const TempAppFolder folder;
    const QString png = folder.path(u"m.png"_s);
    folder.write(u"roto.map"_s, "x\r\n1;1\r\n1;2\r\n\r\nLava;\r\n\r\n");
    folder.write(u"bien.map"_s, "x\r\n1;1\r\n1;2\r\n\r\nM1;\r\n\r\n");
    const QString good = folder.path(u"bien.map"_s);
    struct Case {
        QStringList arguments;
        QString fragment;
    };
    const std::vector<Case> cases{
        {{}, u"Órdenes"_s},
        {{u"volar"_s}, u"«volar»"_s},
        {{u"dibujar"_s}, u"--png"_s},
        {{u"dibujar"_s, good}, u"--png"_s},
        {{u"dibujar"_s, good, u"--png"_s}, u"falta el valor"_s},
        {{u"dibujar"_s, good, u"--jpg"_s, png}, u"«--jpg»"_s},
        {{u"dibujar"_s, good, good, u"--png"_s, png}, u"sobra"_s},
        {{u"dibujar"_s, good, u"--png"_s, png, u"--png"_s, png}, u"repetida"_s},
        {{u"dibujar"_s, u"no hay"_s, u"--png"_s, png}, u"«no hay»"_s},
        {{u"dibujar"_s, folder.path(), u"--png"_s, png}, u"carpeta"_s},
        {{u"dibujar"_s, folder.path(u"roto.map"_s), u"--png"_s, png}, u"línea 5"_s},
        {{u"dibujar"_s, good, u"--png"_s, folder.path(u"no/m.png"_s)}, u"No se puede guardar"_s},
        {{u"dibujar"_s, good, u"--png"_s, folder.path()}, u"carpeta"_s},
        {{u"dibujar"_s, good, u"--png"_s, good}, u"el lugar del mapa"_s}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.arguments.join(u' ').toStdString());
        const Result result = run(c.arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.err.contains(c.fragment)) << result.err.toStdString();
        EXPECT_TRUE(result.out.isEmpty());
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST(Cli, ExplainsItself)
{
    const Result general = run({u"--ayuda"_s});
    EXPECT_EQ(general.status, 0);
    EXPECT_TRUE(general.out.contains(u"dibujar MAPA"_s));
    const Result command = run({u"dibujar"_s, u"--ayuda"_s});
    EXPECT_EQ(command.status, 0);
    EXPECT_TRUE(command.out.contains(u"imagen PNG"_s));
}
