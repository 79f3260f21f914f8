// The view of the map window: zooms, moving it, the keyboard's cursor, and what is heard of it.

#include "map_test.h"

#include <QAccessible>
#include <QScrollBar>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

class MapViewTest : public MapTest
{
protected:
    static MapView& view() { return *frmMapa().ui().imgMapa; }
    static QAction& command(const QString& key)
    {
        return *frmMapa().window().findChild<QAction*>(key);
    }
    static QScrollBar& bar(const QString& name)
    {
        return *frmMapa().window().findChild<QScrollBar*>(name);
    }
    static QPoint cellUnder(QPoint position)
    {
        return hex::cellAt(view().viewport().pictureAt(position));
    }
    static QPoint middleOf(QPoint cell) { return view().cellInWidget(cell).center(); }

    static void wheel(QPoint position, QPoint angle, QPoint pixels = {},
                      Qt::KeyboardModifiers keys = {})
    {
        QWheelEvent event(position, view().mapToGlobal(position), pixels, angle, {}, keys,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view(), &event);
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers keys = {})
    {
        QTest::keyClick(&view(), key, keys);
    }
    using MapTest::press;
    /// What keys go to now.
    static QWidget* focused()
    {
        if (QWidget* const popup = QApplication::activePopupWidget())
            return popup;
        QWidget* const modal = QApplication::activeModalWidget();
        return modal && modal->focusWidget() ? modal->focusWidget() : QApplication::focusWidget();
    }
    /// Keys are the view's from now on.
    static void takeKeys()
    {
        frmMapa().window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frmMapa().window()));
        view().setFocus();
    }

    /// What the view shows, against the whole picture enlarged.
    static void expectEnlargedPixels()
    {
        const QImage shown = view().grab().toImage();
        const QImage whole = frmMapa().hdcBuffer.image();
        for (int y = 0; y < shown.height(); y += 3) {
            for (int x = 0; x < shown.width(); x += 3) {
                const QPoint from = view().viewport().pictureAt({x, y});
                ASSERT_EQ(shown.pixel(x, y),
                          whole.rect().contains(from) ? whole.pixel(from) : qRgb(0x24, 0x22, 0x20))
                    << x << ", " << y;
            }
        }
    }
};

} // namespace

TEST_F(MapViewTest, ZoomKeepsTheMiddleOrTheCellUnderThePointer)
{
    frmMapa().newMapa({}, {150, 120});
    const QPoint pointer(211, 333);
    for (const int zoom : {2, 3, 4, 6, 8}) {
        const QPoint before = view().viewport().pictureAt(view().rect().center());
        command(u"acercar"_s).trigger();
        EXPECT_EQ(view().viewport().zoom(), zoom);
        EXPECT_TRUE(frmMapa().ui().lblEstado->text().contains(u"Zoom %1×"_s.arg(zoom)));
        const QPoint moved = view().viewport().pictureAt(view().rect().center()) - before;
        EXPECT_LE(moved.manhattanLength(), zoom == 2 ? 30 : 2) << "from a corner it can't all stay";
        EXPECT_EQ(frmMapa().currX % 2, 0);
        expectEnlargedPixels();
    }
    EXPECT_FALSE(command(u"acercar"_s).isEnabled());
    for (const int turn : {-120, -60, -60, -120, 120, 120, 120}) {
        const QPoint before = cellUnder(pointer);
        wheel(pointer, {0, turn}, {}, Qt::ControlModifier);
        EXPECT_EQ(cellUnder(pointer), before);
    }
    command(u"tamanoNatural"_s).trigger();
    EXPECT_EQ(view().viewport().zoom(), 1);
    EXPECT_FALSE(command(u"alejar"_s).isEnabled());
}

TEST_F(MapViewTest, ToolsWorkAtEveryZoom)
{
    press(frmMapa().ui().tiles);
    choose(frmTiles().ui().lvTiles, 3);
    const QString tile = frmTiles().selectedName();
    int row = 4;
    for (const int zoom : {1, 2, 4, 8, 0}) {
        zoom == 0 ? view().setWhole(true) : view().setZoom(zoom);
        const QPoint cell(frmMapa().currX + 3, frmMapa().currY + ++row % 4);
        QTest::mouseClick(&view(), Qt::LeftButton, {}, middleOf(cell));
        EXPECT_EQ(frmMapa().mapa().tileAt(cell), tile) << "zoom " << zoom;
        EXPECT_EQ(frmMapa().ui().lblPosicion->text(), u"X:%1 Y:%2"_s.arg(cell.x()).arg(cell.y()));
    }
    expectPixelsOfFullRedraw();
}

