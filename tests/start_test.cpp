#include "app/frmAbout.h"
#include "app/frmManual.h"
#include "app/frmVersiones.h"
#include "app/start.h"
#include "catalogue/frmArmaduras.h"
#include "catalogue/frmArmas.h"
#include "catalogue/frmConjuros.h"
#include "catalogue/frmEquipo.h"
#include "catalogue/frmListaImagenes.h"
#include "catalogue/frmPrinc.h"
#include "catalogue/frmProgreso.h"
#include "generation/frmClima.h"
#include "localmap/frmMapaLocal.h"
#include "window_test.h"
#include "worldmap/frmInfoPin.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmMapProperties.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmMinimap.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmRedimensionar.h"
#include "worldmap/frmTiles.h"
#include "worldmap/frmTilesLocales.h"

#include <QAbstractButton>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QTabBar>

using namespace Qt::StringLiterals;

using StartTest = WindowTest;

TEST_F(StartTest, ShowsTheMapWindowOnlyAfterTheAboutBoxIsClosed)
{
    for (const bool byItsBox : {false, true}) {
        duringModal(Main, [&] {
            EXPECT_TRUE(frmAbout().isVisible());
            EXPECT_EQ(frmAbout().window().windowTitle(), u"Acerca de Kestrune"_s);
            EXPECT_EQ(frmAbout().ui().lblVersion->text(), u"Versión 0.9.0"_s);
            EXPECT_EQ(frmAbout().ui().lblTitle->text(), u"Kestrune"_s);
            EXPECT_FALSE(frmMapa().isVisible());
            if (byItsBox)
                frmAbout().window().close();
            else
                QTest::mouseClick(frmAbout().ui().cmdOK, Qt::LeftButton);
        });
        EXPECT_FALSE(frmAbout().isLoaded());
        EXPECT_TRUE(frmMapa().isVisible());
        frmMapa().hide();
        for (CatalogueDocument* const catalogue : workspace.catalogues())
            EXPECT_GE(catalogue->items().count(), 12);
    }
    EXPECT_TRUE(frmPrinc().isLoaded());
    for (platform::FormBase* const hidden :
         {static_cast<platform::FormBase*>(&frmPrinc()),
          static_cast<platform::FormBase*>(&frmTiles()),
          static_cast<platform::FormBase*>(&frmPines()),
          static_cast<platform::FormBase*>(&frmTilesLocales())}) {
        EXPECT_TRUE(hidden->isLoaded());
        EXPECT_FALSE(hidden->isVisible());
    }
    EXPECT_EQ(frmPrinc().ui().lvConjuros->header()->count(), 17);
    EXPECT_EQ(frmTilesLocales().ui().lvTilesLocales->header()->count(), 3);
}

TEST_F(StartTest, ABrokenCatalogueIsReportedAndTheRestGoesOn)
{
    ASSERT_TRUE(QFile::remove(app.path(u"ini/Armas.ini"_s)));
    app.write(u"ini/Equipo.ini"_s, "Cuerda;No;1 mo\r\n");
    boxes.expect();
    boxes.expect();
    duringModal(Main, [] { frmAbout().window().close(); });
    ASSERT_EQ(boxes.asked().size(), 2u);
    EXPECT_EQ(boxes.asked()[0].title, u"Kestrune"_s);
    EXPECT_EQ(boxes.asked()[0].icon, platform::MsgBox::Icon::None);
    EXPECT_TRUE(boxes.asked()[0].text.startsWith(u"Error "_s));
    EXPECT_TRUE(boxes.asked()[0].text.contains(u"Armas.ini"_s));
    EXPECT_TRUE(boxes.asked()[0].text.endsWith(u") in procedure loadArmas of Módulo Procs"_s));
    EXPECT_TRUE(boxes.asked()[1].text.endsWith(u") in procedure loadEquipo of Módulo Procs"_s));
    EXPECT_EQ(workspace.armas.items().count(), 0);
    EXPECT_GE(workspace.armaduras.items().count(), 12);
    EXPECT_EQ(workspace.equipo.items().count(), 1);
    EXPECT_GE(workspace.conjuros.items().count(), 12);
    EXPECT_TRUE(frmMapa().isVisible());
}

TEST_F(StartTest, MissingDefinitionsAreReportedAndTheWindowComesUp)
{
    ASSERT_TRUE(QFile::remove(app.path(u"ini/tiles.ini"_s)));
    app.write(u"ini/pines.ini"_s, "Aldea;ini\\pics\\pines\\nada.gif;Aldea;\r\n");
    boxes.expect();
    boxes.expect();
    frmMapa().show();
    ASSERT_EQ(boxes.asked().size(), 2u);
    EXPECT_EQ(boxes.asked()[0].title, u"Error"_s);
    EXPECT_TRUE(boxes.asked()[0].text.contains(u"tiles.ini"_s));
    EXPECT_TRUE(boxes.asked()[1].text.contains(u"línea 1"_s));
    EXPECT_TRUE(frmMapa().isVisible());
}

