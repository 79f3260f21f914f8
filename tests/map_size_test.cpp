// Changing a map's size in its dialog.
#include "map_test.h"
#include "worldmap/frmRedimensionar.h"

using namespace Qt::StringLiterals;

using MapSizeTest = MapTest;

TEST_F(MapSizeTest, ChangesTheSizeInOneStepAndKeepsWhatIsShown)
{
    alterMap([](WorldMap& map) {
        map.mapaPines = {{{1, 1}, {u"Aldea"_s, u"Soto"_s, {}}},
                         {{9, 9}, {u"Aldea"_s, u"Vado"_s, {}}}};
    });
    const WorldMap before = frmMapa().mapa();
    frmMapa().currX = 10;
    frmMapa().currY = 8;
    const auto change = [](const std::function<void(Ui::FrmRedimensionar&)>& fill) {
        duringModal([] { frmMapa().window().findChild<QAction*>(u"redimensionar"_s)->trigger(); },
                    [&] { fill(frmRedimensionar().ui()); });
    };
    change([&](Ui::FrmRedimensionar& ui) {
        EXPECT_EQ(ui.lblTamano->text(), u"50 × 50 casillas"_s);
        EXPECT_EQ(ui.cmbTile->currentData().toString(), frmTiles().selectedName());
        ui.txtAbajo->setValue(-50);
        boxes.expect();
        QTest::mouseClick(ui.cmdAceptar, Qt::LeftButton);
        EXPECT_TRUE(boxes.asked().back().text.contains(u"0 filas"_s));
        ui.txtAbajo->setValue(30);
        ui.txtDerecha->setValue(40);
        ui.txtArriba->setValue(-5);
        QApplication::setActiveWindow(&frmRedimensionar().window());
        ui.txtIzquierda->setFocus();
        ui.txtIzquierda->selectAll();
        QTest::keyClicks(ui.txtIzquierda, u"3"_s);
        QTest::keyClick(ui.txtIzquierda, Qt::Key_Tab);
        EXPECT_EQ(ui.txtIzquierda->text(), u"4"_s);
        EXPECT_EQ(ui.lblTamano->text(), u"94 × 75 casillas"_s);
        ASSERT_EQ(ui.lstLugares->count(), 1);
        EXPECT_EQ(ui.lstLugares->item(0)->text(), u"Soto"_s);
        const QImage preview = ui.imgVista->picture();
        ui.cmbTile->setCurrentIndex(ui.cmbTile->findData(u"T1"_s));
        EXPECT_NE(ui.imgVista->picture(), preview);
        QTest::keyClick(ui.cmbTile, Qt::Key_Return);
    });
    EXPECT_EQ(frmMapa().mapa().ancho(), 94);
    EXPECT_EQ(frmMapa().mapa().alto(), 75);
    EXPECT_EQ(frmMapa().mapa().mapaTiles(0, 0), u"T1"_s);
    EXPECT_EQ(placeText(4, 13), u"Aldea;Vado;"_s);
    EXPECT_EQ(frmMapa().lugares.count(), 1);
    EXPECT_EQ(QPoint(frmMapa().currX, frmMapa().currY), QPoint(14, 3));
    EXPECT_EQ(frmMapa().documento.undoText(), u"cambiar el tamaño"_s);
    frmMapa().documento.undo();
    EXPECT_EQ(frmMapa().mapa(), before);
    EXPECT_EQ(frmMapa().lugares.count(), 2);

    change([](Ui::FrmRedimensionar& ui) {
        EXPECT_EQ(ui.txtDerecha->value(), 0);
        QTest::mouseClick(ui.cmdAceptar, Qt::LeftButton);
    });
    change([](Ui::FrmRedimensionar& ui) {
        ui.txtDerecha->setValue(7);
        QTest::keyClick(ui.txtDerecha, Qt::Key_Escape);
    });
    EXPECT_EQ(frmMapa().mapa(), before);
    EXPECT_FALSE(frmMapa().documento.canUndo());
}
