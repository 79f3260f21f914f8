// The tools of the map window beside its modes, by keys, menus and the pointer.
#include "map_test.h"
#include "worldmap/frmMapProperties.h"
#include "worldmap/map_block.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <deque>
#include <random>
#include <set>

using namespace Qt::StringLiterals;

namespace {

using Cells = std::set<std::pair<int, int>>;

/// The cells reached from one in so many steps over those that may be entered.
template <typename MayEnter>
Cells reached(QPoint from, int steps, const MayEnter& mayEnter)
{
    Cells seen{{from.x(), from.y()}};
    std::deque<std::pair<QPoint, int>> next{{from, 0}};
    for (; !next.empty(); next.pop_front()) {
        const auto [cell, way] = next.front();
        for (const QPoint step : hex::neighbours(cell.x())) {
            const QPoint to = cell + step;
            if (way < steps && frmMapa().mapa().contains(to) && mayEnter(to) &&
                seen.emplace(to.x(), to.y()).second)
                next.emplace_back(to, way + 1);
        }
    }
    return seen;
}

Cells cellsOf(const QString& tile)
{
    Cells cells;
    const WorldMap& map = frmMapa().mapa();
    for (int y = 0; y < map.alto(); ++y) {
        for (int x = 0; x < map.ancho(); ++x) {
            if (map.mapaTiles(y, x) == tile)
                cells.emplace(x, y);
        }
    }
    return cells;
}

class MapToolsTest : public MapTest
{
protected:
    static QAction& action(const char* key)
    {
        return *frmMapa().window().findChild<QAction*>(QLatin1String(key));
    }
    static void key(QKeyCombination keys)
    {
        frmMapa().window().activateWindow();
        ASSERT_TRUE(
            QTest::qWaitFor([] { return QApplication::activeWindow() == &frmMapa().window(); }));
        QTest::keyClick(&frmMapa().window(), keys.key(), keys.keyboardModifiers());
    }
    static void hover(int x, int y) { send(QEvent::MouseMove, inView(x, y), Qt::NoButton, {}); }
    static void leave()
    {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(frmMapa().ui().imgMapa, &event);
    }
    static QString status() { return frmMapa().ui().lblEstado->text(); }
    static void chooseTile(const QString& name) { frmTiles().choose(name); }
    static void addPlace(QPoint cell, const QString& name)
    {
        frmMapa().documento.setPlace(cell, {u"Aldea"_s, name, {}});
    }
    static QPoint cellOf(const char* name)
    {
        const QPoint* const cell = frmMapa().mapa().cellOf(QLatin1String(name));
        return cell ? *cell : QPoint(-1, -1);
    }
    static void selectCells(QPoint from, QPoint to)
    {
        if (!action("seleccionar").isChecked())
            action("seleccionar").trigger();
        drag(inView(from.x(), from.y()), inView(to.x(), to.y()));
    }
};

} // namespace

TEST_F(MapToolsTest, TheBrushPaintsTheCellsWithinItsRadius)
{
    key(Qt::Key_BracketRight); // not yet painting
    press(frmMapa().ui().tiles);
    chooseTile(u"T1"_s);
    const auto any = [](QPoint) { return true; };
    for (const auto& [keys, radius, cell] : {std::tuple(0, 0, QPoint(9, 9)),
                                             {2, 2, {10, 9}},
                                             {9, 5, {11, 12}},
                                             {-1, 4, {1, 0}},
                                             {-9, 0, {30, 30}}}) {
        SCOPED_TRACE(radius);
        for (int i = 0; i < std::abs(keys); ++i)
            key(keys > 0 ? Qt::Key_BracketRight : Qt::Key_BracketLeft);
        click(cell.x(), cell.y());
        EXPECT_EQ(cellsOf(u"T1"_s), reached(cell, radius, any));
        EXPECT_EQ(status().contains(u"radio %1"_s.arg(radius)), radius > 0) << qPrintable(status());
        expectPixelsOfFullRedraw();
        action("deshacer").trigger();
        EXPECT_TRUE(cellsOf(u"T1"_s).empty()) << "one step";
    }
    // A drag spares places, a click changes the terrain under them.
    addPlace({20, 20}, u"Soto"_s);
    key(Qt::Key_BracketRight);
    drag(inView(15, 20), inView(22, 20));
    EXPECT_EQ(frmMapa().mapa().tileAt({20, 20}), u"M1"_s);
    EXPECT_EQ(frmMapa().mapa().tileAt({20, 21}), u"T1"_s);
    click(21, 20);
    EXPECT_EQ(frmMapa().mapa().tileAt({20, 20}), u"T1"_s);
}