TEST_F(MapViewTest, BarsWheelKeysAndDragsReachEveryEdge)
{
    frmMapa().newMapa({}, {101, 90});
    QScrollBar& across = bar(u"hsbMapa"_s);
    QScrollBar& down = bar(u"vsbMapa"_s);
    ASSERT_TRUE(across.isVisible() && down.isVisible());
    EXPECT_FALSE(view().geometry().intersects(across.geometry()));
    across.setValue(across.maximum());
    down.setValue(down.maximum());
    // The last strip of the last column, and the last row, are in the corner.
    const QPoint end = view().rect().bottomRight();
    EXPECT_EQ(view().viewport().pictureAt(end), QPoint(101 * 11 + 3, 7 + 90 * 14 - 1));
    expectEnlargedPixels();
    press(frmMapa().ui().minimapa);
    const QRect selector = frmMinimap().ui().imgSelector->geometry();
    EXPECT_GE(selector.right(), frmMinimap().ui().imgMinimap->width() - 3);
    EXPECT_GE(selector.bottom(), frmMinimap().ui().imgMinimap->height() - 3);

    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(view().seen().topLeft(), QPoint(0, 0));
    wheel({50, 50}, {0, -120});
    EXPECT_EQ(view().seen().topLeft(), QPoint(0, 42)) << "three rows, without pixels told";
    wheel({50, 50}, {0, -120}, {}, Qt::ShiftModifier);
    EXPECT_EQ(view().seen().topLeft(), QPoint(42, 42));
    EXPECT_EQ(QPoint(frmMapa().currX, frmMapa().currY), QPoint(2, 3));
    wheel({50, 50}, {0, 0}, {-5, -9});
    EXPECT_EQ(view().seen().topLeft(), QPoint(47, 51)) << "as a touchpad tells";
    press(Qt::Key_End);
    press(Qt::Key_PageDown);
    EXPECT_EQ(view().seen().left(), view().viewport().lastOrigin().x());
    EXPECT_EQ(view().seen().top(),
              std::min(51 + view().height(), view().viewport().lastOrigin().y()));
    send(QEvent::MouseButtonPress, {300, 300}, Qt::MiddleButton, Qt::MiddleButton);
    send(QEvent::MouseMove, {320, 310}, Qt::NoButton, Qt::MiddleButton);
    EXPECT_EQ(view().viewport().lastOrigin().x() - view().seen().left(), 20);
    send(QEvent::MouseButtonRelease, {320, 310}, Qt::MiddleButton, Qt::NoButton);
    // The minimap goes by whole cells again.
    QTest::mouseClick(frmMinimap().ui().imgMinimap, Qt::LeftButton, {}, QPoint(1, 1));
    EXPECT_EQ(view().seen().topLeft(), QPoint(0, 0));
}

TEST_F(MapViewTest, AStrokeHeldAtTheEdgeMovesTheViewOn)
{
    frmMapa().newMapa({}, {100, 100});
    press(frmMapa().ui().tiles);
    choose(frmTiles().ui().lvTiles, 3);
    const QPoint beyond(view().width() + 4, 100);
    send(QEvent::MouseButtonPress, {view().width() - 40, 100}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, beyond, Qt::NoButton, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([] { return frmMapa().currX >= 8; }));
    send(QEvent::MouseButtonRelease, beyond, Qt::LeftButton, Qt::NoButton);
    const int seen = frmMapa().currX;
    QTest::qWait(200);
    EXPECT_EQ(frmMapa().currX, seen) << "it goes on after the button is up";
    const QPoint last = cellUnder({view().width() - 20, 100});
    EXPECT_EQ(frmMapa().mapa().tileAt(last), frmTiles().selectedName());
    frmMapa().documento.undo();
    EXPECT_EQ(frmMapa().mapa().tileAt(last), u"M1"_s) << "one stroke is one step";
}