TEST_F(StartTest, ClosingTheMapWindowEndsTheProgram)
{
    frmMapa().show();
    frmTiles().show();
    QTimer::singleShot(0, qApp, [] { frmMapa().window().close(); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(frmMapa().isLoaded());
    EXPECT_FALSE(frmTiles().isVisible());
    frmPrinc().show();
    QTimer::singleShot(0, qApp, [] { frmPrinc().window().close(); });
    EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(StartTest, SavingACatalogueShowsProgressUnlessItIsEmpty)
{
    workspace.armas.load();
    const QByteArray bytes = app.read(u"ini/Armas.ini"_s);
    frmPrinc().cmdGuardarArmas_Click();
    EXPECT_EQ(app.read(u"ini/Armas.ini"_s), bytes);
    EXPECT_FALSE(frmProgreso().isVisible());
    EXPECT_EQ(frmProgreso().ui().pbProgreso->maximum(), workspace.armas.items().count());
    EXPECT_EQ(frmProgreso().ui().pbProgreso->value(), workspace.armas.items().count());
    EXPECT_EQ(frmProgreso().window().windowTitle(), u"Generando"_s);

    frmProgreso().unload();
    frmPrinc().cmdGuardarEquipo_Click(); // never loaded: empty
    EXPECT_FALSE(frmProgreso().isLoaded());
    EXPECT_EQ(app.read(u"ini/Equipo.ini"_s).count('\n'), 1);

    workspace.armas.model().at(0).setSubItem(u"notas"_s, u"→"_s);
    boxes.expect();
    frmPrinc().cmdGuardarArmas_Click();
    EXPECT_TRUE(boxes.asked().back().text.contains(u"«→»"_s));
    EXPECT_FALSE(frmProgreso().isVisible());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(StartTest, EveryWindowHoldsTheHouseRules)
{
    struct Known {
        platform::FormBase& form;
        QString name;
        QString caption;
    };
    for (const Known& known :
         {Known{frmAbout(), u"frmAbout"_s, u"Acerca de Kestrune"_s},
          Known{frmManual(), u"frmManual"_s, u"Manual de Kestrune"_s},
          Known{frmVersiones(), u"frmVersiones"_s, u"Versiones anteriores"_s},
          Known{frmPrinc(), u"frmPrinc"_s, u"Kestrune"_s},
          Known{frmArmas(), u"frmArmas"_s, {}},
          Known{frmArmaduras(), u"frmArmaduras"_s, {}},
          Known{frmEquipo(), u"frmEquipo"_s, {}},
          Known{frmConjuros(), u"frmConjuros"_s, {}},
          Known{frmListaImagenes(), u"frmListaImagenes"_s, u"Lista de imagenes"_s},
          Known{frmClima(), u"frmClima"_s, u"Form1"_s},
          Known{frmProgreso(), u"frmProgreso"_s, u"Generando"_s},
          Known{frmMapaLocal(), u"frmMapaLocal"_s, {}},
          Known{frmMapa(), u"frmMapa"_s, u"Kestrune"_s},
          Known{frmListaArchivos(), u"frmListaArchivos"_s, u"Lista de archivos"_s},
          Known{frmInfoPin(), u"frmInfoPin"_s, u"Lugar"_s},
          Known{frmMinimap(), u"frmMinimap"_s, u"Mini mapa"_s},
          Known{frmMapProperties(), u"frmMapProperties"_s, u"Propiedades"_s},
          Known{frmRedimensionar(), u"frmRedimensionar"_s, u"Cambiar tamaño"_s},
          Known{frmTiles(), u"frmTiles"_s, u"Tiles"_s},
          Known{frmPines(), u"frmPines"_s, u"Pines"_s},
          Known{frmTilesLocales(), u"frmTilesLocales"_s, u"Tiles"_s}}) {
        SCOPED_TRACE(known.name.toStdString());
        known.form.show();
        EXPECT_EQ(known.form.window().objectName(), known.name);
        EXPECT_EQ(known.form.window().windowTitle(), known.caption);
        for (const auto* const menu : known.form.window().findChildren<QMenu*>()) {
            QString letters;
            for (const QAction* const action : menu->actions()) {
                const QString letter = action->text().section(u'&', 1).left(1).toLower();
                EXPECT_FALSE(!letter.isEmpty() && letters.contains(letter))
                    << action->text().toStdString();
                letters += letter;
            }
        }
        for (const auto* const child : known.form.window().findChildren<QWidget*>()) {
            // Parts that Qt makes for itself have its names, or none.
            const QString name = child->objectName();
            if (name.isEmpty() || name.startsWith(u"qt_"_s) || !child->isVisible() ||
                qobject_cast<QTabBar*>(child->parentWidget()))
                continue;
            SCOPED_TRACE(name.toStdString());
            EXPECT_TRUE(child->parentWidget()->rect().contains(child->geometry())) << "clipped";
            const auto* const label = qobject_cast<const QLabel*>(child);
            const auto* const button = qobject_cast<const QAbstractButton*>(child);
            if (button || (label && !label->wordWrap())) {
                EXPECT_GE(child->width(), child->sizeHint().width()) << "text clipped";
            }
            if (label && label->wordWrap()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width()));
            }
            if (!label && !button && child->focusPolicy() != Qt::NoFocus) {
                EXPECT_FALSE(child->accessibleName().isEmpty()) << "nothing for a screen reader";
            }
        }
    }
}
