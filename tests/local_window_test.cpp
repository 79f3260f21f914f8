// The local map window, and the minimap that it shares with the world map.
#include "catalogue/frmPrinc.h"
#include "localmap/frmMapaLocal.h"
#include "map_test.h"
#include "worldmap/frmTilesLocales.h"

using namespace Qt::StringLiterals;

using platform::MsgBox::Answer;

namespace {

class LocalWindowTest : public MapTest
{
protected:
    LocalWindowTest()
    {
        frmTilesLocales().createColumns();
        frmPrinc().show();
        QTest::mouseClick(frmPrinc().ui().cmdDungeon, Qt::LeftButton);
    }

    static void push(QAction* button)
    {
        QTest::mouseClick(frmMapaLocal().ui().Toolbar->widgetForAction(button), Qt::LeftButton);
    }

    static QImage view() { return frmMapaLocal().ui().imgMapa->grab().toImage(); }
};

} // namespace

TEST_F(LocalWindowTest, GeneratingAsksOnlyAboutAChangedMap)
{
    Ui::FrmMapaLocal& ui = frmMapaLocal().ui();
    EXPECT_TRUE(frmMapaLocal().isVisible());
    EXPECT_FALSE(frmMapaLocal().hdcBuffer.isNull());
    // The design's places, below the menus. Its sizes follow from the window's.
    const int menus = ui.menuBar->height();
    const int bars = menus + ui.lblEstado->height();
    const QSize outer = frmMapaLocal().window().frameGeometry().size();
    EXPECT_EQ(frmMapaLocal().window().size(), QSize(758, 560 + bars));
    EXPECT_EQ(ui.frameMapa->geometry(),
              QRect(0, menus + 24, outer.width() - 16 - 153, outer.height() - bars - 2 - 64));
    EXPECT_EQ(ui.frameLugares->pos(), QPoint(ui.frameMapa->width() + 8, menus + 24));
    EXPECT_EQ(ui.lvLugares->geometry(), QRect(8, 16, 137, ui.frameMapa->height() - 24));
    EXPECT_EQ(ui.imgMapa->geometry(), QRect(QPoint(8, 24), ui.frameMapa->size() - QSize(16, 32)));
    EXPECT_EQ(frmMapaLocal().window().focusWidget(), ui.imgMapa);
    const QImage empty = view();
    for (QAction* const idle : {ui.nuevo, ui.abrir, ui.guardar, ui.propiedades, ui.pines}) {
        EXPECT_FALSE(idle->isEnabled());
        push(idle);
    }
    EXPECT_EQ(view(), empty);
    push(ui.generar);
    EXPECT_NE(view(), empty);
    EXPECT_TRUE(frmMapaLocal().mapaCambiado);
    for (const Answer answer : {Answer::Yes, Answer::No}) {
        const auto before = frmMapaLocal().mapaLocal;
        boxes.expect(answer);
        push(ui.generar);
        EXPECT_EQ(boxes.asked().back().text, u"El mapa ha cambiado. ¿Desea guardarlo?"_s);
        EXPECT_EQ(boxes.asked().back().title, u"Advertencia"_s);
        EXPECT_NE(frmMapaLocal().mapaLocal, before);
    }
    // The view is the buffer's part from its corner, also after the window was in the background.
    frmMapaLocal().currX = 3;
    frmMapaLocal().currY = 10;
    frmMapaLocal().scrollMapa();
    const QImage shown = view().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(shown, frmMapaLocal().hdcBuffer.image().copy(QRect(QPoint(96, 320), shown.size())))
        << "a view that ends inside the map";
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&frmMapaLocal().window(), &activation);
    EXPECT_EQ(view().convertToFormat(QImage::Format_RGB32), shown);
}

TEST_F(LocalWindowTest, AMissingTileIsToldOfOnce)
{
    workspace.localPictures.colTilesLocales.remove(u"i1"_s);
    workspace.localPictures.colTilesLocales.remove(u"r1t"_s);
    boxes.expect();
    push(frmMapaLocal().ui().generar);
    EXPECT_TRUE(boxes.asked().back().text.contains(u"i1"_s));
    EXPECT_TRUE(boxes.asked().back().text.contains(u"r1t"_s));
    EXPECT_EQ(boxes.asked().size(), 1u);
}