TEST_F(MapViewTest, TheWholeMapIsShownAndADoubleClickGoesThere)
{
    frmMapa().newMapa({}, {150, 150});
    command(u"mapaEntero"_s).trigger();
    EXPECT_EQ(QPoint(frmMapa().currX, frmMapa().currY), QPoint(0, 0));
    EXPECT_TRUE(view().rect().contains(view().inWidget(QRect(0, 0, 1654, 2107))));
    EXPECT_FALSE(bar(u"vsbMapa"_s).isVisible());
    // With a tool in hand, too, a double click changes nothing.
    press(frmMapa().ui().tiles);
    choose(frmTiles().ui().lvTiles, 3);
    EXPECT_TRUE(frmMapa().ui().lblEstado->text().contains(frmTiles().selectedName()));
    const WorldMap unchanged = frmMapa().mapa();
    const QPoint cell(120, 30);
    const QPoint place = middleOf(cell);
    QTest::mouseClick(&view(), Qt::LeftButton, {}, place);
    send(QEvent::MouseButtonDblClick, place, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton);
    EXPECT_TRUE(frmMapa().mapa() == unchanged);
    EXPECT_FALSE(command(u"mapaEntero"_s).isChecked());
    EXPECT_EQ(cellUnder(view().rect().center()), cell);

    const QPoint before = view().seen().topLeft();
    command(u"mapaEntero"_s).trigger();
    command(u"mapaEntero"_s).trigger();
    EXPECT_EQ(view().seen().topLeft(), before) << "back to where it was";
}

TEST_F(MapViewTest, TheWholeMapFollowsEveryChange)
{
    frmMapa().newMapa({}, {150, 150});
    command(u"mapaEntero"_s).trigger();
    const auto expectAsAnew = [&](const char* what) {
        const QImage shown = view().grab().toImage();
        command(u"mapaEntero"_s).trigger();
        frmMapa().hdcBuffer.drawOver({0, 0, 1, 1}, [](platform::MemoryDC&, QPoint) {});
        command(u"mapaEntero"_s).trigger();
        EXPECT_EQ(shown, view().grab().toImage()) << what;
    };
    MapDocument& document = frmMapa().documento;
    document.paint({{QPoint(3, 3)}}, u"T2"_s);
    expectAsAnew("a cell");
    std::vector<QPoint> many;
    for (int i = 0; i < 90; ++i)
        many.emplace_back(20 + i % 10, 20 + i / 10);
    document.paint(many, u"T2"_s);
    expectAsAnew("a brush");
    document.fill({100, 100}, u"B1"_s);
    expectAsAnew("a fill");
    document.undo();
    expectAsAnew("undone");
    const QImage before = view().grab().toImage();
    frmMapa().drawCamino(u"30;9|30;8|31;7|30;6|30;5"_s);
    EXPECT_NE(view().grab().toImage(), before) << "a road";
    expectAsAnew("a road");
    command(u"mapaEntero"_s).trigger();
    document.paint(many, u"B1"_s);
    command(u"mapaEntero"_s).trigger();
    expectAsAnew("what changed meanwhile");
}

TEST_F(MapViewTest, AnotherMapBeginsAtItsCornerWithoutTheOldCursor)
{
    frmMapa().newMapa({}, {150, 120});
    view().scrollBy({5, 5});
    view().setCursorCell({140, 110});
    view().scrollBy({-9999, -9999});
    view().scrollBy({5, 5});
    frmMapa().newMapa({}, {50, 50});
    EXPECT_EQ(view().seen().topLeft(), QPoint(0, 0));
    EXPECT_FALSE(view().cursor());
}

