// What is drawn over the view of a map: layouts, keys, scales.
#include "mapview/overlay.h"
#include "support.h"
#include "worldmap/hex_map_geometry.h"

#include <QPainter>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// From a large map reduced into a small view to the largest zoom of a fine screen.
constexpr std::array<double, 11> scales{1.0 / 80, 0.1, 0.3, 0.45, 0.7, 1, 2, 3, 4, 8, 16};

MapFrame wholeMap(const MapGeometry& geometry, double scale, double unit = 1)
{
    return {QRect({}, geometry.pictureSize()), scale, unit};
}

/// Places on so many cells of a map, some at its corners, some with very long names.
std::vector<NamedPlace> randomPlaces(QSize cells, int count, std::mt19937& engine)
{
    const auto below = [&](int end) { return static_cast<int>(engine() % unsigned(end)); };
    std::map<std::pair<int, int>, NamedPlace> places;
    for (int i = 0; i < count; ++i) {
        QPoint cell(below(cells.width()), below(cells.height()));
        if (i < 4)
            cell = {i % 2 * (cells.width() - 1), i / 2 * (cells.height() - 1)};
        const int length = i % 9 == 0 ? 100 : i % 13 == 0 ? 0 : 3 + below(20);
        QString name;
        for (int letter = 0; letter < length; ++letter)
            name += i % 5 == 0 ? u'Ж' : u"aeilmrsWñ"[below(9)];
        places[{cell.y(), cell.x()}] = {cell, name, below(4), below(3) == 0};
    }
    std::vector<NamedPlace> list;
    list.reserve(places.size());
    for (const auto& [cell, place] : places)
        list.push_back(place);
    return list;
}

/// The letters' own measure, with the kerning and shaping that the layout goes without.
double widthOf(const PlacedName& name, double size)
{
    QFont font;
    font.setPixelSize(static_cast<int>(std::lround(size)));
    font.setWeight(name.isBold ? QFont::Bold : QFont::Medium);
    return QFontMetricsF(font).horizontalAdvance(name.text);
}

/// How light a colour looks, from 0 to 100.
double lightness(QRgb colour)
{
    const auto linear = [](int part) { return std::pow(part / 255.0, 2.2); };
    const double luminance = 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
                             0.0722 * linear(qBlue(colour));
    return 116 * std::cbrt(luminance) - 16;
}

QImage drawn(const Overlay& overlay, const MapGeometry& geometry, const MapFrame& frame)
{
    QImage image(frame.surface().size().toSize().expandedTo({1, 1}), QImage::Format_RGB32);
    image.fill(Qt::gray);
    QPainter painter(&image);
    drawOverlay(painter, geometry, frame, overlay);
    return image;
}

} // namespace

TEST(PlaceNames, CoverNeitherEachOtherNorPins)
{
    std::mt19937 engine(3);
    for (const QSize cells : {QSize(1, 1), QSize(3, 2), QSize(30, 40), QSize(150, 60)}) {
        const HexMapGeometry geometry(cells);
        const auto places = randomPlaces(cells, cells.width() * cells.height() / 9 + 4, engine);
        for (const double scale : scales) {
            const MapFrame frame = wholeMap(geometry, scale, scale < 2 ? 1 : 1.25);
            const bool hasDots = 14 * scale < 6 * frame.unit; // pins too small to be made out
            const QRect picture({}, frame.surface().size().toSize());
            const std::vector<PlacedName> names = placeNames(places, geometry, frame);
            for (std::size_t i = 0; i < names.size(); ++i) {
                const QRect& box = names[i].box;
                for (std::size_t other = 0; other < i; ++other)
                    ASSERT_FALSE(names[other].box.intersects(box));
                for (const PlacedName& other : names)
                    ASSERT_FALSE(other.pin.intersects(box));
                ASSERT_EQ(names[i].hasDot, hasDots);
                for (const NamedPlace& place : places)
                    ASSERT_FALSE(scale > 0.5 &&
                                 frame.at(QRectF(geometry.cellRect(place.cell))).intersects(box));
                ASSERT_LE(box.width(), 180 * frame.unit);
                ASSERT_GE(box.width(), widthOf(names[i], 12 * frame.unit));
                ASSERT_TRUE(box.width() > picture.width() ||
                            (box.left() >= picture.left() && box.right() <= picture.right()));
                ASSERT_TRUE(box.height() > picture.height() ||
                            (box.top() >= picture.top() && box.bottom() <= picture.bottom()));
            }
        }
    }
}