TEST_F(MapToolsTest, FillsAConnectedAreaInOneClick)
{
    std::mt19937 engine(7);
    alterMap([&](WorldMap& map) {
        for (QString& tile : map.mapaTiles)
            tile = engine() % 5 < 2 ? u"T2"_s : u"M1"_s;
        map.mapaPines[{12, 12}] = {u"Aldea"_s, u"Soto"_s, {}};
        map.mapaTiles(12, 12) = map.mapaTiles(13, 12) = u"M1"_s;
    });
    press(frmMapa().ui().tiles);
    chooseTile(u"B1"_s);
    key(Qt::Key_G);
    const QPoint cell(12, 13);
    const Cells area =
        reached(cell, 9999, [](QPoint to) { return frmMapa().mapa().tileAt(to) == u"M1"_s; });
    ASSERT_GT(area.size(), 300U);
    const WorldMap before = frmMapa().mapa();
    drag(inView(12, 13), inView(30, 13));
    EXPECT_TRUE(frmMapa().mapa() == before) << "it isn't dragged";
    click(12, 13);
    EXPECT_EQ(cellsOf(u"B1"_s), area) << "under the place, too";
    EXPECT_EQ(frmMapa().documento.undoText(), u"rellenar %1 casillas"_s.arg(area.size()));
    click(12, 13); // as it is
    action("deshacer").trigger();
    EXPECT_TRUE(frmMapa().mapa() == before);
    EXPECT_FALSE(frmMapa().documento.canUndo());
    key(Qt::Key_G);
    click(12, 13);
    EXPECT_EQ(cellsOf(u"B1"_s).size(), 1U) << "the brush again";
}

TEST_F(MapToolsTest, TheEyedropperChoosesInThePaletteOfTheMode)
{
    alterMap([](WorldMap& map) {
        map.mapaTiles(5, 5) = u"T3"_s;
        map.mapaTiles(6, 6) = u"B2"_s;
        map.mapaPines[{5, 5}] = {u"Castillo"_s, u"Soto"_s, {}};
    });
    const WorldMap before = frmMapa().mapa();
    press(frmMapa().ui().tiles);
    QTest::mouseClick(frmMapa().ui().imgMapa, Qt::LeftButton, Qt::AltModifier, inView(5, 5));
    EXPECT_EQ(frmTiles().chosen(), u"T3"_s);
    hover(6, 6);
    key(Qt::Key_I);
    EXPECT_EQ(frmTiles().chosen(), u"B2"_s);
    leave();
    action("cuentagotas").trigger(); // from the menu: the next click
    click(5, 5);
    EXPECT_EQ(frmTiles().chosen(), u"T3"_s);
    press(frmMapa().ui().pines);
    QTest::mouseClick(frmMapa().ui().imgMapa, Qt::LeftButton, Qt::AltModifier, inView(5, 5));
    EXPECT_EQ(frmPines().chosen(), u"Castillo"_s);
    EXPECT_TRUE(frmMapa().mapa() == before) << "nothing is painted or set";
    send(QEvent::MouseButtonPress, inView(8, 8), Qt::RightButton, Qt::RightButton);
    send(QEvent::MouseMove, inView(12, 8), Qt::NoButton, Qt::RightButton);
    send(QEvent::MouseButtonRelease, inView(12, 8), Qt::RightButton, {});
    EXPECT_TRUE(frmMapa().mapa() == before);
}

