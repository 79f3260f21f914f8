// The window of kept versions, and the notices that lead to it.
#include "app/frmVersiones.h"
#include "catalogue_window_test.h"
#include "map_test.h"
#include "platform/core/saving.h"
#include "worldmap/map_file.h"
#include "worldmap/map_miniature.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

Ui::FrmVersiones& versionsUi()
{
    return frmVersiones().ui();
}

/// What a list shows in a row, its columns joined.
QString rowText(int row)
{
    QStringList texts;
    const QAbstractItemModel& list = *versionsUi().lvVersiones->model();
    for (int column = 0; column < list.columnCount(); ++column)
        texts.append(list.index(row, column).data().toString());
    return texts.join(u'|');
}

int rows()
{
    return versionsUi().lvVersiones->model()->rowCount();
}

QString shownText()
{
    return versionsUi().lblVersion->text();
}

/// Waits until what is selected has been looked at.
void waitForLook()
{
    EXPECT_TRUE(QTest::qWaitFor([] {
        return !shownText().isEmpty() && shownText() != u"Leyendo…"_s &&
               shownText() != u"Buscando versiones…"_s;
    }));
}

void selectRow(int row)
{
    platform::ListView& list = *versionsUi().lvVersiones;
    list.setCurrentIndex(list.model()->index(row, 0));
    waitForLook();
}

QString shownFile()
{
    return versionsUi().cmbArchivo->currentText();
}

void chooseFile(const QString& title)
{
    QComboBox& box = *versionsUi().cmbArchivo;
    EXPECT_TRUE(QTest::qWaitFor([&] { return box.findText(title) >= 0; })) << title.toStdString();
    box.setCurrentIndex(box.findText(title));
    waitForLook();
}

void bringBack()
{
    QTest::mouseClick(versionsUi().cmdTraer, Qt::LeftButton);
}

/// Runs a call that shows the window, and an action there; then the window is closed.
void inVersions(const std::function<void()>& call, const std::function<void()>& action)
{
    QTimer::singleShot(0, qApp, [&] {
        waitForLook();
        action();
        if (frmVersiones().isVisible())
            QTest::keyClick(&frmVersiones().window(), Qt::Key_Escape);
    });
    call();
    EXPECT_FALSE(frmVersiones().isVisible());
}

const QString mapVersions = u"respaldo/mapas/Prueba.map/"_s;

class MapVersionsTest : public MapTest
{
protected:
    MapVersionsTest() { setNombre(u"Prueba"_s); }

    /// The window's map with another tile in a corner.
    static WorldMap altered(const QString& name = u"Prueba"_s)
    {
        WorldMap map = frmMapa().mapa();
        map.nombre = name;
        map.mapaTiles(0, 0) = u"T1"_s;
        map.mapaPines = {{{1, 1}, {u"Aldea"_s, u"Soto"_s, {}}}};
        return map;
    }
    void keep(const QString& name, const WorldMap& map) const
    {
        app.write(mapVersions + name, platform::encodeText(mapText(map)));
    }
    static void openWindow() { frmMapa().window().findChild<QAction*>(u"versiones"_s)->trigger(); }
};

class CatalogueVersionsTest : public CatalogueWindowTest
{
protected:
    CatalogueVersionsTest() { choosePage(3); }
    void openWindow() { action(u"versiones"_s).trigger(); }
    QByteArrayList fileLines() const { return app.read(u"ini/Armas.ini"_s).split('\n'); }
    void keep(const QString& name, const QByteArray& bytes) const
    {
        app.write(u"respaldo/ini/Armas.ini/"_s + name, bytes);
    }
};

} // namespace

