#include "app/disk_watch.h"
#include "app/recovery.h"
#include "platform/core/ending.h"
#include "platform/core/folder_claim.h"
#include "platform/core/kept_versions.h"
#include "support.h"
#include "worldmap/map_document.h"
#include "worldmap/map_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QSemaphore>
#include <QTimer>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>

using namespace Qt::StringLiterals;

namespace {

/// A program in AppFolder with one map, whose background is waited for.
class Program
{
public:
    Program()
    {
        recovery.watch(
            {.name = u"mapa"_s,
             .history = &document.history(),
             .snapshot =
                 [this] { return [map = document.map()] { return copyContent(mapDraft(map)); }; },
             .target = [this] { return draftPath(document.map().nombre); },
             .known = [this] { return document.archivo(); }});
        disk.watch(document, [this] { return document.archivo(); });
        QObject::connect(&document, &MapDocument::unsavedReplaced, [this](const WorldMap& map) {
            recovery.keepReplaced(u"mapa"_s, draftPath(map.nombre),
                                  [map] { return copyContent(mapDraft(map)); });
        });
        QObject::connect(&recovery, &Recovery::found,
                         [this](const LeftWork& left) { found.push_back(left); });
        QObject::connect(&recovery, &Recovery::failed,
                         [this](const QString& reason) { told.append(reason); });
        QObject::connect(&disk, &DiskWatch::changed, [this](const platform::OtherVersion& other) {
            told.append(other.text);
            others.append(other.path);
        });
    }

    void begin()
    {
        recovery.begin();
        wait();
    }
    void paint(const QString& tile) { document.paint({{QPoint(0, 0)}}, tile); }
    void look()
    {
        disk.look();
        wait();
        wait(); // what was found is kept before it is told
    }
    /// Until the background is through with all, and what it found is told.
    void wait()
    {
        QSemaphore idle;
        background.run([&idle] { idle.release(); }, platform::Background::Urgency::WhenIdle);
        idle.acquire();
        QCoreApplication::processEvents();
    }