TEST_F(MapToolsTest, PlacesAreMovedRemovedAndGivenOtherPins)
{
    addPlace({4, 4}, u"Soto"_s);
    addPlace({8, 4}, u"Vado"_s);
    press(frmMapa().ui().pines);
    drag(inView(4, 4), inView(6, 6));
    EXPECT_EQ(cellOf("Soto"), QPoint(6, 6));
    EXPECT_EQ(frmMapa().documento.undoText(), u"mover «Soto»"_s);
    drag(inView(6, 6), inView(8, 4));
    EXPECT_EQ(cellOf("Soto"), QPoint(6, 6)) << "there is a place already";
    EXPECT_EQ(cellOf("Vado"), QPoint(8, 4));
    expectPixelsOfFullRedraw();
    leave();

    platform::ListView& list = *frmMapa().ui().lvLugares;
    choose(&list, 1);
    list.setFocus();
    ASSERT_EQ(list.selectedItem()->text(), u"Soto"_s);
    action("moverLugar").trigger();
    click(8, 4); // taken: it goes on asking
    click(9, 9);
    EXPECT_EQ(cellOf("Soto"), QPoint(9, 9));
    action("moverLugar").trigger();
    key(Qt::Key_Escape);
    EXPECT_TRUE(frmPines().isVisible()) << "Esc took back the move alone";
    EXPECT_EQ(list.selectedItem()->text(), u"Soto"_s);
    frmPines().choose(u"Castillo"_s);
    action("cambiarPin").trigger();
    EXPECT_EQ(frmMapa().mapa().placeAt({9, 9})->pin, u"Castillo"_s);
    expectPixelsOfFullRedraw();
    list.setFocus();
    key(Qt::Key_Delete);
    EXPECT_EQ(cellOf("Soto"), QPoint(-1, -1));
    EXPECT_EQ(frmMapa().lugares.count(), 1);
    action("deshacer").trigger();
    EXPECT_EQ(frmMapa().mapa().placeAt({9, 9})->pin, u"Castillo"_s);

    choose(&list, 0);
    leave();
    duringModal([] { key(Qt::Key_Return); },
                [] {
                    EXPECT_EQ(frmInfoPin().ui().txtNombre->text(), u"Vado"_s);
                    QTest::keyClick(frmInfoPin().ui().txtInfo, Qt::Key_Escape);
                });
    hover(9, 9); // without focus in the list the pointer comes first
    frmMapa().ui().imgMapa->setFocus();
    key(Qt::Key_Delete);
    EXPECT_EQ(cellOf("Soto"), QPoint(-1, -1));
    EXPECT_EQ(cellOf("Vado"), QPoint(8, 4));
    for (const char* const command : {"editarLugar", "moverLugar", "cambiarPin", "eliminarLugar"}) {
        list.clearSelection();
        list.setCurrentIndex({});
        leave();
        action(command).trigger(); // with no place in hand
        EXPECT_TRUE(status().contains(u"Elija antes un lugar"_s)) << command;
    }
}

