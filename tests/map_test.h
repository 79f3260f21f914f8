#pragma once

#include "window_test.h"
#include "worldmap/frmInfoPin.h"
#include "worldmap/frmMapa.h"
#include "worldmap/frmMinimap.h"
#include "worldmap/frmPines.h"
#include "worldmap/frmTiles.h"
#include "worldmap/hex_geometry.h"

#include <QMouseEvent>
#include <QToolBar>

/// Makes a changed copy of the window's map its document, as if it had been opened.
inline void alterMap(const std::function<void(WorldMap&)>& alter)
{
    WorldMap map = frmMapa().mapa();
    alter(map);
    frmMapa().documento.openMapa(std::move(map), {});
}

/// The place of a cell as map files write it, or nothing.
inline QString placeText(int row, int column)
{
    const Place* const place = frmMapa().mapa().placeAt({column, row});
    return place ? place->pin + u';' + place->name + u';' + place->notes : QString();
}

/// Makes the document count as changed, or not.
inline void setChanged(bool changed)
{
    changed ? frmMapa().documento.paint({{QPoint()}}, frmMapa().mapa().tileAt({}))
            : frmMapa().documento.giveUpSaving();
}

inline void setNombre(const QString& name)
{
    MapProperties properties = frmMapa().mapa();
    properties.nombre = name;
    frmMapa().documento.setProperties(properties);
}

/// A test of the map window, shown with a new map of 50 x 50 cells of sea.
class MapTest : public WindowTest
{
protected:
    MapTest()
    {
        frmTiles().createColumns();
        frmPines().createColumns();
        frmMapa().show();
        frmMapa().newMapa({}, {50, 50}); // the sea, as the first tile is
        setChanged(false);
    }

    static void press(QAction* button)
    {
        QTest::mouseClick(frmMapa().ui().Toolbar->widgetForAction(button), Qt::LeftButton);
    }

    static void choose(platform::ListView* list, int row)
    {
        list->setCurrentIndex(list->model()->index(row, 0));
    }

    /// A point inside a cell, in the view.
    static QPoint inView(int x, int y)
    {
        return hex::cellOrigin(x - frmMapa().currX, y - frmMapa().currY) + QPoint(5, 6);
    }

    static void click(int x, int y, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(frmMapa().ui().imgMapa, button, {}, inView(x, y));
    }

    static void send(QEvent::Type type, QPoint position, Qt::MouseButton button,
                     Qt::MouseButtons held)
    {
        QWidget* const view = frmMapa().ui().imgMapa;
        QMouseEvent event(type, position, view->mapToGlobal(position), button, held, {});
        QCoreApplication::sendEvent(view, &event);
    }

    static void drag(QPoint from, QPoint to)
    {
        send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    }

    /// Clicks a cell in place mode and types into the dialog.
    static void setPlace(int x, int y, const QString& name, const QString& notes)
    {
        duringModal([&] { click(x, y); },
                    [&] {
                        Ui::FrmInfoPin& ui = frmInfoPin().ui();
                        ui.txtNombre->selectAll();
                        QTest::keyClicks(ui.txtNombre, name);
                        ui.txtInfo->setPlainText(notes);
                        QTest::keyClick(ui.txtInfo, Qt::Key_Escape);
                    });
    }

    /// Buffer and view must be what drawing the whole map anew gives.
    static void expectPixelsOfFullRedraw()
    {
        const QImage edited = frmMapa().hdcBuffer.image().copy();
        const QImage shown = frmMapa().ui().imgMapa->grab().toImage();
        const QImage reduced = frmMinimap().ui().imgMinimap->dc().image().copy();
        frmMapa().crearBuffer();
        frmMapa().renderMapa();
        frmMapa().drawMinimap();
        frmMapa().scrollMapa();
        EXPECT_EQ(reduced, frmMinimap().ui().imgMinimap->dc().image());
        EXPECT_EQ(edited, frmMapa().hdcBuffer.image());
        EXPECT_EQ(shown, frmMapa().ui().imgMapa->grab().toImage());
    }
};