    platform::Background background;
    Recovery recovery{background};
    DiskWatch disk{background};
    MapDocument document;
    std::vector<LeftWork> found;
    QStringList told;
    QStringList others;
};

WorldMap smallMap(const QString& name, const QString& tile)
{
    WorldMap map;
    map.nombre = name;
    map.mapaTiles = platform::Grid<QString>(2, 3, tile);
    return map;
}

QStringList copies(const TempAppFolder& app)
{
    QStringList files;
    const QDir root(app.path(u"respaldo/recuperacion"_s));
    for (const QString& run : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        files += QDir(root.filePath(run)).entryList(QDir::Files | QDir::Hidden);
    return files;
}

QByteArray newestUnsaved(const TempAppFolder& app, const QString& file)
{
    for (const platform::KeptVersion& version : platform::keptVersions(app.path(file))) {
        if (version.isUnsaved)
            return platform::readFile(version.path, 10000);
    }
    return {};
}

} // namespace

TEST(Background, KeepsTheOrderWithTheUrgentFirst)
{
    for (int round = 0; round < 200; ++round) {
        QString done;
        {
            platform::Background background;
            background.run([] {}); // from here on the thread is there, and mostly waits
            background.finish();
            QSemaphore go;
            background.run([&] { go.acquire(); });
            background.run([&] { done += u'3'; }, platform::Background::Urgency::WhenIdle);
            background.run([&] { done += u'1'; });
            background.run([&] { done += u'2'; });
            go.release();
            background.finish();
            EXPECT_EQ(done.left(2), u"12"_s);
            background.run([&] { done += u'4'; });
            background.finish(); // at once after work was given to a thread that waits
            EXPECT_TRUE(done.contains(u'4'));
        }
    }
}

TEST(RecoveryCopy, IsReadAsWrittenOrNotAtAll)
{
    const TempAppFolder app;
    const RecoveryCopy copy{u"mapa"_s,
                            app.path(u"mapas/Año.map"_s),
                            {app.path(u"mapas/Otro.map"_s), "\x01\xff"},
                            QDateTime(QDate(2026, 11, 23), QTime(12, 30, 5)),
                            copyContent(u"Łódź\r\n1;1"_s)};
    const QByteArray bytes = bytesOf(copy);
    const auto read = [&](const QByteArray& content) {
        app.write(u"x.copia"_s, content);
        return readRecoveryCopy(app.path(u"x.copia"_s));
    };
    const RecoveryCopy again = read(bytes);
    EXPECT_EQ(again.work, copy.work);
    EXPECT_EQ(again.target, copy.target);
    EXPECT_EQ(again.known.path, copy.known.path);
    EXPECT_EQ(again.known.digest, copy.known.digest);
    EXPECT_EQ(again.when, copy.when);
    EXPECT_EQ(platform::textFileOf({}, again.content).lines[0], u"Łódź"_s);
    EXPECT_FALSE(bytes.contains(app.path().toUtf8())) << "the folder may be moved";

    for (qsizetype cut = 0; cut < bytes.size(); ++cut)
        expectError([&] { read(bytes.first(cut)); }, platform::ErrorNumber::BadFormat,
                    {u"x.copia"_s});
    QByteArray later = bytes;
    later.replace("n 1\n", "n 2\n");
    expectError([&] { read(later); }, platform::ErrorNumber::BadFormat, {u"otra versión"_s});
    QByteArray damaged = bytes;
    damaged[bytes.size() - 3] = 'x';
    expectError([&] { read(damaged); }, platform::ErrorNumber::BadFormat, {u"dañada"_s});
}

TEST(Recovery, OffersAtTheNextStartWhatWasNotSaved)
{
    const TempAppFolder app;
    {
        Program program;
        program.begin();
        EXPECT_TRUE(program.found.empty());
        program.recovery.keepNow();
        EXPECT_EQ(copies(app), QStringList()) << "nothing was changed";
        program.document.newMapa(smallMap(u"Isla"_s, u"M1"_s));
        program.recovery.keepNow();
        program.paint(u"T1"_s);
        program.recovery.keepNow();
        EXPECT_EQ(copies(app), QStringList{u"mapa.copia"_s});
    }
    {
        Program program; // who takes no notice is told again
        program.begin();
        ASSERT_EQ(program.found.size(), 1u);
        program.document.newMapa(smallMap({}, u"M3"_s));
        program.recovery.keepNow();
        EXPECT_EQ(copies(app).size(), 2) << "new work doesn't take the old one's place";
    }
    Program program;
    program.begin();
    ASSERT_EQ(program.found.size(), 2u);
    EXPECT_LE(program.found[0].when(), program.found[1].when());
    const LeftWork left =
        program.found[program.found[0].copies[0].content.startsWith("Isla") ? 0 : 1];
    ASSERT_EQ(left.copies.size(), 1u);
    EXPECT_EQ(left.copies[0].target, app.path(u"mapas/Isla.map"_s));
    EXPECT_TRUE(left.copies[0].content.contains("T1;M1;M1;"));
    program.recovery.settle(left);
    program.wait();
    EXPECT_EQ(copies(app).size(), 1);
    EXPECT_EQ(newestUnsaved(app, u"mapas/Isla.map"_s), left.copies[0].content);
}

TEST(Recovery, DropsWhatIsSaved)
{
    const TempAppFolder app;
    Program program;
    program.begin();
    program.document.newMapa(smallMap(u"Isla"_s, u"M1"_s));
    program.recovery.keepNow();
    EXPECT_EQ(copies(app).size(), 1);
    const QString run =
        QDir(app.path(u"respaldo/recuperacion"_s)).entryList(QDir::Dirs | QDir::NoDotAndDotDot)[0];
    const QByteArray copy = app.read(u"respaldo/recuperacion/%1/mapa.copia"_s.arg(run));
    program.document.saveMapa();
    program.wait();
    EXPECT_EQ(copies(app), QStringList());
    // Undone to what the file holds, there is nothing to keep either.
    program.paint(u"T1"_s);
    program.recovery.keepNow();
    EXPECT_EQ(copies(app).size(), 1);
    program.document.undo();
    program.wait();
    EXPECT_EQ(copies(app), QStringList());
    // Killed between a save and that.
    app.write(u"respaldo/recuperacion/2026-01-01 10.00.00/mapa.copia"_s, copy);
    Program next;
    next.begin();
    EXPECT_TRUE(next.found.empty());
    EXPECT_EQ(copies(app), QStringList());
}

TEST(Recovery, KeepsAStrokeThatGoesOn)
{
    const TempAppFolder app;
    Program program;
    program.document.newMapa(smallMap(u"Isla"_s, u"M1"_s));
    program.document.beginStroke();
    program.paint(u"T1"_s);
    program.recovery.keepNow();
    program.document.paint({{QPoint(1, 0)}}, u"T2"_s);
    program.recovery.keepNow();
    program.begin();
    EXPECT_TRUE(program.found.empty()) << "its own copies";
    Program next;
    next.begin();
    ASSERT_EQ(next.found.size(), 1u);
    EXPECT_TRUE(next.found[0].copies[0].content.contains("T1;T2;M1;"));
}

TEST(Recovery, KeepsWhatIsReplacedUnsaved)
{
    const TempAppFolder app;
    Program program;
    const auto replaceBy = [&](const auto& replace, const QString& file, const QByteArray& kept) {
        replace();
        program.wait();
        EXPECT_EQ(newestUnsaved(app, file).split('\n').value(4).trimmed(), kept);
    };
    const auto& nameless = u"mapas/(sin nombre).map"_s;
    program.document.newMapa(smallMap({}, u"M1"_s));
    replaceBy([&] { program.document.newMapa(smallMap(u"Isla"_s, u"T1"_s)); }, nameless,
              "M1;M1;M1;M1;M1;M1;");
    program.document.saveMapa();
    replaceBy([&] { program.document.openMapa(smallMap(u"a/b"_s, u"T2"_s), {}); },
              u"mapas/Isla.map"_s, {}); // it was saved
    program.document.setProperties({u"a/c"_s, 1, 0, u"raises no question"_s});
    replaceBy([&] { program.document.generate(smallMap(u"Isla"_s, u"T3"_s)); }, u"mapas/a c.map"_s,
              "T2;T2;T2;T2;T2;T2;");
    replaceBy([&] { program.document.recover(smallMap(u"Otra"_s, u"T4"_s), {}); },
              u"mapas/Isla.map"_s, "T3;T3;T3;T3;T3;T3;");
}

TEST(Recovery, LosesNothingWhereNoVersionCanBeKept)
{
    const TempAppFolder app;
    {
        Program program;
        program.document.newMapa(smallMap(u"Isla"_s, u"M1"_s));
        program.recovery.keepNow();
        app.write(u"respaldo/mapas"_s, "un archivo");
        program.document.openMapa(smallMap(u"Otra"_s, u"T1"_s), {});
        program.wait();
    }
    Program program;
    program.begin();
    ASSERT_EQ(program.found.size(), 1u) << "it is left for the next start";
    EXPECT_TRUE(program.found[0].copies[0].content.contains("M1;M1;"));
    const LeftWork left = program.found[0];
    program.recovery.discard(left);
    program.wait();
    EXPECT_EQ(copies(app).size(), 1) << "what can't be kept elsewhere stays";
    ASSERT_TRUE(QFile::remove(app.path(u"respaldo/mapas"_s)));
    program.recovery.discard(left);
    program.wait();
    EXPECT_EQ(copies(app), QStringList());
}

TEST(Recovery, TellsOnceOfCopiesThatCannotBeWritten)
{
    const TempAppFolder app;
    app.write(u"respaldo"_s, "un archivo");
    Program program;
    program.begin();
    program.document.newMapa(smallMap(u"Isla"_s, u"M1"_s));
    for (int i = 0; i < 3; ++i) {
        program.recovery.keepNow();
        program.wait();
    }
    ASSERT_EQ(program.told.size(), 1);
    EXPECT_TRUE(program.told[0].contains(u"respaldo"_s));
    ASSERT_TRUE(QFile::remove(app.path(u"respaldo"_s)));
    program.recovery.keepNow(); // without a further change
    EXPECT_EQ(copies(app).size(), 1);
}

TEST(Recovery, BoundsWhatIsLeft)
{
    const TempAppFolder app;
    for (int i = 10; i < 23; ++i) {
        RecoveryCopy copy{u"mapa"_s,
                          app.path(u"mapas/x.map"_s),
                          {},
                          QDateTime(QDate(2026, 1, i), QTime(10, 0)),
                          "x"};
        app.write(u"respaldo/recuperacion/%1/mapa.copia"_s.arg(i), bytesOf(copy));
    }
    app.write(u"respaldo/recuperacion/roto/mapa.copia"_s, "Kestrune");
    app.write(u"respaldo/recuperacion/ajeno/notas.txt"_s, "x");
    Program program;
    program.begin();
    ASSERT_EQ(program.found.size(), static_cast<std::size_t>(Recovery::maxRuns));
    EXPECT_EQ(program.found.back().when().date(), QDate(2026, 1, 22));
    EXPECT_EQ(newestUnsaved(app, u"mapas/x.map"_s), "x") << "what is too old isn't lost";
    EXPECT_EQ(app.read(u"respaldo/recuperacion/ajeno/notas.txt"_s), "x");
}

TEST(DiskWatch, TellsOnceOfEachChangeAndKeepsIt)
{
    const TempAppFolder app;
    Program program;
    program.document.newMapa(smallMap(u"Isla"_s, u"M1"_s));
    program.document.saveMapa();
    program.look();
    EXPECT_EQ(program.told, QStringList());
    const QString file = u"mapas/Isla.map"_s;
    const QByteArray own = app.read(file);
    for (const char* const foreign : {"uno", "dos"}) {
        app.write(file, foreign);
        program.look();
        program.look();
        ASSERT_FALSE(program.others.isEmpty());
        EXPECT_EQ(platform::readFile(program.others.last(), 100), foreign);
    }
    EXPECT_EQ(program.told.size(), 2);
    QFile again(app.path(file));
    ASSERT_TRUE(again.open(QIODevice::ReadWrite));
    again.setFileTime(QDateTime({2026, 1, 1}, {10, 0}), QFileDevice::FileModificationTime);
    again.close();
    program.look();
    EXPECT_EQ(program.told.size(), 2) << "the same content again";
    app.write(file, own);
    program.look();
    EXPECT_EQ(program.told.size(), 2) << "it is what it was";
    ASSERT_TRUE(QFile::remove(app.path(file)));
    program.look();
    EXPECT_TRUE(program.told.last().contains(u"ya no está"_s));
    QDir().mkpath(app.path(file));
    program.look();
    EXPECT_TRUE(program.told.last().contains(u"ya no es un archivo"_s));
    EXPECT_EQ(program.told.size(), 4);
    QDir().rmdir(app.path(file));
    program.paint(u"T1"_s);
    program.disk.look(); // it looks while the document is saved
    program.document.saveMapa();
    program.wait();
    program.look();
    EXPECT_EQ(program.told.size(), 4);
}

TEST(EndingFromOutside, KeepsWhatThereIsFirst)
{
    const auto end = [](const std::function<void()>& how) {
        const platform::EndingFromOutside ending([] {
            const QDateTime now = QDateTime::currentDateTime();
            std::cerr << "kept in " << now.toString(Qt::ISODate).toStdString() << '\n';
        });
        how();
        QTimer::singleShot(10'000, [] { std::_Exit(0); });
        QCoreApplication::exec();
    };
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        EXPECT_EXIT(end([&] { raise(signal); }), testing::ExitedWithCode(128 + signal),
                    "kept in 2");
    const auto leave = [] {
        (void)QDate(2026, 1, 1).toString(Qt::ISODate); // makes the calendars, if they aren't yet
        std::exit(1);
    };
    EXPECT_EXIT(end(leave), testing::ExitedWithCode(1), "kept in 2");
}

TEST(FolderClaim, LastsAsLongAsTheProgram)
{
    const TempAppFolder app;
    {
        const platform::FolderClaim first(app.path());
        EXPECT_FALSE(first.isTaken());
        EXPECT_TRUE(platform::FolderClaim(app.path()).isTaken());
    }
    app.write(u".kestrune.lock"_s, "pid 1, otra máquina"); // what anybody left means nothing
    EXPECT_FALSE(platform::FolderClaim(app.path()).isTaken());
    QFile::remove(app.path(u".kestrune.lock"_s));
    const WithoutPrivileges everybody;
    QFile::setPermissions(app.path(), readOnlyFolder);
    {
        const platform::FolderClaim first(app.path());
        EXPECT_FALSE(first.isTaken());
        EXPECT_TRUE(platform::FolderClaim(app.path()).isTaken());
    }
    QFile::setPermissions(app.path(), openFolder);
}