TEST_F(MapToolsTest, CommandsAreForThePlaceThatIsMeant)
{
    for (int i = 0; i < 5; ++i)
        addPlace({2 * i, 4}, u"L%1"_s.arg(i));
    platform::ListView& list = *frmMapa().ui().lvLugares;
    platform::FilterBox& box = *frmMapa().ui().txtFiltroLugares;
    QWidget& view = *frmMapa().ui().imgMapa;
    const auto remove = [&](QWidget& focus) {
        focus.setFocus();
        key(Qt::Key_Delete);
        return frmMapa().lugares.count();
    };
    const auto selected = [&] {
        return list.selectedItem() ? list.selectedItem()->text() : u"-"_s;
    };
    choose(&list, 1);
    box.setText(u"L3"_s);
    EXPECT_EQ(remove(list), 5) << "it can't be seen";
    EXPECT_TRUE(status().startsWith(u"Elija antes un lugar"_s));
    QKeyEvent enter(QEvent::ShortcutOverride, Qt::Key_Return, {});
    enter.ignore();
    QCoreApplication::sendEvent(&box, &enter);
    EXPECT_TRUE(enter.isAccepted()) << "it leads to the rows";
    box.clear();

    // A run of removals in the list.
    EXPECT_EQ(remove(list), 4);
    EXPECT_EQ(status(), u"Eliminado «L1»"_s);
    EXPECT_EQ(selected(), u"L2"_s);
    choose(&list, 3);
    EXPECT_EQ(remove(list), 3);
    EXPECT_EQ(selected(), u"L3"_s) << "the last one";
    EXPECT_TRUE(list.hasFocus());
    action("deshacer").trigger();
    EXPECT_EQ(status(), QString()) << "it is there again";
    action("deshacer").trigger();

    // With the pointer over the view none but the one under it, while places are set.
    hover(4, 4);
    EXPECT_EQ(remove(view), 5);
    press(frmMapa().ui().pines);
    hover(5, 9);
    EXPECT_EQ(remove(view), 5);
    hover(4, 4);
    EXPECT_EQ(view.toolTip(), u"L2"_s);
    EXPECT_EQ(remove(view), 4);
    EXPECT_EQ(view.toolTip(), QString());
    selectCells({20, 20}, {21, 21});
    click(8, 4, Qt::RightButton);
    ASSERT_TRUE(QApplication::activePopupWidget());
    QApplication::activePopupWidget()->close();
    action("eliminarLugar").trigger();
    EXPECT_EQ(cellOf("L4"), QPoint(-1, -1)) << "it is that pin's menu";
}

TEST_F(MapToolsTest, TheBannerOfAPlaceGoesWithIt)
{
    addPlace({4, 4}, u"Soto"_s);
    addPlace({8, 6}, u"Vado"_s);
    platform::ListView& list = *frmMapa().ui().lvLugares;
    MapDocument& document = frmMapa().documento;
    const auto isShownAfter = [&](const std::function<void()>& edit) {
        choose(&list, 0);
        emit list.doubleClicked(list.currentIndex());
        EXPECT_TRUE(frmMapa().ui().lblLocation->isVisible());
        edit();
        return frmMapa().ui().lblLocation->isVisible();
    };
    EXPECT_FALSE(isShownAfter([&] { document.movePlace({4, 4}, {4, 5}); }));
    EXPECT_FALSE(isShownAfter([&] { document.undo(); }));
    EXPECT_FALSE(isShownAfter([&] { addPlace({4, 4}, u"Otero"_s); }));
    EXPECT_FALSE(isShownAfter([&] { document.removePlace({4, 4}); }));
    document.undo();
    EXPECT_TRUE(isShownAfter([&] { document.setPin({4, 4}, u"Castillo"_s); }));
    EXPECT_TRUE(isShownAfter([&] { document.removePlace({8, 6}); }));
}

TEST_F(MapToolsTest, ADragThatIsBrokenOffPaintsNothingMore)
{
    press(frmMapa().ui().tiles);
    chooseTile(u"T1"_s);
    for (const bool isFilling : {false, true}) {
        if (isFilling) {
            action("rellenar").trigger();
            chooseTile(u"B1"_s);
        }
        for (const auto& breakOff : std::initializer_list<std::function<void()>>{
                 [] {
                     addPlace({20, 20}, u"Soto"_s);
                 },
                 [] { key(Qt::CTRL | Qt::Key_Z); }, [] { key(Qt::Key_Escape); }}) {
            ASSERT_EQ(frmMapa().accion, PaintTiles);
            send(QEvent::MouseButtonPress, inView(4, 4), Qt::LeftButton, Qt::LeftButton);
            breakOff();
            const WorldMap before = frmMapa().mapa();
            send(QEvent::MouseMove, inView(8, 4), Qt::NoButton, Qt::LeftButton);
            send(QEvent::MouseMove, inView(4, 4), Qt::NoButton, Qt::LeftButton);
            send(QEvent::MouseButtonRelease, inView(4, 4), Qt::LeftButton, {});
            EXPECT_TRUE(frmMapa().mapa() == before);
        }
        press(frmMapa().ui().tiles);
    }
}

