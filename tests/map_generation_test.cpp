// Worlds, roads and the climate report, as the map window makes and shows them.
#include "generation/frmClima.h"
#include "generation/path_finding.h"
#include "generation/world_generator.h"
#include "map_test.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using MapGenerationTest = MapTest;

TEST_F(MapGenerationTest, AButtonReplacesTheMapByAWorld)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    alterMap([](WorldMap& map) {
        map.notasMapa = u"quedan"_s;
        map.mapaPines[{3, 3}] = {u"Aldea"_s, u"Vieja"_s, {}};
    });
    setChanged(true);
    frmMapa().currX = 4;
    press(ui.tiles);
    boxes.expect(platform::MsgBox::Answer::No);
    press(ui.generar);
    const WorldMap first = frmMapa().mapa();
    EXPECT_EQ(frmMapa().accion, NoEditing);
    EXPECT_TRUE(ui.tiles->isChecked()) << "the button stays, only the mode is gone";
    EXPECT_EQ(first.notasMapa, u"quedan"_s);
    EXPECT_EQ(first.mapaTiles.columns(), 50);
    EXPECT_EQ(frmMapa().currX, 0);
    EXPECT_TRUE(frmMapa().documento.mapaCambiado());
    EXPECT_EQ(frmMapa().window().windowTitle(), first.nombre);
    EXPECT_FALSE(first.nombre.isEmpty());
    EXPECT_EQ(frmMapa().lugares.count(), static_cast<int>(first.mapaPines.size()));
    expectPixelsOfFullRedraw();

    setChanged(false);
    press(ui.generar);
    EXPECT_NE(frmMapa().mapa().mapaTiles, first.mapaTiles);

    // What can't be generated leaves the map as it was.
    const WorldMap kept = frmMapa().mapa();
    setChanged(false);
    const auto expectFailure = [&](const QString& fragment) {
        boxes.expect();
        press(ui.generar);
        EXPECT_TRUE(boxes.asked().back().text.contains(fragment))
            << boxes.asked().back().text.toStdString();
        EXPECT_EQ(frmMapa().mapa().mapaTiles, kept.mapaTiles);
        EXPECT_EQ(frmMapa().mapa().nombre, kept.nombre);
        EXPECT_FALSE(frmMapa().documento.mapaCambiado());
    };
    app.write(u"gramaticas/Nombres de lugares.txt"_s, "[a]\r\n<b>\r\n");
    expectFailure(u"«b»"_s);
    workspace.pictures.colTiles.remove(u"B2"_s);
    expectFailure(u"«B2»"_s);
}

TEST_F(MapGenerationTest, TwoClicksDrawARoad)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    alterMap([](WorldMap& map) { map.mapaTiles = platform::Grid<QString>(50, 50, u"T2"_s); });
    const QImage plain = frmMapa().hdcBuffer.image().copy();
    const auto expectNoEnds = [] {
        EXPECT_EQ(frmMapa().inicioX, -1);
        EXPECT_EQ(frmMapa().inicioY, -1);
        EXPECT_EQ(frmMapa().finX, -1);
        EXPECT_EQ(frmMapa().finY, -1);
    };
    click(1, 1);
    click(6, 1, Qt::RightButton);
    expectNoEnds(); // not in this mode
    press(ui.caminos);
    EXPECT_EQ(frmMapa().accion, DrawRoads);
    click(1, 1);
    click(3, 5);
    EXPECT_EQ(QPoint(frmMapa().inicioX, frmMapa().inicioY), QPoint(3, 5));
    EXPECT_EQ(frmMapa().hdcBuffer.image(), plain);
    click(8, 5, Qt::RightButton);
    expectNoEnds();
    const QImage drawn = frmMapa().hdcBuffer.image().copy();
    constexpr QRgb brown = qRgb(60, 30, 20);
    EXPECT_EQ(drawn.pixel(11 * 3 + 7, 14 * 5 + 14), brown) << "an odd column";
    EXPECT_EQ(drawn.pixel(11 * 8 + 7, 14 * 5 + 7), brown) << "an even column";
    EXPECT_EQ(drawn.pixel(11 * 1 + 7, 14 * 1 + 14), plain.pixel(11 * 1 + 7, 14 * 1 + 14));
    EXPECT_EQ(ui.imgMapa->grab().toImage().pixel(11 * 3 + 7, 14 * 5 + 14), brown);

    // A pin goes over the road, and leaves it around its picture.
    press(ui.pines);
    setPlace(3, 5, u"Venta"_s, {});
    const QRect pinned(hex::cellOrigin(3, 5), QSize(hex::cellWidth, hex::cellHeight));
    platform::MemoryDC expected(drawn);
    expected.MaskBlt(pinned.x(), pinned.y(), pinned.width(), pinned.height(), *frmMapa().tileActual,
                     *frmMapa().tileMask);
    EXPECT_EQ(frmMapa().hdcBuffer.image(), expected.image());
    EXPECT_NE(drawn.copy(pinned), plain.copy(pinned)) << "the road passes there";

    // Painting a cell, even as it is, wipes the road off it.
    press(ui.tiles);
    for (int row = 0; row < frmTiles().palette.items.count(); ++row) {
        if (frmTiles().palette.items.at(row).key() == "T2"_L1)
            choose(frmTiles().ui().lvTiles, row);
    }
    click(8, 5);
    EXPECT_EQ(frmMapa().hdcBuffer.image().copy(QRect(hex::cellOrigin(8, 5), QSize(11, 14))),
              plain.copy(QRect(hex::cellOrigin(8, 5), QSize(11, 14))));
    press(ui.caminos); // released, and pressed again
    press(ui.caminos);

    // The end first, then the start; a cell with itself; ends outside; no way through.
    click(9, 9, Qt::RightButton);
    click(9, 9);
    expectNoEnds();
    send(QEvent::MouseButtonPress, QPoint(-30, 40), Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, QPoint(-30, 40), Qt::LeftButton, Qt::NoButton);
    expectNoEnds();
    alterMap([](WorldMap& map) {
        for (int y = 0; y < 50; ++y)
            map.mapaTiles(y, 20) = u"M1"_s;
    });
    const QImage before = frmMapa().hdcBuffer.image().copy();
    click(15, 5);
    click(25, 5, Qt::RightButton);
    expectNoEnds();
    EXPECT_EQ(frmMapa().hdcBuffer.image(), before);

    workspace.tiles.items.find(u"T2"_s)->setSubItem(u"costo"_s, u"caro"_s);
    click(1, 5);
    boxes.expect();
    click(4, 5, Qt::RightButton);
    EXPECT_TRUE(boxes.asked().back().text.contains(u"«T2» de la casilla X:0 Y:6"_s));
    expectNoEnds();

    // A map that replaces another leaves an end that lies on it too.
    click(45, 3);
    frmMapa().newMapa({}, {50, 50});
    EXPECT_EQ(QPoint(frmMapa().inicioX, frmMapa().inicioY), QPoint(45, 3));
    frmMapa().newMapa({}, {45, 50});
    expectNoEnds();
    EXPECT_NE(frmMapa().hdcBuffer.image().pixel(11 * 3 + 7, 14 * 5 + 14), brown);
    press(ui.caminos);
    EXPECT_EQ(frmMapa().accion, NoEditing);
}