TEST(PlaceNames, ImportantOnesComeFirstWhereThereIsNoRoom)
{
    const HexMapGeometry geometry({40, 40});
    std::vector<NamedPlace> places(40, {{}, u"Aldea menor"_s, 3});
    for (int row = 0; row < 40; ++row)
        places[static_cast<std::size_t>(row)].cell = {row * 7 % 40, row};
    places[33].name = u"Capital"_s;
    places[33].importance = 0;
    const auto at = [&](double scale) {
        return placeNames(places, geometry, wholeMap(geometry, scale));
    };
    EXPECT_EQ(at(8).size(), places.size());
    const std::vector<PlacedName> few = at(0.2);
    EXPECT_LT(few.size(), 12U);
    ASSERT_GT(few.size(), 1U);
    EXPECT_EQ(few.front().text, u"Capital"_s);
    EXPECT_TRUE(few.front().hasDot);
    EXPECT_FALSE(at(1).front().hasDot);
}

TEST(PlaceNames, StandStillWhenTheViewMoves)
{
    const HexMapGeometry geometry({60, 60});
    std::mt19937 engine(5);
    const PlaceNames names(randomPlaces({60, 60}, 80, engine));
    const QImage all = drawn(names, geometry, wholeMap(geometry, 2));
    for (const QRect part : {QRect(0, 0, 300, 200), QRect(101, 77, 200, 300)}) {
        const QImage shown = drawn(names, geometry, {part, 2});
        EXPECT_EQ(shown, all.copy(QRect(part.topLeft() * 2, part.size() * 2)));
    }
}

TEST(CellNumbers, AreWrittenAsOnPrintedMaps)
{
    EXPECT_EQ(cellNumber({0, 0}), u"0101"_s);
    EXPECT_EQ(cellNumber({6, 11}), u"0712"_s);
    EXPECT_EQ(cellNumber({98, 98}), u"9999"_s);
    EXPECT_EQ(cellNumber({99, 6}), u"100.07"_s);
    EXPECT_EQ(cellNumber({6, 999}), u"07.1000"_s);
}

TEST(CellNumbers, NeverTouch)
{
    for (const QSize cells : {QSize(1, 1), QSize(20, 99), QSize(130, 110), QSize(60, 1000)}) {
        const HexMapGeometry geometry(cells);
        for (const double scale : scales) {
            for (const double unit : {1.0, 1.5, 2.0}) {
                const MapFrame frame{QRect(37, 71, int(400 / scale) + 1, int(300 / scale) + 1),
                                     scale, unit};
                const auto labels = cellLabels(geometry, frame);
                const QRectF picture = frame.at(QRectF({}, QSizeF(geometry.pictureSize())));
                for (std::size_t i = 0; i < labels.size(); ++i) {
                    ASSERT_TRUE(picture.toAlignedRect().contains(labels[i].box));
                    for (std::size_t other = 0; other < i; ++other)
                        ASSERT_FALSE(labels[i].box.intersects(labels[other].box))
                            << scale << ' ' << unit << ' ' << labels[i].text.toStdString();
                }
            }
        }
    }
    const HexMapGeometry geometry({20, 20});
    EXPECT_EQ(cellLabels(geometry, wholeMap(geometry, 8)).size(), 400U);
    EXPECT_EQ(cellLabels(geometry, wholeMap(geometry, 1)).front().text, u"0505"_s);
    const std::vector<QRect> taken{QRect(0, 0, 60, 4000)};
    EXPECT_EQ(cellLabels(geometry, wholeMap(geometry, 8), taken).size(), 380U);
}

TEST(CellGrid, IsLeftOutWhereCellsAreTiny)
{
    const HexMapGeometry geometry({20, 20});
    const auto isSeen = [&](double scale, double unit) {
        const QImage image = drawn(CellGrid{}, geometry, wholeMap(geometry, scale, unit));
        QImage plain = image;
        plain.fill(Qt::gray);
        return image != plain;
    };
    EXPECT_TRUE(isSeen(1, 1));
    EXPECT_TRUE(isSeen(0.5, 1));
    EXPECT_FALSE(isSeen(0.4, 1));
    EXPECT_FALSE(isSeen(0.5, 2));
}

TEST(CellColours, GrowLighterAllTheWay)
{
    for (int i = 1; i <= 64; ++i)
        EXPECT_GT(lightness(rampColour(i / 64.0)), lightness(rampColour((i - 1) / 64.0))) << i;
    EXPECT_GT(lightness(rampColour(1)) - lightness(rampColour(0)), 60);
}

