#include "map_test.h"
#include "platform/forms/list_view.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"
#include "worldmap/hex_geometry.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

const QString wideMap = u"Señoríos de Carrasmonte"_s;
const QString tallMap = u"Países del Cordal"_s;

class MapWindowTest : public WindowTest
{
protected:
    MapWindowTest()
    {
        frmTiles().createColumns();
        frmPines().createColumns();
        frmMapa().show();
    }

    static void press(const char* key)
    {
        QToolBar* const toolbar = frmMapa().ui().Toolbar;
        auto* const action = frmMapa().window().findChild<QAction*>(QLatin1String(key));
        ASSERT_TRUE(action);
        QTest::mouseClick(toolbar->widgetForAction(action), Qt::LeftButton);
    }

    /// Presses "abrir" and double-clicks the file in the list.
    static void open(const QString& mapName)
    {
        duringModal([] { press("abrir"); },
                    [&] {
                        platform::IconView& list = *frmListaArchivos().ui().lvListaArchivos;
                        const QModelIndexList found = list.model()->match(
                            list.model()->index(0, 0), Qt::DisplayRole, mapName + u".map"_s, 1);
                        ASSERT_EQ(found.size(), 1);
                        const QPoint centre = list.visualRect(found.first()).center();
                        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, centre);
                        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, centre);
                    });
    }

    QStringList mapFiles() const
    {
        return QDir(app.path(u"mapas"_s)).entryList(QDir::Files, QDir::Name | QDir::LocaleAware);
    }

    static QImage view()
    {
        return frmMapa().ui().imgMapa->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    /// What the view must show: the buffer from the view's corner, the ground beyond its edge.
    static void expectViewShowsBuffer()
    {
        const QImage shown = view();
        const QImage buffer = frmMapa().hdcBuffer.image();
        const QPoint corner(11 * frmMapa().currX, 14 * frmMapa().currY);
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                const QPoint from = corner + QPoint(x, y);
                const QRgb wanted =
                    buffer.rect().contains(from) ? buffer.pixel(from) : qRgb(0x24, 0x22, 0x20);
                ASSERT_EQ(shown.pixel(x, y), wanted) << x << ',' << y;
            }
        }
    }
};

} // namespace

TEST_F(MapWindowTest, StartsEmptyWithABlackBuffer)
{
    EXPECT_EQ(frmMapa().window().windowTitle(), u"Kestrune"_s);
    EXPECT_EQ(frmMapa().hdcBuffer.size(), QSize(1104, 1407));
    EXPECT_FALSE(frmMapa().ui().picScroll->isVisible());
    EXPECT_FALSE(frmMapa().documento.mapaCambiado());
    expectViewShowsBuffer();
}

TEST_F(MapWindowTest, OpensShowsAndSavesEveryShippedMap)
{
    for (const QString& name : {wideMap, tallMap}) {
        SCOPED_TRACE(name.toStdString());
        frmMapa().accion = PaintTiles;
        frmMapa().currX = 4;
        open(name);
        EXPECT_EQ(frmMapa().mapa().nombre, name);
        EXPECT_EQ(frmMapa().ui().lblNombre->text(), name);
        EXPECT_EQ(frmMapa().window().windowTitle(), name);
        EXPECT_EQ(frmMapa().accion, NoEditing);
        EXPECT_EQ(frmMapa().currX, 0);
        ASSERT_GE(frmMapa().lugares.count(), 12);
        EXPECT_NE(frmMapa().lugares.at(0).icon(), 0);
        EXPECT_EQ(frmMapa().hdcBuffer.size(),
                  hex::pictureSize(frmMapa().mapa().ancho(), frmMapa().mapa().alto()));
        expectViewShowsBuffer();

        const QString file = u"mapas/%1.map"_s.arg(name);
        const QByteArray bytes = app.read(file);
        ASSERT_TRUE(QFile::remove(app.path(file)));
        setChanged(true);
        press("guardar");
        EXPECT_TRUE(app.read(file) == bytes);
        EXPECT_FALSE(frmMapa().documento.mapaCambiado());
    }
}