TEST_F(MapVersionsTest, ListsWhatWasKeptAndLeavesOutTheRest)
{
    keep(u"2026-01-02 09.04.05.map"_s, altered());
    keep(u"2026-11-23 11.40.00 sin guardar.map"_s, frmMapa().mapa());
    keep(u"2025-12-31 23.59.59.map"_s, altered(u"Otra"_s));
    for (const QString& foreign :
         {u"notas.map"_s, u"2026-01-02 03.04.05.txt"_s, u"mapa ñ.map"_s,
          u"2026-13-02 03.04.05.map"_s, u"2026-01-03.map/x"_s, u"2026-01-04 00.00.00.map/x"_s})
        app.write(mapVersions + foreign, "x");
    app.write(u"respaldo/mapas/(sin nombre).map/2026-01-01 00.00.00 sin guardar.map"_s, "x");
    app.write(u"respaldo/ini/Armas.ini/2026-01-01 00.00.00.ini"_s, "x");
    app.write(u"respaldo/ini/tiles.ini/2026-01-01 00.00.00.ini"_s, "x"); // none that a save makes
    inVersions(openWindow, [] {
        EXPECT_EQ(shownFile(), u"Mapa «Prueba»"_s);
        ASSERT_EQ(rows(), 3);
        const QString size = u" kB"_s;
        EXPECT_TRUE(rowText(0).startsWith(u"23/11/2026 11:40:00|Sin guardar|"_s));
        EXPECT_EQ(rowText(1), u"02/01/2026 09:04:05|Guardada|8 kB"_s);
        EXPECT_TRUE(rowText(2).startsWith(u"31/12/2025 23:59:59|Guardada|"_s));
        EXPECT_EQ(versionsUi().lvVersiones->currentIndex().row(), 0);
        EXPECT_EQ(shownText(), u"«Prueba»: 50 columnas × 50 filas, 0 lugares."_s);
        selectRow(2);
        EXPECT_EQ(shownText(), u"«Otra»: 50 columnas × 50 filas, un lugar."_s);
        EXPECT_TRUE(QTest::qWaitFor([] { // all that is on the screen gets a picture
            const QAbstractItemModel& list = *versionsUi().lvVersiones->model();
            return list.index(1, 0).data(platform::ListItems::IconRole).toInt() > 0;
        }));
        QComboBox& box = *versionsUi().cmbArchivo;
        EXPECT_TRUE(QTest::qWaitFor([&] { return box.count() > 2; }));
        EXPECT_EQ(box.count(), 3);
        EXPECT_GE(box.findText(u"Armas"_s), 1);
        EXPECT_GE(box.findText(u"Mapas sin nombre"_s), 1);
    });
}

TEST_F(MapVersionsTest, ShowsAMapInItsProportionsAndColours)
{
    WorldMap wide = altered();
    wide.mapaTiles = platform::Grid<QString>(3, 6, u"T1"_s);
    wide.mapaTiles(0, 5) = frmTiles().selectedName();
    const TileColours colours = tileColours(workspace.tiles);
    const QImage cells = pixelACell(wide, colours);
    ASSERT_EQ(cells.size(), QSize(6, 3));
    EXPECT_EQ(cells.pixel(5, 0), colours.value(frmTiles().selectedName()));
    EXPECT_NE(cells.pixel(4, 0), cells.pixel(5, 0));
    const QImage shown = inProportion(cells, {660, 660});
    EXPECT_EQ(shown.size(), QSize(660, 420)); // 6 cells of 11 × 14 in a row, 3 in a column
    EXPECT_EQ(shown.pixel(548, 138), cells.pixel(4, 0)); // no blur between cells
    EXPECT_EQ(shown.pixel(552, 138), cells.pixel(5, 0));
    EXPECT_EQ(shown.pixel(552, 142), cells.pixel(5, 1));
    EXPECT_EQ(inProportion(QImage(10000, 1, QImage::Format_RGB32), {96, 96}).size(), QSize(96, 1));
}

TEST_F(MapVersionsTest, BringsAVersionBackAsAStep)
{
    keep(u"2026-01-02 09.04.05.map"_s, altered());
    const WorldMap before = frmMapa().mapa();
    inVersions(openWindow, [] { QTest::keyClick(versionsUi().lvVersiones, Qt::Key_Return); });
    EXPECT_EQ(frmMapa().mapa(), altered());
    EXPECT_TRUE(frmMapa().documento.mapaCambiado());
    EXPECT_EQ(frmMapa().documento.undoText(), u"volver a la versión del 02/01/2026 09:04"_s);
    EXPECT_EQ(frmMapa().lugares.count(), 1);
    expectPixelsOfFullRedraw();

    inVersions(openWindow, [this] { // there is nothing to change
        selectRow(1);               // after the map that was replaced unsaved
        boxes.expect();
        bringBack();
        EXPECT_TRUE(frmVersiones().isVisible());
    });
    frmMapa().documento.undo();
    EXPECT_EQ(frmMapa().mapa(), before);
    // What wasn't saved and gave way is kept, too.
    workspace.background.finish();
    const auto kept = platform::keptVersions(mapFilePath(u"Prueba"_s));
    ASSERT_EQ(kept.size(), 2u);
    EXPECT_TRUE(kept.front().isUnsaved);
}