TEST_F(MapViewTest, CommandsAreForTheCursorsCellHoweverTheViewMoves)
{
    frmMapa().newMapa({}, {150, 120});
    MapDocument& document = frmMapa().documento;
    document.setPlace({18, 20}, {u"Aldea"_s, u"Nava"_s, {}});
    press(frmMapa().ui().pines);
    takeKeys();
    view().setCursorCell({18, 20});
    for (const QString& key : {u"acercar"_s, u"mapaEntero"_s, u"mapaEntero"_s}) {
        command(key).trigger();
        EXPECT_EQ(frmMapa().ui().lblPosicion->text(), u"X:18 Y:20"_s) << key.toStdString();
    }
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&view(), &leave);
    EXPECT_TRUE(frmMapa().ui().lblEstado->text().contains(u"«Nava»"_s));

    command(u"eliminarLugar"_s).trigger();
    EXPECT_TRUE(document.map().mapaPines.empty());
    // Keys that move the view take it along.
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(view().rect().contains(view().cellInWidget(*view().cursor())));
    EXPECT_GT(view().cursor()->y(), 50);
    // N can be used as soon as there is a place; letters in the list of places look for one.
    EXPECT_FALSE(command(u"lugarSiguiente"_s).isEnabled());
    document.undo();
    EXPECT_TRUE(command(u"lugarSiguiente"_s).isEnabled());
    document.setPlace({1, 1}, {u"Aldea"_s, u"Alto"_s, {}});
    frmMapa().ui().lvLugares->setFocus();
    QTest::keyClick(frmMapa().ui().lvLugares, Qt::Key_N);
    EXPECT_EQ(frmMapa().ui().lvLugares->selectedItem()->key(), u"Nava"_s);
    EXPECT_TRUE(frmMapa().ui().lvLugares->hasFocus());
}

TEST_F(MapViewTest, TheKeyboardGoesFromCellToCellAndDoesWhatThePointerDoes)
{
    press(frmMapa().ui().tiles);
    choose(frmTiles().ui().lvTiles, 3);
    const QString tile = frmTiles().selectedName();
    view().setCursorCell({4, 4});
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up, Qt::Key_Right})
        press(key);
    EXPECT_EQ(view().cursor(), QPoint(5, 4));
    press(Qt::Key_Space);
    EXPECT_EQ(frmMapa().mapa().tileAt({5, 4}), tile);
    // With Shift it is a drag: one stroke.
    for (int i = 0; i < 2; ++i) {
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::ShiftModifier);
        QCoreApplication::sendEvent(&view(), &down);
    }
    QTest::keyRelease(&view(), Qt::Key_Shift);
    EXPECT_EQ(frmMapa().mapa().tileAt({5, 6}), tile);
    EXPECT_EQ(frmMapa().documento.undoText(), u"pintar 2 casillas"_s);
    // The view follows, and no cell lies beyond the map.
    for (int i = 0; i < 6; ++i)
        press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(view().cursor(), QPoint(5, 49));
    EXPECT_TRUE(view().rect().contains(view().cellInWidget({5, 49})));

    press(frmMapa().ui().pines);
    for (const QPoint cell : {QPoint(3, 3), QPoint(30, 20)})
        frmMapa().documento.setPlace(cell, {u"Aldea"_s, u"Uno %1"_s.arg(cell.x()), {}});
    takeKeys();
    press(Qt::Key_N);
    EXPECT_EQ(view().cursor(), QPoint(3, 3)) << "round the end";
    press(Qt::Key_N, Qt::ShiftModifier);
    EXPECT_EQ(view().cursor(), QPoint(30, 20));
    duringModal([] { press(Qt::Key_Return); },
                [] {
                    EXPECT_EQ(frmInfoPin().ui().txtNombre->text(), u"Uno 30"_s);
                    QTest::keyClick(frmInfoPin().ui().txtInfo, Qt::Key_Escape);
                });
    // A click takes the cursor away, and Enter is again the list's.
    click(1, 1, Qt::RightButton);
    EXPECT_FALSE(view().cursor());
}