TEST_F(LocalWindowTest, TheMinimapServesTheWindowThatShowedItLast)
{
    Ui::FrmMapaLocal& ui = frmMapaLocal().ui();
    push(ui.generar);
    press(frmMapa().ui().minimapa);
    platform::PictureBox& picture = *frmMinimap().ui().imgMinimap;
    EXPECT_EQ(picture.width(), qRound(177.0 * 550 / 707));

    push(ui.minimapa);
    EXPECT_FALSE(frmMapa().ui().minimapa->isChecked());
    EXPECT_TRUE(frmMinimap().window().actions().isEmpty()) << "none of the world map's";
    press(frmMapa().ui().pines);
    QTest::keyClick(&frmMinimap().window(), Qt::Key_Escape);
    EXPECT_EQ(frmMapa().accion, SetPlaces);
    EXPECT_EQ(picture.size(), QSize(177, 177));
    platform::MemoryDC reduced(177, 177);
    reduced.StretchBlt(0, 0, 177, 177, platform::MemoryDC(frmMapaLocal().hdcBuffer.image()), 0, 0,
                       1600, 1600, platform::RasterOp::SRCCOPY);
    EXPECT_EQ(picture.dc().image(), reduced.image());
    EXPECT_NEAR(frmMinimap().ui().imgSelector->width(), 177.0 * ui.imgMapa->width() / 1600, 1);
    QTest::mouseClick(&picture, Qt::LeftButton, {}, QPoint(120, 140));
    EXPECT_GT(frmMapaLocal().currX, 10);
    EXPECT_GT(frmMapaLocal().currY, 10);
    EXPECT_EQ(QPoint(frmMapa().currX, frmMapa().currY), QPoint());
    // What happens to the world map meanwhile doesn't show here.
    const QImage local = picture.dc().image().copy();
    press(frmMapa().ui().tiles);
    choose(frmTiles().ui().lvTiles, 9);
    click(5, 5);
    frmMapa().drawMinimap();
    EXPECT_EQ(picture.dc().image(), local);

    press(frmMapa().ui().minimapa);
    EXPECT_FALSE(ui.minimapa->isChecked());
    EXPECT_TRUE(frmMapa().ui().minimapa->isChecked() && frmMinimap().isVisible());
    expectPixelsOfFullRedraw();
    push(ui.minimapa);
    frmMinimap().window().close();
    EXPECT_FALSE(ui.minimapa->isChecked());
}

TEST_F(LocalWindowTest, ClosingHidesItsToolWindowsAndOpeningAgainWorks)
{
    for (int twice = 0; twice < 2; ++twice) {
        QTest::mouseClick(frmPrinc().ui().cmdDungeon, Qt::LeftButton);
        EXPECT_FALSE(frmMapaLocal().mapaCambiado);
        push(frmMapaLocal().ui().generar);
        push(frmMapaLocal().ui().tiles);
        push(frmMapaLocal().ui().minimapa);
        EXPECT_TRUE(frmTilesLocales().isVisible() && frmMinimap().isVisible());
        EXPECT_EQ(frmTilesLocales().palette.items.count(),
                  workspace.localPictures.colTilesLocales.size());
        frmMapaLocal().window().close();
        EXPECT_FALSE(frmMapaLocal().isLoaded());
        EXPECT_FALSE(frmTilesLocales().isVisible() || frmMinimap().isVisible());
        EXPECT_TRUE(workspace.localPictures.colTilesLocales.isEmpty());
        EXPECT_TRUE(frmMapaLocal().hdcBuffer.isNull());
    }
    press(frmMapa().ui().minimapa); // the world map takes the minimap back
    EXPECT_TRUE(frmMinimap().isVisible());
    EXPECT_FALSE(frmMapaLocal().isLoaded());
}