TEST(CellColours, StandForTheFiguresFromLowestToHighest)
{
    CellFigures figures(2, 3);
    figures(0, 0) = -5.0F;
    figures(0, 1) = 20.0F;
    figures(1, 2) = 7.5F;
    CellColours colours = cellColours(figures, u"Ejemplo"_s, 1);
    EXPECT_EQ(colours.scale, QStringList({u"-5"_s, u"1,3"_s, u"7,5"_s, u"13,8"_s, u"20"_s}));
    EXPECT_EQ(colours.picture.pixel(0, 0), rampColour(0));
    EXPECT_EQ(colours.picture.pixel(1, 0), rampColour(1));
    EXPECT_EQ(qAlpha(colours.picture.pixel(2, 0)), 0);
    EXPECT_EQ(cellColours(figures, {}, 1, LightEnd::Lowest).picture.pixel(0, 0), rampColour(1));
    EXPECT_EQ(cellColours(CellFigures(2, 2, 3.0F), {}, 0).scale, QStringList(u"3"_s));
    EXPECT_EQ(cellColours(CellFigures(2, 2), {}, 0).picture.pixel(0, 0), 0U);

    // A cell is of one colour to its edges, and one without a figure is left as it is.
    const HexMapGeometry geometry({3, 2});
    colours.uncovered = {{2, 1}};
    for (const double scale : {0.2, 1.0, 5.0}) {
        const MapFrame frame = wholeMap(geometry, scale);
        const QImage image = drawn(colours, geometry, frame);
        const auto at = [&](QPoint cell) {
            return image.pixel(frame.at(QRectF(geometry.cellRect(cell)).center()).toPoint());
        };
        EXPECT_GT(qGray(at({1, 0})), qGray(at({1, 1}))) << scale;
        if (scale >= 1) { // where cells don't run into each other
            EXPECT_LT(qGray(at({0, 0})), qGray(at({2, 0}))) << scale;
            EXPECT_EQ(at({2, 0}), at({2, 1})) << "a place's cell is left free";
        }
    }
}

TEST(Overlays, KeysStandBesideEachOtherOverAllElse)
{
    const HexMapGeometry geometry({60, 40});
    const MapFrame frame{QRect(0, 0, 500, 300)};
    const Overlay colours = cellColours(CellFigures(40, 60, 1.0F), u"Uno"_s, 0);
    const auto image = [&](const std::vector<Overlay>& overlays) {
        QImage picture(500, 300, QImage::Format_RGB32);
        picture.fill(Qt::gray);
        QPainter painter(&picture);
        drawOverlays(painter, geometry, frame, overlays);
        return picture;
    };
    const QSize key = colourKeySize(1).toSize();
    const QRect lower(QPoint(8, 300 - 8 - key.height()), key);
    const QImage one = image({colours});
    const QImage two = image({colours, colours, CellGrid{}, ScaleBar{5}});
    EXPECT_EQ(two.copy(lower.adjusted(3, 3, -3, -3)), one.copy(lower.adjusted(3, 3, -3, -3)));
    const QRect upper = lower.translated(0, -key.height() - 8).adjusted(3, 3, -3, -3);
    EXPECT_EQ(two.copy(upper), one.copy(lower.adjusted(3, 3, -3, -3)));
}

TEST(ScaleBar, HasARoundLength)
{
    for (const auto& [most, length] : std::initializer_list<std::pair<double, double>>{
             {1, 1}, {1.99, 1}, {2, 2}, {4.9, 2}, {5, 5}, {99, 50}, {1000, 1000}, {0.07, 0.05}})
        EXPECT_NEAR(roundLength(most), length, length * 1e-9) << most;
}

TEST(Overlays, AreDrawnIntoAnyFrame)
{
    std::mt19937 engine(9);
    const HexMapGeometry geometry({50, 50});
    const std::vector<Overlay> all{cellColours(CellFigures(50, 50, 2.0F), u"Uno"_s, 0),
                                   CellGrid{},
                                   CellNumbers{},
                                   PlaceNames(randomPlaces({50, 50}, 60, engine)),
                                   ScaleBar{0.001},
                                   ScaleBar{1e9},
                                   ScaleBar{0}};
    for (const QRect part : {QRect(0, 0, 1, 1), QRect(), QRect(-500, -300, 90, 40),
                             QRect(5000, 5000, 300, 300), QRect(-20, -20, 900, 900)}) {
        for (const double scale : scales) {
            QImage picture(200, 200, QImage::Format_RGB32);
            QPainter painter(&picture);
            drawOverlays(painter, geometry, {part, scale}, all);
        }
        QImage none(1, 1, QImage::Format_RGB32);
        QPainter painter(&none);
        drawOverlays(painter, geometry, {part, 0}, all);
        drawOverlays(painter, geometry, {part, 2e-6}, all);
    }
}
