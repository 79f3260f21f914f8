#include "map_test.h"
#include "worldmap/map_file.h"

#include <QDirIterator>
#include <QLabel>
#include <QPushButton>
#include <QSemaphore>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

/// A test of what an earlier run left, which the map window offers.
class RecoveryWindowTest : public MapTest
{
protected:
    /// A program that ended, in the same folder.
    void leave(const QString& work, const QString& target, const QByteArray& content)
    {
        const RecoveryCopy copy{
            work, app.path(target), {}, QDateTime({2026, 11, 23}, {9, 5}), content};
        leaveBytes(work, bytesOf(copy));
    }
    void leaveBytes(const QString& work, const QByteArray& bytes)
    {
        app.write(u"respaldo/recuperacion/2026-11-23 09.00.00/%1.copia"_s.arg(work), bytes);
    }
    QStringList left() const
    {
        return QDir(app.path(u"respaldo/recuperacion/2026-11-23 09.00.00"_s))
            .entryList(QDir::Files);
    }
    void begin()
    {
        workspace.recovery.begin();
        wait();
    }
    void wait()
    {
        workspace.background.finish();
        QCoreApplication::processEvents();
    }
    static QString notice() { return frmMapa().ui().avisos->text(); }
    static void answer(const QString& button)
    {
        auto* const found = frmMapa().window().findChild<QPushButton*>(button);
        ASSERT_TRUE(found) << button.toStdString();
        QTest::mouseClick(found, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
};

const QByteArray smallMap = "\r\n2;2\r\n40;30\r\n\r\nM1;T1;T2;M1;\r\n1;0;Aldea;Soto;|\r\n";

} // namespace

TEST_F(RecoveryWindowTest, TakesOverMapAndCatalogues)
{
    workspace.armas.load();
    const int before = workspace.armas.items().count();
    leave(u"mapa"_s, u"mapas/(sin nombre).map"_s, smallMap);
    leave(u"Armas"_s, u"ini/Armas.ini"_s,
          "#\r\nDaga;1d4;;;;;;;;\r\n#Garra;1;;;;;;;;\r\nDaga;2;;;;;;;;");
    begin();
    EXPECT_EQ(notice(),
              u"Hay trabajo sin guardar del 23 de noviembre a las 9:05:00: armas y un mapa "
              "sin nombre."_s);
    answer(u"cmdRecuperar"_s);
    EXPECT_EQ(frmMapa().mapa().ancho(), 2);
    EXPECT_EQ(frmMapa().lugares.count(), 1);
    EXPECT_TRUE(frmMapa().documento.mapaCambiado());
    ASSERT_EQ(workspace.armas.items().count(), 3) << "not even what a file can't hold is lost";
    EXPECT_EQ(workspace.armas.items().at(1).text(), u"#Garra"_s);
    EXPECT_EQ(workspace.armas.items().at(2).text(), u"Daga"_s);
    EXPECT_EQ(notice(), QString());
    wait();
    EXPECT_EQ(left(), QStringList());

    frmMapa().documento.undo();
    EXPECT_EQ(frmMapa().mapa().ancho(), 50);
    workspace.armas.undo();
    EXPECT_EQ(workspace.armas.items().count(), before);
    workspace.armas.redo();
    EXPECT_EQ(workspace.armas.items().count(), 3);
}

TEST_F(RecoveryWindowTest, OffersEachRunTheLatestFirst)
{
    leave(u"mapa"_s, u"mapas/(sin nombre).map"_s, smallMap);
    const RecoveryCopy later{u"mapa"_s,
                             app.path(u"mapas/Isla.map"_s),
                             {},
                             QDateTime({2026, 11, 23}, {9, 5, 30}),
                             "Isla" + smallMap,
                             {}};
    app.write(u"respaldo/recuperacion/2026-11-23 09.05.10/mapa.copia"_s, bytesOf(later));
    begin();
    EXPECT_TRUE(notice().contains(u"9:05:30: el mapa «Isla»"_s)) << notice().toStdString();
    answer(u"cmdRecuperar"_s);
    EXPECT_EQ(frmMapa().mapa().nombre, u"Isla"_s);
    const QString other = notice();
    EXPECT_TRUE(other.contains(u"9:05:00: un mapa sin nombre"_s)) << other.toStdString();
    frmMapa().ui().avisos->tell(QStringList(u"Lo más nuevo"_s));
    EXPECT_EQ(notice(), u"Lo más nuevo"_s) << "what waits for an answer hides nothing";
    QTest::mouseClick(frmMapa().ui().avisos->findChild<QToolButton*>(u"cmdCerrarAviso"_s),
                      Qt::LeftButton);
    EXPECT_EQ(notice(), other);
}

TEST_F(RecoveryWindowTest, LeavesWhatCannotBeTakenOver)
{
    QByteArray gone = smallMap;
    leave(u"mapa"_s, u"mapas/(sin nombre).map"_s, gone.replace("T2", "Perdido"));
    leave(u"Equipo"_s, u"ini/Equipo.ini"_s, "#\r\nCuerda;No;1;2;;\r\n");
    leaveBytes(u"Conjuros"_s, "Kestrune, copia de rec");
    begin();
    EXPECT_TRUE(notice().contains(u"elementos de equipo y un mapa sin nombre."_s))
        << notice().toStdString();
    EXPECT_TRUE(notice().contains(u"Conjuros.copia» está incompleta"_s));
    const WorldMap before = frmMapa().mapa();
    boxes.expect();
    answer(u"cmdRecuperar"_s);
    EXPECT_TRUE(boxes.asked().back().text.contains(u"«Perdido»"_s));
    EXPECT_TRUE(frmMapa().mapa() == before);
    EXPECT_EQ(workspace.equipo.items().count(), 1);
    wait();
    EXPECT_EQ(left(), (QStringList{u"Conjuros.copia"_s, u"mapa.copia"_s}));
    EXPECT_FALSE(notice().contains(u"equipo"_s)) << "that is done";
    answer(u"cmdDescartar"_s);
    wait();
    EXPECT_EQ(left(), QStringList());
    EXPECT_EQ(notice(), QString());
}

TEST_F(RecoveryWindowTest, SaysNothingOfWhatIsSaved)
{
    workspace.armas.load();
    leave(u"Armas"_s, u"ini/Armas.ini"_s, app.read(u"ini/Armas.ini"_s));
    begin();
    EXPECT_EQ(notice(), QString());
    wait();
    EXPECT_EQ(left(), QStringList());

    const auto hasCopy = [&] {
        workspace.recovery.keepNow();
        QDirIterator copies(app.path(u"respaldo/recuperacion"_s), {u"Armas.copia"_s}, QDir::Files,
                            QDirIterator::Subdirectories);
        return copies.hasNext();
    };
    workspace.armas.remove(workspace.armas.items().at(0).key());
    EXPECT_TRUE(hasCopy());
    workspace.armas.save();
    EXPECT_FALSE(hasCopy());
}

TEST_F(RecoveryWindowTest, WorksOnWhileAnotherProgramWrites)
{
    setNombre(u"Isla"_s);
    frmMapa().saveMapa();
    app.write(u"mapas/Isla.map"_s, "ajeno");
    workspace.diskWatch.look();
    QTRY_VERIFY(notice().contains(u"Otro programa ha cambiado «mapas/Isla.map»"_s));
}