TEST_F(MapToolsTest, PinsThatComeBackAreDrawnAsTheWholeMapIs)
{
    addPlace({4, 4}, u"Soto"_s);
    workspace.pictures.colMascarasTiles[u"M1"_s] = SIN_MASCARA; // covers what lies below
    frmMapa().renderMapa();
    frmMapa().drawMinimap();
    frmMapa().scrollMapa();
    frmMapa().documento.removePlace({4, 4});
    action("deshacer").trigger();
    expectPixelsOfFullRedraw();
}

TEST_F(MapToolsTest, CellsAreCarriedWithinAndBetweenMaps)
{
    std::mt19937 engine(3);
    const QStringList tiles{u"M1"_s, u"T1"_s, u"T2"_s, u"B1"_s};
    alterMap([&](WorldMap& map) {
        for (QString& tile : map.mapaTiles)
            tile = tiles[static_cast<qsizetype>(engine() % 4)];
        map.mapaPines[{7, 5}] = {u"Aldea"_s, u"Soto"_s, u"una\nnota"_s};
        map.mapaPines[{9, 8}] = {u"Castillo"_s, u"Vado"_s, {}};
    });
    const WorldMap source = frmMapa().mapa();
    chooseTile(u"T3"_s);
    selectCells({10, 9}, {7, 5}); // from any corner to any other
    key(Qt::CTRL | Qt::Key_C);
    /// What must have come of the 4 × 5 cells from (7, 5) on, laid with that cell at a corner.
    const auto expectPasted = [&](QPoint corner) {
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 4; ++x) {
                const QPoint to = corner + QPoint(x, y);
                if (frmMapa().mapa().contains(to)) {
                    EXPECT_EQ(frmMapa().mapa().tileAt(to), source.tileAt({7 + x, 5 + y}));
                }
            }
        }
    };
    for (const auto& [pointer, corner] : {std::pair(QPoint(20, 20), QPoint(21, 20)),
                                          {{21, 20}, {21, 20}},
                                          {{48, 47}, {49, 47}},
                                          {{0, 0}, {1, 0}}}) {
        SCOPED_TRACE(pointer.x());
        hover(pointer.x(), pointer.y());
        if (pointer.x() == 48) { // past two edges; not in sight
            frmMapa().currX = 40;
            frmMapa().currY = 40;
            frmMapa().scrollMapa();
            hover(pointer.x(), pointer.y());
        }
        key(Qt::CTRL | Qt::Key_V);
        expectPasted(corner);
        EXPECT_TRUE(status().startsWith(u"%1 × %2 casillas"_s.arg(std::min(4, 50 - corner.x()))
                                            .arg(std::min(5, 50 - corner.y()))))
            << qPrintable(status());
        const bool hasPlaces = corner.x() < 49;
        EXPECT_EQ(cellOf("Soto 2"), hasPlaces || corner.x() == 49 ? corner : QPoint(-1, -1));
        EXPECT_EQ(cellOf("Vado 2"), hasPlaces ? corner + QPoint(2, 3) : QPoint(-1, -1));
        expectPixelsOfFullRedraw();
        action("deshacer").trigger();
        EXPECT_TRUE(frmMapa().mapa() == source) << "one step";
        frmMapa().currX = frmMapa().currY = 0;
        frmMapa().scrollMapa();
    }
    key(Qt::Key_Escape);
    selectCells({7, 5}, {10, 9});
    key(Qt::CTRL | Qt::Key_X);
    EXPECT_EQ(cellsOf(u"T3"_s).size(), 20U);
    EXPECT_TRUE(frmMapa().mapa().mapaPines.empty());
    expectPixelsOfFullRedraw();
    hover(7, 5);
    key(Qt::CTRL | Qt::Key_V);
    EXPECT_TRUE(frmMapa().mapa() == source) << "names that are free again are kept";

    frmMapa().newMapa({}, {20, 20});
    hover(2, 3);
    key(Qt::CTRL | Qt::Key_V);
    expectPasted({3, 3});
    EXPECT_EQ(frmMapa().mapa().placeAt({3, 3})->notes, u"una\nnota"_s);
}

