// The list of map files: keys, and what is shown beside it.
#include "window_test.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace {

const QStringList shipped{u"Comarca de las Tres Bahías.map"_s, u"La Corona de Sarmenta.map"_s,
                          u"Países del Cordal.map"_s, u"Señoríos de Carrasmonte.map"_s};

class MapListTest : public WindowTest
{
protected:
    MapListTest()
    {
        frmTiles().createColumns();
        frmPines().createColumns();
        workspace.loadTiles();
        workspace.loadPines();
        frmListaArchivos().camino = u"mapas"_s;
        frmListaArchivos().mascara = u"*.map"_s;
        frmListaArchivos().icono = 1;
    }

    static platform::IconView& list() { return *frmListaArchivos().ui().lvListaArchivos; }
    static QString chosen()
    {
        const platform::ListItem* const file = list().selectedItem();
        return file ? file->text() : QString();
    }
    static QString text() { return frmListaArchivos().ui().lblVistaPrevia->text(); }
    static QImage picture() { return frmListaArchivos().ui().imgVistaPrevia->picture(); }

    static void inList(const std::function<void()>& action)
    {
        duringModal([] { frmListaArchivos().showModal(); },
                    [&] {
                        action();
                        frmListaArchivos().hide();
                    });
    }
    static void waitForLook()
    {
        EXPECT_TRUE(QTest::qWaitFor([] { return text() != u"Leyendo…"_s; }));
    }
    static QString typed(const QString& keys)
    {
        for (const QChar letter : keys) { // Qt's own way knows no accents
            QKeyEvent press(QEvent::KeyPress, 0, {}, letter);
            QCoreApplication::sendEvent(&list(), &press);
        }
        return chosen();
    }
    static QString pressed(Qt::Key key)
    {
        QTest::keyClick(&list(), key);
        return chosen();
    }
    static void pause() { QTest::qWait(QApplication::keyboardInputInterval() + 50); }
};

} // namespace

TEST_F(MapListTest, KeysAndLettersChooseAndEnterOpens)
{
    app.write(u"mapas/Sal.map"_s, "x");
    inList([] {
        EXPECT_EQ(chosen(), shipped[0]) << "the first one, to begin with";
        EXPECT_EQ(typed(u"señ"_s), shipped[3]) << "past «Sal»";
        pause();
        EXPECT_EQ(typed(u"paises"_s), shipped[2]);
        pause();
        EXPECT_EQ(typed(u"LA CO"_s), shipped[1]);
        EXPECT_EQ(typed(u"q"_s), shipped[1]) << "nothing begins so";
        pause();
        EXPECT_EQ(typed(u"s"_s), u"Sal.map"_s);
        EXPECT_EQ(typed(u"s"_s), shipped[3]) << "the next one of the letter";
        EXPECT_EQ(typed(u"s"_s), u"Sal.map"_s) << "and round";
        EXPECT_EQ(pressed(Qt::Key_Home), shipped[0]);
        EXPECT_EQ(pressed(Qt::Key_End), shipped[3]);
        EXPECT_EQ(pressed(Qt::Key_Left), u"Sal.map"_s);
        pressed(Qt::Key_Home);
        list().clearSelection();
        EXPECT_EQ(pressed(Qt::Key_Home), shipped[0]) << "where it is already";
        QTest::keyClick(&list(), Qt::Key_Return);
    });
    EXPECT_EQ(frmListaArchivos().caminoArchivo, app.path(u"mapas/"_s + shipped[0]));
    inList([&] {
        EXPECT_EQ(pressed(Qt::Key_End), shipped[3]);
        app.write(u"mapas/Aa.map"_s, "x");
        QEvent activation(QEvent::WindowActivate);
        QCoreApplication::sendEvent(&frmListaArchivos().window(), &activation);
        EXPECT_EQ(chosen(), shipped[3]) << "also among other files";
        QTest::keyClick(&list(), Qt::Key_Escape);
    });
    EXPECT_TRUE(frmListaArchivos().caminoArchivo.isEmpty());
}

TEST_F(MapListTest, ThePaneShowsTheChosenMapOrWhyItCannotBeRead)
{
    app.write(u"mapas/Roto.map"_s, "x\r\n1;1\r\n");
    app.write(u"mapas/Uno.map"_s, "Uno\r\n2;4\r\n1;2\r\n\r\nM2;M2;M2;M2;M2;M2;M2;M2;\r\n"
                                  "0;0;Aldea;Alba;|\r\n");
    QFile file(app.path(u"mapas/Uno.map"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QDateTime time(QDate(2024, 2, 29), QTime(7, 5));
    ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    file.close();
    inList([&] {
        waitForLook();
        EXPECT_TRUE(text().startsWith(u"«Comarca de las Tres Bahías»: 50 columnas × 50 filas"_s));
        EXPECT_FALSE(picture().isNull());
        typed(u"uno"_s);
        EXPECT_EQ(text(), u"Leyendo…"_s);
        EXPECT_TRUE(picture().isNull()) << "not another map's";
        waitForLook();
        EXPECT_EQ(text(), u"«Uno»: 4 columnas × 2 filas, un lugar.\n"
                          "Guardado el 29 de febrero de 2024 a las 7:05."_s);
        EXPECT_GT(picture().width(), picture().height());
        const int before = picture().width();
        frmListaArchivos().window().resize(1200, 700);
        EXPECT_GT(picture().width(), before);
        pause();
        typed(u"rot"_s);
        waitForLook();
        EXPECT_TRUE(text().contains(u"Roto.map"_s) && text().contains(u"seis líneas"_s));
        EXPECT_TRUE(picture().isNull());
        pressed(Qt::Key_Home);
        pressed(Qt::Key_End); // while the first one is being looked at
        EXPECT_TRUE(QTest::qWaitFor([] { return text().startsWith(u"«Uno»"_s); }));
        list().clearSelection();
        EXPECT_TRUE(text().isEmpty());
    });
    app.write(u"mapas/Uno.map"_s, "Uno\r\n1;1\r\n1;2\r\n\r\nM2;\r\n\r\n");
    inList([&] {
        pressed(Qt::Key_End);
        waitForLook();
        EXPECT_TRUE(text().startsWith(u"«Uno»: 1 columnas × 1 filas, 0 lugares."_s))
            << text().toStdString();
    });
    frmListaArchivos().mascara = u"*.nada"_s;
    inList([] { EXPECT_EQ(text(), u"Aquí no hay ningún mapa todavía."_s); });
}

TEST_F(MapListTest, ThreeThousandMapsComeUpAtOnce)
{
    for (int i = 0; i < 3000; ++i)
        app.write(u"mapas/Tierras de la orilla %1.map"_s.arg(i, 4, 10, QChar(u'0')), "x");
    QElapsedTimer timer;
    timer.start();
    inList([&] {
        QCoreApplication::processEvents();
        std::cout << timer.elapsed() << " ms to come up\n";
        EXPECT_LT(timer.restart(), 3000) << "some 20 times what it takes on a quiet machine";
        EXPECT_EQ(typed(u"tierras de la orilla 2999"_s), u"Tierras de la orilla 2999.map"_s);
        EXPECT_EQ(pressed(Qt::Key_Home), shipped[0]);
        std::cout << timer.elapsed() << " ms for a name and a key\n";
    });
}
