#include "support.h"
#include "worldmap/map_block.h"
#include "worldmap/map_document.h"
#include "worldmap/map_file.h"
#include "worldmap/map_resize.h"

#include <QSignalSpy>
#include <random>

using namespace Qt::StringLiterals;

namespace {

WorldMap seaOf(int rows, int columns)
{
    WorldMap map;
    map.nombre = u"Prueba"_s;
    map.mapaTiles = platform::Grid<QString>(rows, columns, u"M1"_s);
    return map;
}

/// One random edit, by way of every operation of the document.
void editAtRandom(MapDocument& document, std::mt19937& engine)
{
    const WorldMap& map = document.map();
    const auto below = [&](int limit) { return static_cast<int>(engine() % unsigned(limit)); };
    const QPoint cell(below(map.ancho()), below(map.alto()));
    const QStringList tiles{u"M1"_s, u"T1"_s, u"B1"_s};
    const QPoint other(below(map.ancho()), below(map.alto()));
    const QString pin = u"Torre"_s;
    switch (below(12)) {
    case 0:
    case 1: {
        const QString& tile = tiles[below(3)];
        document.beginStroke();
        for (int i = below(5); i >= 0; --i) {
            const QPoint next(below(map.ancho()), below(map.alto()));
            document.paint({&next, 1}, tile);
        }
        document.endStroke();
        break;
    }
    case 2: {
        const Place* const there = map.placeAt(cell);
        document.setPlace(cell, {u"Aldea"_s, there ? there->name : u"L%1"_s.arg(engine()),
                                 QString::number(below(3))});
        break;
    }
    case 3:
        document.removePlace(cell);
        break;
    case 5:
        document.fill(cell, tiles[below(3)]);
        break;
    case 6:
        document.movePlace(cell, other);
        break;
    case 7:
        document.setPin(cell, pin);
        break;
    case 8:
        document.clear({QPoint(std::min(cell.x(), other.x()), std::min(cell.y(), other.y())),
                        QPoint(std::max(cell.x(), other.x()), std::max(cell.y(), other.y()))},
                       u"T2"_s);
        break;
    case 9:
    case 10:
        document.paste(cutOut(map, {cell, QSize(1 + below(3), 1 + below(3))}),
                       {other.x() & ~1, other.y()});
        break;
    case 4:
        document.setProperties({u"N%1"_s.arg(below(3)), 45, -45, {}});
        break;
    default: {
        WorldMap world = map;
        world.mapaPines.clear();
        world.mapaTiles = platform::Grid<QString>(1 + below(9), 1 + below(9), u"T3"_s);
        document.generate(std::move(world));
    }
    }
}

} // namespace

TEST(MapDocument, WalksBackAndForthThroughAnyEdits)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 engine(seed);
        MapDocument document;
        document.openMapa(seaOf(6, 7), {});
        std::vector<WorldMap> states{document.map()};
        for (int i = 0; i < 12; ++i) {
            editAtRandom(document, engine);
            if (document.map() != states.back())
                states.push_back(document.map());
        }
        std::size_t at = states.size() - 1;
        for (int i = 0; i < 60; ++i) {
            if (document.canUndo() && (engine() % 2 == 0 || !document.canRedo())) {
                document.undo();
                --at;
            } else {
                document.redo();
                ++at;
            }
            ASSERT_TRUE(document.map() == states.at(at)) << "step " << i;
            ASSERT_EQ(document.canUndo(), at > 0);
            ASSERT_EQ(document.canRedo(), at + 1 < states.size());
            ASSERT_EQ(document.mapaCambiado(), at > 0) << "the beginning is the file's";
        }
    }
}