TEST_F(MapVersionsTest, AVersionOfAnotherMapLeavesTheDocumentsFile)
{
    frmMapa().saveMapa();
    const QString file = frmMapa().documento.archivo().path;
    app.write(u"respaldo/mapas/Otra.map/2026-01-02 09.04.05.map"_s,
              platform::encodeText(mapText(altered(u"Otra"_s))));
    app.write(u"mapas/Otra.map"_s, "de otro");
    inVersions(openWindow, [] {
        EXPECT_TRUE(shownText().startsWith(u"De este archivo aún no hay versiones"_s));
        EXPECT_FALSE(versionsUi().cmdTraer->isEnabled());
        chooseFile(u"Mapa «Otra»"_s);
        bringBack();
    });
    EXPECT_EQ(frmMapa().mapa(), altered(u"Otra"_s));
    EXPECT_EQ(frmMapa().documento.archivo().path, file);
    frmMapa().saveMapa();
    EXPECT_EQ(platform::keptVersions(mapFilePath(u"Otra"_s)).size(), 2u)
        << "another's file is lost";
}

TEST_F(MapVersionsTest, AVersionThatCantBeReadSaysWhy)
{
    const WorldMap before = frmMapa().mapa();
    keep(u"2026-01-09 00.00.00.map"_s, altered());
    app.write(mapVersions + u"2026-01-08 00.00.00.map"_s, {});
    app.write(mapVersions + u"2026-01-07 00.00.00.map"_s, "Prueba\r\n50;x\r\n1;2\r\n\r\n\r\n\r\n");
    app.write(mapVersions + u"2026-01-06 00.00.00.map"_s, {});
    ASSERT_TRUE(QFile::resize(app.path(mapVersions + u"2026-01-06 00.00.00.map"_s), 65 << 20));
    WorldMap strange = altered();
    strange.mapaTiles(3, 3) = u"Lava"_s;
    keep(u"2026-01-05 00.00.00.map"_s, strange);
    ASSERT_TRUE(QFile::link(app.path(u"ini/Armas.ini"_s),
                            app.path(mapVersions + u"2026-01-04 00.00.00.map"_s)));
    inVersions(openWindow, [&] {
        ASSERT_EQ(rows(), 6);
        const QStringList reasons{u"seis líneas"_s, u"línea 2"_s, u"65 MB"_s, u"Lava"_s,
                                  u"línea"_s};
        for (int i = 0; i < 5; ++i) {
            selectRow(i + 1);
            EXPECT_TRUE(shownText().contains(reasons[i])) << shownText().toStdString();
            EXPECT_TRUE(versionsUi().imgVersion->picture().isNull());
            EXPECT_FALSE(versionsUi().cmdTraer->isEnabled());
            EXPECT_TRUE(rowText(i + 1).contains(u"(ilegible)"_s));
            QTest::keyClick(versionsUi().lvVersiones, Qt::Key_Return);
            EXPECT_TRUE(frmVersiones().isVisible());
        }
        // One that could be read, until it was brought back.
        selectRow(0);
        EXPECT_TRUE(versionsUi().cmdTraer->isEnabled());
        EXPECT_FALSE(versionsUi().imgVersion->picture().isNull());
        ASSERT_TRUE(QDir(app.path(u"respaldo"_s)).removeRecursively());
        boxes.expect();
        bringBack();
        EXPECT_TRUE(boxes.asked().back().text.contains(u"No se encuentra"_s));
        EXPECT_TRUE(frmVersiones().isVisible());
    });
    EXPECT_EQ(frmMapa().mapa(), before);
}