TEST_F(MapToolsTest, AForeignClipboardChangesNothing)
{
    alterMap([](WorldMap& map) { map.mapaPines[{3, 3}] = {u"Aldea"_s, u"Soto"_s, {}}; });
    const WorldMap before = frmMapa().mapa();
    const QString whole = blockText(cutOut(before, {2, 2, 3, 3}));
    const auto with = [&](const QString& old, const QString& fresh) {
        EXPECT_TRUE(whole.contains(old));
        return QString(whole).replace(old, fresh);
    };
    const QStringList hostile{QString(),
                              u"un texto de otro programa"_s,
                              QString(100000, u'x'),
                              whole.left(whole.size() / 2),
                              whole.left(30),
                              with(u"mapa 1"_s, u"mapa 2"_s),
                              with(u"3;3"_s, u"32767;32767"_s),
                              with(u"3;3"_s, u"-3;3"_s),
                              with(u"M1;"_s, u"Nada;"_s),
                              with(u"Aldea"_s, u"Nada"_s),
                              with(u"Soto"_s, QString()),
                              with(u"Soto"_s, u"Łódź"_s),
                              with(u"1;1;Aldea"_s, u"9;9;Aldea"_s)};
    for (const QString& text : hostile) {
        QGuiApplication::clipboard()->setText(text);
        boxes.expect();
        action("pegar").trigger();
        EXPECT_TRUE(frmMapa().mapa() == before) << qPrintable(text.left(200));
        EXPECT_TRUE(boxes.asked().back().text.front().isUpper())
            << qPrintable(boxes.asked().back().text);
    }
    EXPECT_FALSE(frmMapa().documento.canUndo());
}

TEST_F(MapToolsTest, AStepBackToAPinThatIsGoneIsToldAndCounts)
{
    addPlace({3, 3}, u"Soto"_s);
    const WorldMap before = frmMapa().mapa();
    frmMapa().documento.removePlace({3, 3});
    workspace.pictures.colPines.remove(u"Aldea"_s);
    boxes.expect();
    action("deshacer").trigger();
    EXPECT_TRUE(frmMapa().mapa() == before);
    EXPECT_EQ(frmMapa().lugares.count(), 1);
    EXPECT_EQ(frmMapa().documento.redoText(), u"eliminar «Soto»"_s);
    action("rehacer").trigger();
    EXPECT_TRUE(frmMapa().mapa().mapaPines.empty());
}

TEST_F(MapToolsTest, EscTakesBackOneThingAtATime)
{
    press(frmMapa().ui().tiles);
    selectCells({3, 3}, {5, 5});
    leave();
    EXPECT_EQ(status(), u"3 × 3 casillas seleccionadas"_s);
    EXPECT_TRUE(action("copiar").isEnabled());
    action("cuentagotas").trigger();
    EXPECT_TRUE(status().startsWith(u"Pulse una casilla"_s));
    key(Qt::Key_Escape);
    key(Qt::Key_Escape);
    EXPECT_FALSE(action("copiar").isEnabled());
    EXPECT_TRUE(action("seleccionar").isChecked());
    key(Qt::Key_Escape);
    EXPECT_FALSE(action("seleccionar").isChecked());
    EXPECT_EQ(frmMapa().accion, PaintTiles);
    key(Qt::Key_Escape);
    EXPECT_EQ(frmMapa().accion, NoEditing);
    EXPECT_FALSE(frmMapa().ui().tiles->isChecked());
    EXPECT_FALSE(frmTiles().isVisible());
    EXPECT_EQ(status(), QString());
    selectCells({3, 3}, {5, 5});
    press(frmMapa().ui().tiles); // another tool
    chooseTile(u"T1"_s);
    click(4, 4);
    EXPECT_EQ(frmMapa().mapa().tileAt({4, 4}), u"T1"_s);
    EXPECT_TRUE(action("copiar").isEnabled());
}

