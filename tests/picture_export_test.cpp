// Pictures of maps as files.
#include "exchange/export_task.h"
#include "exchange/map_image.h"
#include "exported_map_test.h"
#include "generation/world_generator.h"
#include "platform/core/random_source.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {

/// A generated map with the shipped definitions.
class PictureExportTest : public ExportedMapTest
{
protected:
    PictureExportTest()
    {
        platform::randomSource().seed(7);
        map.mapaTiles = platform::Grid<QString>(40, 40);
        generarMundo(map, pins);
        map.notasMapa = u"Escala: 10 km"_s;
    }

    QImage png(
        const ExportOptions& options, const Advance& advance = [](double) {})
    {
        return QImage(write(u"png"_s, options, advance)).convertToFormat(QImage::Format_RGB32);
    }

    QImage whole()
    {
        MapCanvas canvas(pictures);
        canvas.crearBuffer(map.ancho(), map.alto());
        canvas.renderMapa(map);
        return canvas.hdcBuffer.image();
    }
};

} // namespace

TEST_F(PictureExportTest, HasTheViewsPixelsEnlargedAndCut)
{
    const QImage plain = whole();
    EXPECT_EQ(png({}), plain);
    ExportOptions options;
    options.scale = 3;
    EXPECT_EQ(png(options), plain.scaled(plain.size() * 3));
    for (const QRect& zone : {QRect(0, 0, 1, 1), QRect(3, 5, 7, 4), QRect(38, 39, 2, 1)}) {
        options.zone = zone;
        EXPECT_EQ(
            png(options),
            plain.copy(11 * zone.x(), 14 * zone.y(), 11 * zone.width() + 4, 14 * zone.height() + 7)
                .scaled((11 * zone.width() + 4) * 3, (14 * zone.height() + 7) * 3));
    }
}

TEST_F(PictureExportTest, ItsBandsShowWhatOneWould)
{
    ExportOptions options;
    options.scale = 8;
    options.hasGrid = options.hasNumbers = options.hasNames = options.hasClimate = true;
    options.hasInhabitants = options.hasScaleBar = true;
    int steps = 0;
    const QImage banded = png(options, [&](double) { ++steps; });
    EXPECT_GT(steps, 2);
    const ExportedMap exported(map, tiles, pins, pictures);
    const std::vector<Overlay> overlays = exported.overlays(options);
    EXPECT_EQ(banded, drawn({exported.picture(), exported.picture().rect(), options.scale,
                             &exported.geometry(), overlays}));

    map.notasMapa.clear();
    expectError([&] { png(options); }, platform::ErrorNumber::BadFormat, {u"escala"_s});
}

TEST_F(PictureExportTest, PlayersSeeNeitherNotesNorHiddenPlaces)
{
    map.mapaPines = {{{4, 4}, {pins.items.at(0).key(), u"Guarida"_s, u"! no lo saben"_s}},
                     {{9, 9}, {pins.items.at(0).key(), u"Villa"_s, u"Ojo: ¡ladrones!"_s}}};
    const ExportedMap exported(map, tiles, pins, pictures, true);
    ASSERT_EQ(exported.map().mapaPines.size(), 1u);
    EXPECT_EQ(exported.map().placeAt({9, 9})->notes, QString());
    EXPECT_EQ(exported.map().notasMapa, QString());
    EXPECT_EQ(exported.kilometresPerCell(), 10) << "the notes' scale is no secret";
    ExportOptions options;
    options.isForPlayers = true;
    const QImage seen = png(options);
    map.mapaPines.erase({4, 4});
    EXPECT_EQ(seen, whole());
}

TEST_F(PictureExportTest, LeavesNoFileThatIsNotWhole)
{
    const auto names = [&] {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    };
    const QStringList before = names();
    EXPECT_THROW(png({}, [](double) { throw ExportCancelled(); }), ExportCancelled);
    {
        const FullDisk full(20'000);
        EXPECT_THROW(png({}), platform::Error);
    }
    EXPECT_EQ(names(), before);

    folder.write(u"x.png"_s, "antes");
    EXPECT_THROW(png({}, [](double) { throw ExportCancelled(); }), ExportCancelled);
    EXPECT_EQ(folder.read(u"x.png"_s), "antes");

    { // Several files, in folders of their own, take their places together or not at all.
        ExportFiles files(folder.path(u"b/uno.txt"_s));
        files.main().write("1");
        files.add(folder.path(u"b/c/dos.txt"_s)).write("2");
        EXPECT_FALSE(QFile::exists(files.path()));
    }
    EXPECT_FALSE(QFile::exists(folder.path(u"b"_s)));
}

TEST(ExportTask, TellsHowItEndedAndCanBeGivenUp)
{
    const auto outcome = [](const ExportTask::Work& work, bool isCancelled) {
        ExportTask task(work);
        bool isDone = false;
        QObject::connect(&task, &ExportTask::done, [&] { isDone = true; });
        if (isCancelled)
            task.cancel();
        while (!isDone)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return (task.isComplete() ? u"whole "_s : u"cut "_s) + task.problem();
    };
    const auto endless = [](const Advance& advance) {
        for (;;) {
            QThread::msleep(1);
            advance(0.5);
        }
    };
    EXPECT_EQ(outcome([](const Advance& advance) { advance(1); }, false), u"whole "_s);
    EXPECT_EQ(outcome(endless, true), u"cut "_s);
    EXPECT_EQ(outcome([](const Advance&) { throw std::bad_alloc(); }, false),
              u"cut No queda memoria."_s);
    const ExportTask leftBehind(endless); // goes without waiting for an end
}
