// The overlays of the map window's menu Ver.

#include "map_test.h"

using namespace Qt::StringLiterals;

namespace {

class MapLayersTest : public MapTest
{
protected:
    static QAction& command(const QString& key)
    {
        return *frmMapa().window().findChild<QAction*>(key);
    }
    static QImage view() { return frmMapa().ui().imgMapa->grab().toImage(); }
    static QString status() { return frmMapa().ui().lblEstado->text(); }
    static void setNotes(const QString& notes, int north = 60, int south = 0)
    {
        MapProperties properties = frmMapa().mapa();
        properties.notasMapa = notes;
        properties.latNorte = north;
        properties.latSur = south;
        frmMapa().documento.setProperties(properties);
    }
};

} // namespace

TEST_F(MapLayersTest, EachIsDrawnOverThePictureAndNeverIntoIt)
{
    setNotes(u"Escala: 10 km"_s);
    frmMapa().documento.setPlace({9, 9}, {u"Aldea"_s, u"Robledal"_s, {}});
    const QImage plain = view();
    const QImage picture = frmMapa().hdcBuffer.image();
    for (const QString& key : {u"nombres"_s, u"rejilla"_s, u"coordenadas"_s, u"climaColor"_s,
                               u"habitantes"_s, u"barraEscala"_s}) {
        SCOPED_TRACE(key.toStdString());
        EXPECT_FALSE(command(key).isChecked()) << "off at first";
        command(key).trigger();
        EXPECT_NE(view(), plain);
        EXPECT_EQ(frmMapa().hdcBuffer.image(), picture);
        command(key).trigger();
        EXPECT_EQ(view(), plain);
    }
}

TEST_F(MapLayersTest, TheyFollowTheMap)
{
    // What is drawn after a change is what turning the overlay on then draws.
    const auto expectFollows = [](const QString& key, const std::function<void()>& change) {
        SCOPED_TRACE(key.toStdString());
        command(key).trigger();
        change();
        const QImage followed = view();
        command(key).trigger();
        EXPECT_NE(view(), followed);
        command(key).trigger();
        EXPECT_EQ(view(), followed);
        command(key).trigger();
    };
    setNotes({});
    MapDocument& document = frmMapa().documento;
    expectFollows(u"nombres"_s, [&] {
        document.setPlace({9, 9}, {u"Aldea"_s, u"Robledal"_s, {}});
        document.movePlace({9, 9}, {12, 9});
    });
    expectFollows(u"climaColor"_s, [&] { document.fill({20, 20}, u"T2"_s); });
    expectFollows(u"habitantes"_s, [&] { document.undo(); });
    expectFollows(u"climaColor"_s, [] { setNotes({}, 30, -60); });
    expectFollows(u"nombres"_s, [&] {
        frmMapa().newMapa({}, {30, 30});
        document.setPlace({3, 3}, {u"Aldea"_s, u"Ribera"_s, {}});
    });

    // Where there is nothing to show, it is said; an overlay that was on goes off.
    boxes.expect();
    command(u"climaColor"_s).trigger();
    EXPECT_TRUE(boxes.asked().back().text.contains(u"latitudes"_s));
    EXPECT_FALSE(command(u"climaColor"_s).isChecked());
    setNotes({});
    command(u"climaColor"_s).trigger();
    setNotes({}, 5, 5);
    EXPECT_FALSE(command(u"climaColor"_s).isChecked());
}

TEST_F(MapLayersTest, InhabitantsAndDistancesAreToldInTheStatusLine)
{
    alterMap([](WorldMap& map) { map.mapaTiles = platform::Grid<QString>(50, 50, u"T2"_s); });
    frmMapa().ui().lvLugares->setFocus();
    command(u"habitantes"_s).trigger();
    EXPECT_TRUE(status().contains(u"50 × 50 casillas"_s)) << status().toStdString();
    EXPECT_FALSE(status().contains(u"en total"_s));
    command(u"seleccionar"_s).trigger();
    drag(inView(2, 2), inView(5, 3));
    EXPECT_TRUE(status().contains(u"4 × 2 casillas)"_s)) << status().toStdString();
    command(u"seleccionar"_s).trigger();

    EXPECT_FALSE(command(u"barraEscala"_s).isEnabled());
    setNotes(u"Isla del norte\nEscala: 10 km"_s);
    EXPECT_TRUE(status().contains(u"en total"_s)) << status().toStdString();
    frmMapa().ui().menuBar->findChild<QMenu*>(u"menuVer"_s)->aboutToShow();
    EXPECT_TRUE(command(u"barraEscala"_s).isEnabled());
    press(frmMapa().ui().caminos);
    click(2, 2);
    click(2, 5, Qt::RightButton);
    EXPECT_TRUE(status().contains(u"; 30 km, "_s)) << status().toStdString();
}

TEST_F(MapLayersTest, TheMinimapTakesTheSizeOfItsWindow)
{
    press(frmMapa().ui().minimapa);
    QWidget& window = frmMinimap().window();
    const QWidget& picture = *frmMinimap().ui().imgMinimap;
    const QSize first = picture.size();
    EXPECT_EQ(first.height(), 177);
    window.resize(window.width() + 300, window.height() + 400);
    EXPECT_NEAR(1.0 * picture.width() / picture.height(), 1.0 * first.width() / first.height(),
                0.01);
    EXPECT_GT(picture.width(), 2 * first.width());
    EXPECT_TRUE(window.rect().contains(picture.geometry()));
    command(u"acercar"_s).trigger();
    const QRect selector = frmMinimap().ui().imgSelector->geometry();
    EXPECT_NEAR(selector.width(),
                picture.width() * frmMapa().ui().imgMapa->width() / 2.0 / (50 * 11), 2);
    frmMapa().scrollMapa();
    expectPixelsOfFullRedraw();
    EXPECT_TRUE(
        frmMinimap().ui().imgMinimap->visibleRegion().contains(picture.rect().bottomRight()));
    // A click goes to the place, as at first.
    QTest::mouseClick(frmMinimap().ui().imgMinimap, Qt::LeftButton, {},
                      picture.rect().bottomRight());
    EXPECT_GT(frmMapa().currX, 5);
}