TEST_F(MapWindowTest, FollowsAResize)
{
    open(wideMap);
    for (const QSize size : {QSize(1300, 900), QSize(640, 480), QSize(1000, 700)}) {
        frmMapa().window().resize(size);
        Ui::FrmMapa& ui = frmMapa().ui();
        EXPECT_EQ(ui.frameMapa->width(), size.width() - 16 - ui.frameLugares->width());
        EXPECT_EQ(ui.frameLugares->x(), ui.frameMapa->width() + 8);
        EXPECT_EQ(ui.frameMapa->height(), size.height() - ui.menuBar->height() -
                                              ui.lblEstado->height() - ui.Toolbar->height() - 64);
        EXPECT_EQ(ui.frameLugares->height(), ui.frameMapa->height());
        EXPECT_EQ(ui.lvLugares->height(), ui.frameLugares->height() - 24);
        EXPECT_EQ(ui.imgMapa->size(), ui.frameMapa->size() - QSize(16, 32));
        EXPECT_EQ(ui.picScroll->x(), size.width() / 2 - ui.picScroll->width() / 2);
        expectViewShowsBuffer();
    }
    // A notice takes its room from the frames while it is there.
    Ui::FrmMapa& ui = frmMapa().ui();
    const QRect frames = ui.frameMapa->geometry();
    ui.avisos->tell({u"Un aviso"_s, u"Otro aviso"_s});
    EXPECT_EQ(ui.frameMapa->geometry(), frames.adjusted(0, ui.avisos->height(), 0, 0));
    EXPECT_GT(ui.avisos->height(), 10);
    for (const QString& text : {u"Un aviso"_s, u"Otro aviso"_s}) {
        EXPECT_EQ(ui.avisos->text(), text);
        QTest::mouseClick(ui.avisos->findChild<QToolButton*>(u"cmdCerrarAviso"_s), Qt::LeftButton);
    }
    EXPECT_TRUE(ui.avisos->isHidden());
    EXPECT_EQ(ui.frameMapa->geometry(), frames);
    frmMapa().window().resize(2000, 1500); // wider and higher than the map
    expectViewShowsBuffer();
}

TEST_F(MapWindowTest, BannerPiecesLieSideBySide)
{
    for (const QString& name : {u"Ur"_s, tallMap, QString(120, u'W')}) {
        setNombre(name);
        Ui::FrmMapa& ui = frmMapa().ui();
        EXPECT_EQ(ui.imgScrollMiddle->x(), ui.imgScrollLeft->width());
        EXPECT_EQ(ui.imgScrollRight->x(), ui.imgScrollMiddle->geometry().right() + 1);
        EXPECT_EQ(ui.picScroll->width(), ui.imgScrollRight->geometry().right() + 1);
        EXPECT_EQ(ui.lblNombre->x(), ui.imgScrollLeft->width() / 2);
        EXPECT_GE(ui.lblNombre->width(), ui.lblNombre->sizeHint().width());
        EXPECT_TRUE(ui.picScroll->rect().contains(ui.lblNombre->geometry()));
    }
    EXPECT_EQ(frmMapa().ui().lblNombre->palette().color(QPalette::WindowText), QColor(72, 63, 44));
}

