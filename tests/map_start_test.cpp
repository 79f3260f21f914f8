// What the map window shows before there is a map.
#include "map_test.h"
#include "platform/forms/notice_bar.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmMapProperties.h"

#include <QMenuBar>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

class MapStartTest : public WindowTest
{
protected:
    MapStartTest()
    {
        frmTiles().createColumns();
        frmPines().createColumns();
        frmMapa().show();
    }

    static QWidget& panel() { return *frmMapa().ui().frameInicio; }
    static QPushButton& button(const QString& name)
    {
        return *panel().findChild<QPushButton*>(name);
    }
    static void expectGone(const char* why)
    {
        EXPECT_FALSE(panel().isVisible()) << why;
        EXPECT_EQ(frmMapa().window().focusWidget(), frmMapa().ui().imgMapa) << why;
    }
};

} // namespace

TEST_F(MapStartTest, TheButtonsRunTheirCommandsUntilThereIsAMap)
{
    EXPECT_TRUE(panel().isVisible());
    duringModal([] { QTest::mouseClick(&button(u"cmdAbrir"_s), Qt::LeftButton); },
                [] {
                    EXPECT_TRUE(frmListaArchivos().isVisible());
                    QTest::keyClick(&frmListaArchivos().window(), Qt::Key_Escape);
                });
    EXPECT_TRUE(panel().isVisible()) << "nothing was opened";
    QWidget* const view = frmMapa().ui().imgMapa;
    view->setFocus();
    for (const QString& name : {u"cmdNuevo"_s, u"cmdAbrir"_s, u"cmdGenerar"_s}) {
        QTest::keyClick(frmMapa().window().focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(frmMapa().window().focusWidget()->objectName(), name);
    }
    button(u"cmdNuevo"_s).setFocus();
    duringModal([] { QTest::keyClick(&button(u"cmdNuevo"_s), Qt::Key_Return); },
                [] {
                    EXPECT_TRUE(frmMapProperties().isVisible());
                    frmMapProperties().window().close();
                });
    EXPECT_TRUE(panel().isVisible());
    button(u"cmdGenerar"_s).setFocus();
    QTest::keyClick(&button(u"cmdGenerar"_s), Qt::Key_Space);
    EXPECT_FALSE(frmMapa().mapa().tileAt({}).isEmpty());
    expectGone("a world was made");
    frmMapa().documento.undo();
    EXPECT_TRUE(panel().isVisible()) << "the grid is as it was";
    view->setFocus();
    WorldMap unpainted;
    frmMapa().documento.openMapa(unpainted, {});
    expectGone("a map that nothing was painted in is a map");
}

TEST_F(MapStartTest, ItGivesWayToAModeAndComesBackWhileTheGridIsEmpty)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    for (QAction* const mode : {ui.tiles, ui.pines, ui.caminos}) {
        button(u"cmdNuevo"_s).setFocus();
        mode->trigger();
        expectGone(mode->objectName().toUtf8());
        QTest::keyClick(&frmMapa().window(), Qt::Key_Escape);
        EXPECT_TRUE(panel().isVisible()) << mode->objectName().toStdString();
    }
    auto* const select = frmMapa().window().findChild<QAction*>(u"seleccionar"_s);
    select->trigger();
    EXPECT_FALSE(panel().isVisible());
    select->trigger();
    EXPECT_TRUE(panel().isVisible());
    ui.tiles->trigger();
    frmMapa().documento.paint({{QPoint(99, 99)}}, frmTiles().selectedName());
    ui.tiles->trigger();
    EXPECT_FALSE(panel().isVisible()) << "a painted grid is a map";
}

TEST_F(MapStartTest, ItFollowsTheWindowAndIsNoPartOfThePicture)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    QString letters;
    for (const QAction* const menu : ui.menuBar->actions())
        letters += menu->text().section(u'&', 1).at(0).toLower();
    for (const QPushButton* const one : panel().findChildren<QPushButton*>()) {
        const QChar letter = one->text().section(u'&', 1).at(0).toLower();
        EXPECT_FALSE(letters.contains(letter)) << one->text().toStdString();
        letters += letter;
        EXPECT_FALSE(one->icon().isNull());
    }
    const auto* const line = panel().findChild<QLabel*>(u"lblInicio"_s);
    for (const bool hasNotice : {false, true}) {
        if (hasNotice)
            ui.avisos->tell({u"Hay trabajo sin guardar del 3 de marzo a las 10:15: el mapa."_s,
                             {{u"cmdRecuperar"_s, u"Recuperar"_s, [] {}}}});
        for (const QSize size : {QSize(480, 360), QSize(700, 500), QSize(1300, 900)}) {
            SCOPED_TRACE(size.width());
            frmMapa().window().resize(size);
            QCoreApplication::processEvents();
            const QRect view = ui.imgMapa->geometry();
            EXPECT_TRUE(view.contains(panel().geometry()));
            EXPECT_LE((panel().geometry().center() - view.center()).manhattanLength(), 1);
            for (const QPushButton* const one : panel().findChildren<QPushButton*>()) {
                EXPECT_TRUE(panel().rect().contains(one->geometry())) << one->text().toStdString();
                EXPECT_GT(one->height(), one->iconSize().height());
            }
            EXPECT_TRUE(line->isVisible() || size.height() == 360);
        }
    }
    const QImage shown = ui.imgMapa->grab().toImage();
    panel().hide();
    EXPECT_EQ(ui.imgMapa->grab().toImage(), shown);
}