TEST_F(MapGenerationTest, TheClimateReportNeedsLatitudes)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    boxes.expect();
    press(ui.clima);
    EXPECT_TRUE(boxes.asked().back().text.contains(u"latitudes"_s));
    EXPECT_FALSE(frmClima().isVisible());
    alterMap([](WorldMap& map) {
        map.latNorte = 30;
        map.latSur = -30;
    });
    press(ui.clima);
    EXPECT_TRUE(frmClima().isVisible());
    EXPECT_EQ(frmClima().window().windowTitle(), u"Form1"_s);
    const QString text = frmClima().ui().txtClima->toPlainText();
    EXPECT_TRUE(text.startsWith(u"60\n1.2\n"_s)) << text.left(20).toStdString();
    EXPECT_EQ(text.count(u'\n'), 52);
    EXPECT_EQ(QFontInfo(frmClima().ui().txtClima->font()).fixedPitch(), true);
    QTest::keyClick(frmClima().ui().txtClima, Qt::Key_Escape);
    EXPECT_FALSE(frmClima().isVisible());
    alterMap([](WorldMap& map) { map.mapaTiles(7, 9).clear(); });
    boxes.expect();
    press(ui.clima);
    EXPECT_TRUE(boxes.asked().back().text.contains(u"X:9 Y:7"_s));
    EXPECT_EQ(frmClima().ui().txtClima->toPlainText(), text);
}

TEST_F(MapGenerationTest, TheClimateHasAPageWithItsMap)
{
    alterMap([](WorldMap& map) {
        map.latNorte = 60;
        map.latSur = 0;
    });
    press(frmMapa().ui().clima);
    Ui::FrmClima& ui = frmClima().ui();
    EXPECT_EQ(ui.tabClima->currentIndex(), 0);
    EXPECT_EQ(ui.tabClima->tabText(0), u"Informe"_s);
    EXPECT_EQ(ui.tabClima->tabText(1), u"Mapa"_s);
    EXPECT_EQ(frmClima().window().focusWidget(), ui.txtClima);
    EXPECT_TRUE(ui.imgClima->accessibleDescription().startsWith(u"Clima"_s));
    ui.tabClima->setCurrentIndex(1);
    // North, dark, is cold; the window's size is the map's.
    for (const QSize size : {QSize(760, 480), QSize(300, 700), QSize(120, 90), QSize(60, 30)}) {
        frmClima().window().resize(size);
        const QImage shown = ui.imgClima->grab().toImage();
        const int middle = shown.width() / 2;
        const bool hasRoom = shown.height() > 200;
        const int top = hasRoom ? (shown.height() - 68) / 2 - 40 : 0;
        const int bottom = hasRoom ? (shown.height() - 68) / 2 + 40 : 0;
        EXPECT_EQ(qGray(shown.pixel(middle, top)) < qGray(shown.pixel(middle, bottom)), hasRoom);
    }
}