TEST_F(MapWindowTest, AFileThatCannotBeOpenedChangesNothing)
{
    open(tallMap);
    const QByteArray good = app.read(u"mapas/%1.map"_s.arg(tallMap));
    const WorldMap before = frmMapa().mapa();
    const QImage buffer = frmMapa().hdcBuffer.image();
    frmMapa().accion = SetPlaces;
    struct Case {
        QString file;
        QByteArray bytes;
        QString fragment;
    };
    for (const Case& c :
         {Case{u"vacio"_s, "", u"seis líneas"_s},
          Case{u"cortado"_s, good.first(good.size() / 2), u"seis líneas"_s},
          Case{u"enorme"_s, "x\r\n32767;32767\r\n1;2\r\n\r\n;\r\n\r\n", u"línea 2"_s},
          Case{u"lava"_s, "x\r\n1;1\r\n1;2\r\n\r\nLava;\r\n\r\n", u"«Lava»"_s}}) {
        app.write(u"mapas/%1.map"_s.arg(c.file), c.bytes);
        boxes.expect();
        open(c.file);
        EXPECT_EQ(boxes.asked().back().title, u"Error"_s);
        EXPECT_TRUE(boxes.asked().back().text.contains(c.file + u".map"_s));
        EXPECT_TRUE(boxes.asked().back().text.contains(c.fragment))
            << boxes.asked().back().text.toStdString();
        EXPECT_EQ(frmMapa().mapa().nombre, before.nombre);
        EXPECT_TRUE(frmMapa().mapa().mapaTiles == before.mapaTiles);
        EXPECT_TRUE(frmMapa().mapa().mapaPines == before.mapaPines);
        EXPECT_EQ(frmMapa().accion, SetPlaces);
        EXPECT_EQ(frmMapa().hdcBuffer.image(), buffer);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
}

TEST_F(MapWindowTest, AMapWhoseNameNoFileCanHaveOpensAndSaysSo)
{
    app.write(u"mapas/raro.map"_s, "../../fuera/x\r\n1;1\r\n0;0\r\n\r\nM1;\r\n\r\n");
    open(u"raro"_s);
    EXPECT_TRUE(frmMapa().ui().avisos->text().contains(u"«/»"_s));
    boxes.expect();
    press("guardar");
    EXPECT_TRUE(boxes.asked().back().text.contains(u"No se puede guardar"_s));
    EXPECT_FALSE(QFile::exists(app.path(u"../fuera"_s)));
}

TEST_F(MapWindowTest, CancellingTheFileListChangesNothing)
{
    open(tallMap);
    const auto cancelBy = [](const std::function<void(QWidget&)>& way) {
        duringModal([] { press("abrir"); }, [&] { way(frmListaArchivos().window()); });
        EXPECT_FALSE(frmListaArchivos().isVisible());
        EXPECT_EQ(frmMapa().mapa().nombre, tallMap);
    };
    const auto select = [] {
        auto& list = *frmListaArchivos().ui().lvListaArchivos;
        list.setCurrentIndex(list.model()->index(0, 0)); // another map than the one that is open
    };
    cancelBy([&](QWidget&) {
        select();
        QTest::keyClick(frmListaArchivos().ui().lvListaArchivos, Qt::Key_Escape);
    });
    cancelBy([&](QWidget& window) {
        select();
        window.close();
    });
    cancelBy([&](QWidget&) {
        select();
        QTest::mouseClick(frmListaArchivos().ui().cmdCancelar, Qt::LeftButton);
    });
    cancelBy([&](QWidget&) {
        select();
        frmListaArchivos().ui().cmdCancelar->setFocus();
        QTest::keyClick(frmListaArchivos().ui().cmdCancelar, Qt::Key_Return);
    });
    cancelBy([](QWidget&) { // beside the files, none selected
        auto& list = *frmListaArchivos().ui().lvListaArchivos;
        list.clearSelection();
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {},
                           list.viewport()->rect().bottomRight() - QPoint(3, 3));
    });
    cancelBy([](QWidget& window) {
        QTest::keyClick(&window, Qt::Key_Escape, Qt::ShiftModifier);
        EXPECT_TRUE(window.isVisible()) << "Escape with Shift isn't Escape";
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    duringModal([] { press("abrir"); },
                [&] {
                    frmListaArchivos().ui().lvListaArchivos->clearSelection();
                    QTest::mouseClick(frmListaArchivos().ui().cmdAbrir, Qt::LeftButton);
                    EXPECT_TRUE(frmListaArchivos().isVisible()) << "nothing was chosen yet";
                    select();
                    QTest::keyClick(frmListaArchivos().ui().lvListaArchivos, Qt::Key_Return);
                });
    EXPECT_EQ(frmMapa().mapa().nombre + u".map"_s, mapFiles().first());
}

TEST_F(MapWindowTest, TheFileListShowsFilesOfThePatternAndFollowsTheFolder)
{
    const qsizetype shipped = mapFiles().size();
    QDir().mkpath(app.path(u"mapas/carpeta.map"_s));
    app.write(u"mapas/notas.txt"_s, "x");
    duringModal([] { press("abrir"); },
                [&] {
                    auto& list = *frmListaArchivos().ui().lvListaArchivos;
                    const int before = list.model()->rowCount();
                    EXPECT_EQ(before, shipped);
                    app.write(u"mapas/Aa.MAP"_s, "x");
                    QEvent activation(QEvent::WindowActivate);
                    QCoreApplication::sendEvent(&frmListaArchivos().window(), &activation);
                    EXPECT_EQ(list.model()->rowCount(), before + 1);
                    EXPECT_EQ(list.model()->index(0, 0).data().toString(), u"Aa.MAP"_s);
                    frmListaArchivos().hide();
                });
}

TEST_F(MapWindowTest, ANewMapIsPaintedWithTheSelectedTile)
{
    open(tallMap);
    frmMapa().currY = 3;
    frmTiles().ui().lvTiles->setCurrentIndex(frmTiles().palette.items.index(4, 0));
    const QString tile = frmTiles().selectedName();
    frmMapa().newMapa({}, {75, 50});
    EXPECT_TRUE(frmMapa().documento.mapaCambiado());
    EXPECT_EQ(frmMapa().currY, 0);
    EXPECT_EQ(frmMapa().lugares.count(), 0);
    EXPECT_EQ(frmMapa().mapa().mapaTiles.rows(), 50);
    EXPECT_EQ(frmMapa().mapa().mapaTiles.columns(), 75);
    for (const QString& cell : frmMapa().mapa().mapaTiles)
        ASSERT_EQ(cell, tile);
    EXPECT_TRUE(frmMapa().mapa().mapaPines.empty());
    // The last cell of the last row but one is drawn whole: its left part is the tile's.
    const QPoint origin = hex::cellOrigin(74, 48);
    EXPECT_EQ(frmMapa().hdcBuffer.image().pixel(origin + QPoint(7, 7)),
              frmMapa().tileActual->image().pixel(7, 7));
    expectViewShowsBuffer();
}

TEST_F(MapWindowTest, SavingNeedsANameAndRoomToWrite)
{
    const QStringList before = mapFiles();
    setChanged(true);
    boxes.expect();
    press("guardar");
    EXPECT_EQ(boxes.asked().back().text, u"Debe ingresar un nombre para el mapa"_s);
    EXPECT_EQ(boxes.asked().back().title, u"Error"_s);
    EXPECT_EQ(boxes.asked().back().icon, platform::MsgBox::Icon::Critical);
    EXPECT_FALSE(frmMapa().documento.mapaCambiado());
    EXPECT_EQ(mapFiles(), before);

    open(tallMap);
    const QString file = u"mapas/%1.map"_s.arg(tallMap);
    const QByteArray bytes = app.read(file);
    MapProperties properties = frmMapa().mapa();
    properties.notasMapa = u"otras"_s;
    frmMapa().documento.setProperties(properties);
    setChanged(true);
    {
        const FullDisk disk(4096);
        boxes.expect();
        press("guardar");
    }
    EXPECT_TRUE(boxes.asked().back().text.contains(u"No se puede guardar"_s));
    EXPECT_TRUE(frmMapa().documento.mapaCambiado());
    EXPECT_TRUE(app.read(file) == bytes);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(MapWindowTest, TheNameOfSaveAsStaysWhateverIsUndone)
{
    const auto saveAs = [](const QString& name) {
        duringModal([] { frmMapa().window().findChild<QAction*>(u"guardarComo"_s)->trigger(); },
                    [&] {
                        auto* const dialog =
                            qobject_cast<QDialog*>(QApplication::activeModalWidget());
                        dialog->findChild<QLineEdit*>(u"txtNombre"_s)->setText(name);
                        dialog->accept();
                    });
    };
    saveAs(u"Uno"_s);
    const QByteArray old = app.read(u"mapas/Uno.map"_s);
    frmMapa().documento.setPlace({3, 3}, {u"Aldea"_s, u"Soto"_s, {}});
    saveAs(u"Dos"_s);
    frmMapa().documento.undo();
    press("guardar");
    EXPECT_EQ(app.read(u"mapas/Uno.map"_s), old);
    EXPECT_EQ(QString::fromUtf8(app.read(u"mapas/Dos.map"_s)),
              QString::fromUtf8(old).replace(u"Uno"_s, u"Dos"_s));
    QDir(app.path(u"mapas"_s)).mkdir(u"Tres.map"_s);
    boxes.expect();
    saveAs(u"Tres"_s);
    EXPECT_EQ(frmMapa().window().windowTitle(), u"Dos"_s);
    EXPECT_EQ(frmMapa().documento.redoText(), u"poner «Soto»"_s);
    EXPECT_FALSE(frmMapa().documento.mapaCambiado());
}