TEST_F(MapVersionsTest, OfManyVersionsOnlyThoseOnTheScreenAreRead)
{
    const QByteArray bytes = platform::encodeText(mapText(altered()));
    QDir().mkpath(app.path(mapVersions));
    QDateTime when(QDate(2020, 1, 1), QTime(0, 0));
    for (int i = 0; i < 1000; ++i) {
        app.write(mapVersions + u"archivo %1.map"_s.arg(i), "x");
        app.write(mapVersions + when.addSecs(i).toString(u"yyyy-MM-dd HH.mm.ss"_s) + u".map"_s,
                  bytes);
    }
    const auto iconsShown = [] {
        int icons = 0;
        for (int row = 0; row < rows(); ++row) {
            const QModelIndex index = versionsUi().lvVersiones->model()->index(row, 0);
            icons += index.data(platform::ListItems::IconRole).toInt() > 0 ? 1 : 0;
        }
        return icons;
    };
    inVersions(openWindow, [&] {
        EXPECT_EQ(rows(), 1000);
        EXPECT_TRUE(QTest::qWaitFor([&] { return iconsShown() > 3; }));
        for (int before = 0; before != iconsShown(); QTest::qWait(200)) // as long as it goes on
            before = iconsShown();
        EXPECT_LT(iconsShown(), 30);
        selectRow(999); // which scrolls there
        EXPECT_TRUE(QTest::qWaitFor([] {
            const QModelIndex above = versionsUi().lvVersiones->model()->index(997, 0);
            return above.data(platform::ListItems::IconRole).toInt() > 0;
        }));
        EXPECT_LT(iconsShown(), 60);
        ASSERT_TRUE(QDir(app.path(mapVersions)).removeRecursively());
        selectRow(500);
        EXPECT_TRUE(shownText().contains(u"No se encuentra"_s)) << shownText().toStdString();
    });
}

TEST_F(MapVersionsTest, ANoticeShowsTheVersionOfAnother)
{
    frmMapa().saveMapa();
    platform::NoticeBar& bar = *frmMapa().ui().avisos;
    for (const QString& name : {u"Antes"_s, u"Ajeno"_s}) {
        app.write(u"mapas/Prueba.map"_s, platform::encodeText(mapText(altered(name))));
        frmMapa().saveMapa();
    }
    EXPECT_TRUE(bar.text().startsWith(u"Otro programa había cambiado"_s));
    keep(u"2099-01-01 00.00.00.map"_s, altered());
    const auto button = [&bar] {
        QTest::qWait(0); // those of earlier notices go
        return bar.findChild<QPushButton*>(u"cmdVerOtraVersion"_s);
    };
    const auto pressed = [](QPushButton* one) {
        return [one] { QTest::mouseClick(one, Qt::LeftButton); };
    };
    inVersions(pressed(button()), [] {
        EXPECT_EQ(shownFile(), u"Mapa «Prueba»"_s);
        EXPECT_EQ(rows(), 3);
        EXPECT_TRUE(shownText().startsWith(u"«Ajeno»"_s)) << shownText().toStdString();
    });
    EXPECT_FALSE(bar.isVisible());

    // What the watch over the disk finds is told alike, if there is anything to show.
    emit workspace.diskWatch.changed({{}, u"Ya no está."_s, mapFilePath(u"Prueba"_s)});
    EXPECT_EQ(bar.text(), u"Ya no está."_s);
    EXPECT_FALSE(button());
    QTest::mouseClick(bar.findChild<QToolButton*>(u"cmdCerrarAviso"_s), Qt::LeftButton);
    emit workspace.diskWatch.changed({app.path(mapVersions + u"2099-01-01 00.00.00.map"_s),
                                      u"Otro."_s, mapFilePath(u"Prueba"_s)});
    inVersions(pressed(button()), [] { EXPECT_TRUE(shownText().startsWith(u"«Prueba»"_s)); });
}