TEST(MapDocument, AStrokeIsOneStepAndNothingIsNone)
{
    MapDocument document;
    document.openMapa(seaOf(9, 9), {});
    const auto paint = [&](QPoint cell, const QString& tile) { document.paint({&cell, 1}, tile); };
    paint({1, 1}, u"M1"_s); // as it is
    EXPECT_FALSE(document.canUndo());
    EXPECT_TRUE(document.mapaCambiado()) << "it was drawn";
    document.beginStroke();
    for (int x = 0; x < 9; ++x)
        paint({x, 2}, u"T1"_s);
    paint({4, 2}, u"T1"_s);
    document.endStroke();
    EXPECT_EQ(document.undoText(), u"pintar 9 casillas"_s);
    paint({0, 0}, u"T1"_s);
    paint({0, 1}, u"T1"_s);
    EXPECT_EQ(document.undoText(), u"pintar una casilla"_s);
    document.undo();
    document.undo();
    EXPECT_EQ(document.map().mapaTiles(2, 8), u"T1"_s);
    document.undo();
    EXPECT_TRUE(document.map() == seaOf(9, 9));
    EXPECT_EQ(document.redoText(), u"pintar 9 casillas"_s);
    const Place place{u"Aldea"_s, u"Soto"_s, {}};
    document.setPlace({3, 3}, place);
    EXPECT_FALSE(document.canRedo());
    document.setPlace({3, 3}, place);
    document.setProperties(document.map());
    document.movePlace({3, 3}, {3, 3}); // where there is a place
    document.movePlace({3, 3}, {9, 3}); // off the map
    document.movePlace({2, 3}, {4, 3}); // none
    document.removePlace({2, 3});
    document.setPin({2, 3}, u"Torre"_s);
    document.undo();
    EXPECT_FALSE(document.canUndo());
}

TEST(MapDocument, KeepsTheRulesOfAChangedMap)
{
    const TempAppFolder app;
    MapDocument document;
    EXPECT_FALSE(document.mapaCambiado());
    document.newMapa(seaOf(4, 4));
    EXPECT_TRUE(document.mapaCambiado());
    document.saveMapa();
    EXPECT_FALSE(document.mapaCambiado());
    const QPoint cell(1, 1);
    document.setPlace(cell, {u"Aldea"_s, u"Soto"_s, {}});
    EXPECT_TRUE(document.mapaCambiado());
    document.saveMapa();
    document.setPlace(cell, {u"Aldea"_s, u"Soto"_s, u"nuevas notas"_s});
    document.setProperties({u"Otro"_s, 45, -45, {}});
    document.paint({&cell, 1}, u"T1"_s); // under a place
    EXPECT_FALSE(document.mapaCambiado()) << "what draws nothing doesn't count";
    document.undo();
    EXPECT_TRUE(document.mapaCambiado());
    document.undo();
    document.undo();
    EXPECT_FALSE(document.mapaCambiado()) << "as its file is";
    document.undo();
    EXPECT_TRUE(document.mapaCambiado());
    document.beginStroke();
    document.paint({{{2, 2}}}, u"T1"_s);
    document.saveMapa();
    document.paint({{{3, 2}}}, u"T1"_s);
    EXPECT_TRUE(document.mapaCambiado());
    document.undo();
    EXPECT_FALSE(document.mapaCambiado()) << "a save in the middle of a stroke ends its step";
    document.undo();
    EXPECT_TRUE(document.mapaCambiado());
    document.openMapa(seaOf(2, 2), {});
    EXPECT_TRUE(document.mapaCambiado()) << "opening leaves it";
    EXPECT_FALSE(document.canUndo() || document.canRedo());
}

TEST(MapDocument, AStepThatDidNotChangeTheNameLeavesANewOne)
{
    MapDocument document;
    document.openMapa(seaOf(4, 4), {});
    MapProperties properties = document.map();
    properties.nombre = u"Otro"_s;
    document.setProperties(properties);
    properties.latNorte = 45;
    document.setProperties(properties);
    MapChange wider;
    wider.whole = resized(document.map(), {2, 0, 0, 0}, u"T1"_s);
    document.change(std::move(wider), u"cambiar el tamaño"_s);
    document.undo();
    document.rename(u"Copia"_s);
    EXPECT_TRUE(document.canRedo());
    document.redo();
    EXPECT_EQ(document.map().nombre, u"Copia"_s);
    document.undo();
    EXPECT_EQ(document.map().ancho(), 4);
    document.undo();
    EXPECT_EQ(document.map().latNorte, 0);
    EXPECT_EQ(document.map().nombre, u"Copia"_s);
    document.undo();
    EXPECT_EQ(document.map().nombre, u"Prueba"_s) << "this one changed it";
}