TEST_F(MapToolsTest, KeysWorkInThePalettesToo)
{
    press(frmMapa().ui().tiles);
    frmTiles().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frmTiles().window()));
    platform::FilterBox& filter = *frmTiles().ui().txtFiltro;
    QTest::keyClick(frmTiles().ui().lvTiles, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(filter.hasFocus()) << "each palette searches its own list";
    QTest::keyClicks(&filter, u"agua"_s);
    QTest::keyClick(&filter, Qt::Key_Escape);
    EXPECT_EQ(filter.text(), QString());
    EXPECT_EQ(frmMapa().accion, PaintTiles) << "the box took the key";
    QTest::keyClick(frmTiles().ui().lvTiles, Qt::Key_G);
    EXPECT_TRUE(action("rellenar").isChecked());
    QTest::keyClick(frmTiles().ui().lvTiles, Qt::Key_Escape);
    EXPECT_EQ(frmMapa().accion, NoEditing);

    // The keys of places, with the pointer over one.
    addPlace({4, 4}, u"Soto"_s);
    press(frmMapa().ui().pines);
    frmPines().window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frmPines().window()));
    choose(frmMapa().ui().lvLugares, 0);
    leave();
    QTest::keyClick(frmPines().ui().lvPines, Qt::Key_Delete);
    EXPECT_EQ(frmMapa().lugares.count(), 1);
    hover(4, 4);
    QTest::keyClick(frmPines().ui().lvPines, Qt::Key_Delete, Qt::KeypadModifier);
    EXPECT_EQ(frmMapa().lugares.count(), 0);

    press(frmMapa().ui().minimapa);
    frmMinimap().window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frmMinimap().window()));
    QTest::keyClick(&frmMinimap().window(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(frmMapa().lugares.count(), 1);
    QTest::keyClick(&frmMinimap().window(), Qt::Key_Escape);
    EXPECT_EQ(frmMapa().accion, NoEditing);
}

TEST_F(MapToolsTest, TheTabKeyComesToTheToolbar)
{
    QWidget& window = frmMapa().window();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    press(frmMapa().ui().tiles);
    press(frmMapa().ui().tiles);
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_TRUE(frmMapa().ui().imgMapa->hasFocus()) << "at first, and after clicks";
    const QWidget* const roads = frmMapa().ui().Toolbar->widgetForAction(frmMapa().ui().caminos);
    for (int i = 0; i < 30 && !roads->hasFocus(); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(roads->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(frmMapa().accion, DrawRoads);
}

TEST_F(MapToolsTest, RoadModeSaysWhatIsMissingAndWhatItCost)
{
    alterMap([](WorldMap& map) {
        for (QString& tile : map.mapaTiles)
            tile = u"T1"_s;
        for (int y = 0; y < 50; ++y)
            map.mapaTiles(y, 40) = u"M1"_s; // can't be entered
    });
    press(frmMapa().ui().caminos);
    const auto expectStatus = [](const QString& text) {
        EXPECT_EQ(status().section(u"  ·"_s, 0, 0), text);
    };
    leave();
    expectStatus(u"Elija el comienzo (botón izquierdo) y el final (botón derecho)"_s);
    const QImage bare = frmMapa().ui().imgMapa->grab().toImage();
    click(5, 5);
    expectStatus(u"Elija el final (botón derecho)"_s);
    EXPECT_NE(frmMapa().ui().imgMapa->grab().toImage(), bare) << "the start is marked";
    click(5, 9, Qt::RightButton);
    expectStatus(u"Coste 8 en 4 casillas; 4 en línea recta"_s);
    leave();
    frmMapa().renderMapa();
    frmMapa().scrollMapa();
    EXPECT_EQ(frmMapa().ui().imgMapa->grab().toImage(), bare) << "marks go with the search";
    click(45, 5, Qt::RightButton);
    expectStatus(u"Elija el comienzo (botón izquierdo)"_s);
    click(5, 5);
    expectStatus(u"No hay camino"_s);
}