/// From a new map to the saved one read again, without a pointer.
TEST_F(MapViewTest, AnEveningWithKeysAlone)
{
    const auto toActive = [](Qt::Key key, Qt::KeyboardModifiers keys = {}) {
        ASSERT_TRUE(QTest::qWaitFor([] { return focused() != nullptr; }));
        QTest::keyClick(focused(), key, keys);
    };
    /// A key opens a dialog; once it has the keyboard the text is typed, and the key that ends it.
    const auto inDialog = [&](Qt::Key opens, Qt::KeyboardModifiers keys, const QString& text,
                              Qt::Key ends) {
        QTimer waiting;
        QObject::connect(&waiting, &QTimer::timeout, [&] {
            QWidget* const dialog = QApplication::activeModalWidget();
            if (!dialog || !dialog->isActiveWindow() || !dialog->focusWidget())
                return;
            waiting.stop();
            QTest::keyClicks(focused(), text);
            toActive(ends);
        });
        waiting.start(10);
        toActive(opens, keys);
        takeKeys(); // as a window manager gives them back
    };
    const auto choose = [&](Qt::Key menu, Qt::Key entry) {
        toActive(menu, Qt::AltModifier);
        toActive(entry);
    };
    const auto waitFor = [](QWidget& window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window)) << window.objectName().toStdString();
    };
    takeKeys();
    inDialog(Qt::Key_N, Qt::ControlModifier, u"Isla Sola"_s, Qt::Key_Return);
    ASSERT_EQ(frmMapa().mapa().nombre, u"Isla Sola"_s);

    choose(Qt::Key_V, Qt::Key_T);
    waitFor(frmTiles().window());
    const QString first = frmTiles().chosen();
    toActive(Qt::Key_Down);
    toActive(Qt::Key_Down);
    ASSERT_NE(frmTiles().chosen(), first);
    toActive(Qt::Key_F6);
    waitFor(frmMapa().window());
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Space})
        toActive(key);
    const QPoint painted = *view().cursor();
    EXPECT_EQ(frmMapa().mapa().tileAt(painted), frmTiles().chosen());

    choose(Qt::Key_V, Qt::Key_P);
    waitFor(frmPines().window());
    toActive(Qt::Key_Down);
    toActive(Qt::Key_F6);
    waitFor(frmMapa().window());
    toActive(Qt::Key_Right);
    inDialog(Qt::Key_Space, {}, u"Robledal"_s, Qt::Key_Escape);
    const QPoint placed = painted + QPoint(1, 0);
    ASSERT_EQ(placeText(placed.y(), placed.x()), frmPines().chosen() + u";Robledal;"_s);

    waitFor(frmMapa().window());
    toActive(Qt::Key_S, Qt::ControlModifier);
    const WorldMap saved = frmMapa().mapa();
    EXPECT_FALSE(frmMapa().documento.mapaCambiado());
    toActive(Qt::Key_Z, Qt::ControlModifier);
    boxes.expect(platform::MsgBox::Answer::No);
    inDialog(Qt::Key_O, Qt::ControlModifier, u"isla"_s, Qt::Key_Return);
    EXPECT_TRUE(frmMapa().mapa() == saved);
}

TEST_F(MapViewTest, AScreenReaderHearsTheCell)
{
    QAccessible::setActive(true);
    frmMapa().documento.setPlace({7, 2}, {u"Aldea"_s, u"Robledal"_s, {}});
    takeKeys();
    view().setCursorCell({6, 2});
    press(Qt::Key_Right);
    QAccessibleInterface* const map = QAccessible::queryAccessibleInterface(&view());
    ASSERT_TRUE(map && map->focusChild());
    QAccessibleInterface* const cell = map->focusChild();
    EXPECT_EQ(cell->role(), QAccessible::Cell);
    EXPECT_EQ(map->indexOfChild(cell), 0);
    EXPECT_TRUE(cell->state().focused);
    const QString heard = cell->text(QAccessible::Name);
    EXPECT_TRUE(heard.startsWith(u"Fila 2, columna 7, "_s)) << heard.toStdString();
    EXPECT_TRUE(heard.contains(u"(M1)"_s) && heard.endsWith(u"lugar: Robledal"_s));
    EXPECT_EQ(cell->rect().size(), QSize(hex::cellWidth, hex::cellHeight));
    QAccessible::setActive(false);
}

TEST_F(MapViewTest, AnyMapInAnyWindowCanBeSeen)
{
    for (const QSize size : {QSize(1, 1), QSize(2, 32767)}) {
        frmMapa().newMapa({}, size);
        for (const QSize box : {QSize(1, 1), QSize(300, 200)}) {
            view().resize(box);
            for (const QString& key : {u"acercar"_s, u"mapaEntero"_s, u"tamanoNatural"_s}) {
                command(key).trigger();
                frmMapa().scrollMapa();
                EXPECT_FALSE(view().grab().isNull());
            }
            press(Qt::Key_End, Qt::ControlModifier);
            press(Qt::Key_Down, Qt::ControlModifier);
        }
    }
    EXPECT_GE(view().cursor()->y(), 10);
}