TEST_F(CatalogueVersionsTest, BringsAVersionBackAsAStep)
{
    QByteArrayList lines = fileLines();
    const QString gone = QString::fromLatin1(lines[2].split(';')[0]);
    const QString changed = QString::fromLatin1(lines[3].split(';')[0]);
    const QString fresh = QString::fromLatin1(lines[4].split(';')[0]);
    lines.remove(2);
    lines[2].replace(';', ";9");
    lines[3].prepend("X");
    lines.insert(1, "# un comentario\r");
    keep(u"2026-01-02 09.04.05.ini"_s, lines.join('\n'));
    const int count = workspace.armas.items().count();
    inVersions(
        [this] { openWindow(); },
        [&] {
            EXPECT_EQ(shownFile(), u"Armas"_s);
            EXPECT_EQ(
                shownText(),
                u"%1 armas. Respecto a lo que hay ahora, faltan: %2, %3; sobran: X%3; cambian: "
                "%4."_s.arg(QString::number(count - 1), gone, fresh, changed));
            EXPECT_EQ(versionsUi().imgVersion->picture().size(), QSize(96, 96));
            bringBack();
        });
    EXPECT_EQ(workspace.armas.items().count(), count - 1);
    EXPECT_TRUE(workspace.armas.items().find(u'X' + fresh));
    EXPECT_EQ(workspace.armas.history().undoText(), u"volver a la versión del 02/01/2026 09:04"_s);
    workspace.armas.undo();
    EXPECT_TRUE(workspace.armas.items().find(gone));
    EXPECT_EQ(workspace.armas.items().count(), count);
}

TEST_F(CatalogueVersionsTest, AVersionThatCantBeReadWholeSaysWhy)
{
    QByteArrayList lines = fileLines();
    keep(u"2026-01-03 00.00.00.ini"_s, lines.join('\n'));
    lines[4] = "Daga;1\r";
    keep(u"2026-01-02 00.00.00.ini"_s, lines.join('\n'));
    keep(u"2026-01-01 00.00.00 sin guardar.ini"_s, lines.join('\n')); // a draft may hold anything
    lines[4] = lines[5];
    keep(u"2025-01-02 00.00.00.ini"_s, lines.join('\n'));
    inVersions([this] { openWindow(); },
               [&] {
                   EXPECT_EQ(rows(), 4);
                   EXPECT_TRUE(shownText().endsWith(u" armas. Lo mismo que hay ahora."_s));
                   selectRow(1);
                   EXPECT_TRUE(shownText().contains(u"línea 5: falta el dato"_s))
                       << shownText().toStdString();
                   EXPECT_FALSE(versionsUi().cmdTraer->isEnabled());
                   selectRow(2);
                   EXPECT_TRUE(versionsUi().cmdTraer->isEnabled());
                   selectRow(3);
                   EXPECT_TRUE(shownText().contains(u"línea 6"_s)) << shownText().toStdString();
                   EXPECT_FALSE(versionsUi().cmdTraer->isEnabled());
                   selectRow(0);
                   boxes.expect(); // the same as now
                   bringBack();
               });
    EXPECT_FALSE(workspace.armas.history().canUndo());
}

TEST_F(CatalogueVersionsTest, PagesAndNoticesLeadToTheVersions)
{
    frmMapa().window(); // as in the program, where it watches what is unsaved
    EXPECT_TRUE(action(u"versiones"_s).isEnabled());
    choosePage(0);
    EXPECT_FALSE(action(u"versiones"_s).isEnabled());
    princ.cmdGuardarConjuros_Click();
    EXPECT_FALSE(ui().avisos->findChild<QPushButton*>(u"cmdVerOtraVersion"_s));
    const QByteArray theirs = app.read(u"ini/Conjuros.ini"_s).split('\n').first() + '\n';
    app.write(u"ini/Conjuros.ini"_s, theirs);
    princ.cmdGuardarConjuros_Click();
    workspace.conjuros.remove(workspace.conjuros.items().at(0).key());
    const auto press = [this] {
        QTest::mouseClick(ui().avisos->findChild<QPushButton*>(u"cmdVerOtraVersion"_s),
                          Qt::LeftButton);
    };
    inVersions(press, [] {
        EXPECT_EQ(shownFile(), u"Conjuros"_s);
        EXPECT_TRUE(shownText().startsWith(u"0 conjuros. "_s)) << shownText().toStdString();
        bringBack();
    });
    EXPECT_TRUE(workspace.conjuros.items().isEmpty());
    EXPECT_TRUE(ui().Frame_6->isVisible()) << "what was brought back is shown";
    workspace.conjuros.undo();
    EXPECT_FALSE(workspace.conjuros.items().isEmpty());
    workspace.background.finish();
    const auto kept = platform::keptVersions(cataloguePath(conjurosKind()));
    EXPECT_EQ(
        std::count_if(kept.begin(), kept.end(), std::mem_fn(&platform::KeptVersion::isUnsaved)), 1);
}