TEST(MapDocument, TheOldestStepsGoWhenTheHistoryIsFull)
{
    MapDocument document;
    document.openMapa(seaOf(1000, 1000), {});
    std::vector<QPoint> all;
    for (int y = 0; y < 1000; ++y) {
        for (int x = 0; x < 500; ++x)
            all.emplace_back(x, y);
    }
    for (const QString& tile : {u"T1"_s, u"T2"_s, u"T3"_s, u"T4"_s, u"B1"_s, u"B2"_s})
        document.paint(all, tile);
    int steps = 0;
    for (; document.canUndo(); document.undo())
        ++steps;
    EXPECT_GE(steps, 2);
    EXPECT_LT(steps, 6);
    EXPECT_TRUE(document.undoText().isEmpty());
    for (; document.canRedo(); document.redo())
        --steps;
    EXPECT_EQ(steps, 0);
    EXPECT_EQ(document.map().mapaTiles(0, 0), u"B2"_s);
}

TEST(MapResize, AddsAndCutsAtEverySideAndMovesPlacesAlong)
{
    // 4 columns, 3 rows; every cell's tile tells where it was.
    WorldMap map = seaOf(3, 4);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x)
            map.mapaTiles(y, x) = u"%1,%2"_s.arg(x).arg(y);
    }
    map.mapaPines = {{{0, 0}, {u"Aldea"_s, u"Rincón"_s, {}}}, {{3, 2}, {u"Mina"_s, u"Fin"_s, {}}}};
    map.latNorte = 45;
    struct Case {
        QMargins added; // left, top, right, bottom
        QSize size;     // empty: refused
        QStringList lost{};
    };
    for (const Case& c : std::vector<Case>{
             {{0, 0, 0, 0}, {4, 3}},
             {{2, 1, 3, 4}, {9, 8}},
             {{-2, 0, 0, 0}, {2, 3}, {u"Rincón"_s}},
             {{0, -1, -1, 0}, {3, 2}, {u"Rincón"_s, u"Fin"_s}},
             {{0, 0, -3, -2}, {1, 1}, {u"Fin"_s}},
             {{-4, 0, 6, 0}, {6, 3}, {u"Rincón"_s, u"Fin"_s}}, // nothing of it is left
             {{4, 5, -4, -3}, {4, 5}, {u"Rincón"_s, u"Fin"_s}},
             {{0, 0, -4, 0}, {}},
             {{0, -2, 0, -2}, {}},
             {{1, 0, 0, 0}, {}},
             {{-1, 0, 0, 0}, {}},
             {{32764, 0, 0, 0}, {}},
             {{2000, 2000, 2000, 2000}, {}},
             {{32766, 32767, 32767, 32767}, {}}}) {
        SCOPED_TRACE(testing::Message() << c.added.left() << ' ' << c.added.top() << ' '
                                        << c.added.right() << ' ' << c.added.bottom());
        EXPECT_EQ(resizeProblem(map, c.added).has_value(), c.size.isEmpty());
        if (c.size.isEmpty()) {
            expectError([&] { resized(map, c.added, u"T1"_s); }, platform::ErrorNumber::TooLarge,
                        {u"tamaño"_s});
            continue;
        }
        const WorldMap fresh = resized(map, c.added, u"T1"_s);
        EXPECT_EQ(QSize(fresh.ancho(), fresh.alto()), c.size);
        EXPECT_EQ(static_cast<const MapProperties&>(fresh), map);
        EXPECT_EQ(lostPlaces(map, c.added), c.lost);
        EXPECT_EQ(fresh.mapaPines.size() + static_cast<std::size_t>(c.lost.size()), 2u);
        for (int y = 0; y < fresh.alto(); ++y) {
            for (int x = 0; x < fresh.ancho(); ++x) {
                const QPoint was(x - c.added.left(), y - c.added.top());
                EXPECT_EQ(fresh.mapaTiles(y, x), map.contains(was) ? map.tileAt(was) : u"T1"_s);
                const Place* const place = fresh.placeAt({x, y});
                EXPECT_EQ(place ? place->name : QString(),
                          map.placeAt(was) ? map.placeAt(was)->name : QString());
            }
        }
    }
}
