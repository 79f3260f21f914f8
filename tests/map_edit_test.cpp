// Painting and placing with real clicks, drags and keys.
#include "map_test.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmMapProperties.h"
#include "worldmap/map_area.h"
#include "worldmap/map_block.h"

#include <QMenu>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

using MapEditTest = MapTest;

QAction& action(const QString& key)
{
    return *frmMapa().window().findChild<QAction*>(key);
}

QStringList pinNames()
{
    QStringList names;
    for (int i = 0; i < frmPines().palette.items.count(); ++i)
        names.append(frmPines().palette.items.at(i).key());
    return names;
}

} // namespace

TEST_F(MapEditTest, PaintsTheCellClickedOnlyInPaintMode)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    choose(frmTiles().ui().lvTiles, 7);
    const QString tile = frmTiles().selectedName();
    click(4, 5);
    EXPECT_NE(frmMapa().mapa().mapaTiles(5, 4), tile) << "no tool was picked yet";
    press(ui.tiles);
    EXPECT_TRUE(frmTiles().isVisible());
    choose(frmTiles().ui().lvTiles, 7);
    for (const QPoint cell : {QPoint(0, 0), QPoint(5, 8), QPoint(8, 5)}) {
        click(cell.x(), cell.y());
        EXPECT_EQ(frmMapa().mapa().mapaTiles(cell.y(), cell.x()), tile);
    }
    EXPECT_EQ(
        std::count(frmMapa().mapa().mapaTiles.begin(), frmMapa().mapa().mapaTiles.end(), tile), 3);
    EXPECT_TRUE(frmMapa().documento.mapaCambiado());
    EXPECT_EQ(ui.lblPosicion->text(), u"X:8 Y:5"_s);
    expectPixelsOfFullRedraw();

    frmMapa().currX = 10;
    frmMapa().currY = 20;
    frmMapa().scrollMapa();
    click(13, 24);
    EXPECT_EQ(frmMapa().mapa().mapaTiles(24, 13), tile);
    QTest::mouseClick(ui.imgMapa, Qt::LeftButton, {}, QPoint(12, 3)); // above an odd column
    EXPECT_EQ(ui.lblPosicion->text(), u"X:11 Y:19"_s);
    expectPixelsOfFullRedraw();
}

TEST_F(MapEditTest, AFastDragLeavesNoHolesAndSparesPlaces)
{
    press(frmMapa().ui().tiles);
    choose(frmTiles().ui().lvTiles, 9);
    const QString tile = frmTiles().selectedName();
    alterMap([](WorldMap& map) { map.mapaPines[{10, 10}] = {u"Aldea"_s, u"Isleta"_s, {}}; });
    const QPoint from = inView(4, 10);
    const QPoint to = inView(40, 10);
    drag(from, to);
    for (int x = from.x(); x <= to.x(); ++x) {
        const QPoint cell = hex::cellAt({x, from.y()});
        ASSERT_EQ(frmMapa().mapa().mapaTiles(cell.y(), cell.x()) == tile, cell != QPoint(10, 10))
            << cell.x() << ',' << cell.y();
    }
    drag(inView(3, 12), inView(20, 30));
    drag(inView(30, 30), QPoint(-200, -200)); // out of the map and back
    expectPixelsOfFullRedraw();

    click(10, 10); // under a place: only the document knows
    EXPECT_EQ(frmMapa().mapa().mapaTiles(10, 10), tile);
    workspace.pictures.colTiles.remove(frmTiles().palette.items.at(8).key());
    choose(frmTiles().ui().lvTiles, 8);
    boxes.expect(); // a tile without a picture would make a map that can't be opened again
    click(10, 10);
    EXPECT_EQ(frmMapa().mapa().mapaTiles(10, 10), tile);
    EXPECT_EQ(placeText(10, 10), u"Aldea;Isleta;"_s);

    // In a view of the map's middle, what lies left of it and above isn't painted.
    frmMapa().currX = 20;
    frmMapa().currY = 20;
    frmMapa().scrollMapa();
    choose(frmTiles().ui().lvTiles, 12);
    drag(inView(26, 26), QPoint(-60, -60));
    QTest::mouseClick(frmMapa().ui().imgMapa, Qt::LeftButton, {}, QPoint(12, 2));
    const QString hidden = frmTiles().selectedName();
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 50; ++x)
            EXPECT_TRUE((x >= 20 && y >= 20) || frmMapa().mapa().mapaTiles(y, x) != hidden);
    }
    EXPECT_EQ(frmMapa().mapa().mapaTiles(20, 20), hidden);
}

TEST_F(MapEditTest, ModesFollowTheLastButtonAndPalettesPopTheirs)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    press(ui.tiles);
    press(ui.pines);
    EXPECT_TRUE(frmTiles().isVisible() && frmPines().isVisible());
    EXPECT_EQ(frmMapa().accion, SetPlaces);
    press(ui.tiles);
    EXPECT_FALSE(frmTiles().isVisible());
    EXPECT_EQ(frmMapa().accion, NoEditing);
    EXPECT_TRUE(ui.pines->isChecked());
    press(ui.tiles);
    frmTiles().window().close();
    EXPECT_FALSE(ui.tiles->isChecked());
    EXPECT_EQ(frmMapa().accion, NoEditing);
    frmPines().window().close();
    EXPECT_FALSE(ui.pines->isChecked());
    EXPECT_FALSE(frmPines().isVisible());
    press(ui.pines);
    EXPECT_EQ(frmMapa().accion, SetPlaces);
    EXPECT_FALSE(frmPines().selectedName().isEmpty());
}

TEST_F(MapEditTest, SetsAndEditsPlaces)
{
    press(frmMapa().ui().pines);
    choose(frmPines().ui().lvPines, 3);
    const QString pin = frmPines().selectedName();
    setPlace(5, 6, u"Puerto; Viejo|Nuevo"_s, u"uno\ndos;\u00A0tres Ł"_s);
    EXPECT_EQ(placeText(6, 5), pin + u";Puerto, Viejo/Nuevo;uno\ndos,\u00A0tres "_s);
    EXPECT_TRUE(frmMapa().documento.mapaCambiado());
    ASSERT_EQ(frmMapa().lugares.count(), 1);
    EXPECT_EQ(frmMapa().lugares.at(0).subItem(u"x"_s), u"5"_s);
    EXPECT_EQ(frmMapa().lugares.at(0).subItem(u"notas"_s), u"uno\ndos,\u00A0tres "_s);
    expectPixelsOfFullRedraw();
    QTest::mouseMove(frmMapa().ui().imgMapa, inView(5, 6));
    send(QEvent::MouseMove, inView(5, 6), Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(frmMapa().ui().imgMapa->toolTip(), u"Puerto, Viejo/Nuevo"_s);
    send(QEvent::MouseMove, inView(6, 6), Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(frmMapa().ui().imgMapa->toolTip(), QString());

    // An existing place keeps its pin, and doesn't count as a change.
    setChanged(false);
    choose(frmPines().ui().lvPines, 1);
    setPlace(5, 6, u"Puerto Nuevo"_s, u""_s);
    EXPECT_EQ(placeText(6, 5), pin + u";Puerto Nuevo;"_s);
    EXPECT_FALSE(frmMapa().documento.mapaCambiado());
    setPlace(5, 6, u" "_s, u"x"_s);
    setPlace(5, 6, u"Puerto Nuevo"_s, u""_s);
    duringModal([] { click(5, 6); },
                [] {
                    EXPECT_EQ(frmInfoPin().ui().txtNombre->text(), u"Puerto Nuevo"_s);
                    frmInfoPin().ui().txtNombre->clear();
                    frmInfoPin().hide();
                });
    duringModal([] { click(20, 20); },
                [] {
                    frmInfoPin().ui().txtNombre->setText(u"Nada"_s);
                    frmInfoPin().window().close();
                });
    EXPECT_EQ(placeText(6, 5), pin + u";Puerto Nuevo;"_s);
    EXPECT_TRUE(placeText(20, 20).isEmpty());
}

TEST_F(MapEditTest, TwoPlacesOfOneNameAreRefused)
{
    press(frmMapa().ui().pines);
    setPlace(5, 6, u"Soto"_s, {});
    boxes.expect();
    duringModal([] { click(9, 9); },
                [] {
                    frmInfoPin().ui().txtNombre->setText(u"Soto"_s);
                    // The dialog comes again after the message: this time the name is a new one.
                    QTimer::singleShot(50, qApp, [] {
                        EXPECT_TRUE(frmInfoPin().isVisible());
                        frmInfoPin().ui().txtNombre->setText(u"Soto Bajo"_s);
                        frmInfoPin().hide();
                    });
                    frmInfoPin().hide();
                });
    EXPECT_TRUE(boxes.asked().back().text.contains(u"Ya hay un lugar"_s));
    EXPECT_EQ(frmMapa().mapa().placeAt({9, 9})->name, u"Soto Bajo"_s);
    EXPECT_EQ(frmMapa().lugares.count(), 2);

    // A header sorts the list until it is made anew; the place selected stays selected.
    platform::ListView& list = *frmMapa().ui().lvLugares;
    setPlace(1, 1, u"Zarza"_s, {});
    frmMapa().lugares.sortByColumn(0);
    EXPECT_EQ(frmMapa().lugares.at(2).text(), u"Zarza"_s);
    choose(&list, 1);
    ASSERT_EQ(list.selectedItem()->text(), u"Soto Bajo"_s);
    setPlace(9, 9, u"Aliaga"_s, {});
    EXPECT_EQ(frmMapa().lugares.at(0).text(), u"Zarza"_s);
    EXPECT_EQ(list.selectedItem()->text(), u"Aliaga"_s);
}

TEST_F(MapEditTest, GeneratesNamesAndSaysWhyItCannot)
{
    app.write(u"gramaticas/Nombres de lugares.txt"_s, "[a]\r\nVilla <b>\r\n[b]\r\nBlanca\r\n");
    press(frmMapa().ui().pines);
    duringModal([] { click(3, 3); },
                [&] {
                    Ui::FrmInfoPin& ui = frmInfoPin().ui();
                    QTest::mouseClick(ui.cmdGenerarNombre, Qt::LeftButton);
                    EXPECT_EQ(ui.txtNombre->text(), u"Villa Blanca"_s);
                    ui.txtInfo->setFocus();
                    QTest::keyClicks(ui.txtInfo, u"a"_s);
                    QTest::keyClick(ui.txtInfo, Qt::Key_Return);
                    QTest::keyClick(ui.txtInfo, Qt::Key_Return, Qt::ControlModifier);
                    QTest::keyClicks(ui.txtInfo, u"b"_s);
                    EXPECT_EQ(ui.txtInfo->toPlainText(), u"a\n\nb"_s);
                    app.write(u"gramaticas/Nombres de lugares.txt"_s, "[a]\r\n<c>\r\n");
                    boxes.expect();
                    QTest::mouseClick(ui.cmdGenerarNombre, Qt::LeftButton);
                    EXPECT_TRUE(boxes.asked().back().text.contains(u"«c»"_s));
                    EXPECT_EQ(ui.txtNombre->text(), u"Villa Blanca"_s);
                    frmInfoPin().hide();
                });
}

TEST_F(MapEditTest, AChangedMapIsAskedAboutBeforeItIsReplaced)
{
    using platform::MsgBox::Answer;
    setNombre(u"Prueba"_s);
    setChanged(true);
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        boxes.expect(answer);
        if (answer == Answer::No)
            duringModal([] { press(frmMapa().ui().nuevo); },
                        [] { frmMapProperties().window().close(); });
        else
            duringModal([] { press(frmMapa().ui().abrir); }, [] { frmListaArchivos().hide(); });
        EXPECT_EQ(boxes.asked().back().text, u"El mapa ha cambiado. ¿Desea guardarlo?"_s);
        EXPECT_EQ(boxes.asked().back().title, u"Advertencia"_s);
        EXPECT_EQ(QFile::exists(app.path(u"mapas/Prueba.map"_s)), answer == Answer::Yes);
    }
    EXPECT_FALSE(frmMapa().documento.mapaCambiado());
    duringModal([] { press(frmMapa().ui().abrir); }, [] { frmListaArchivos().hide(); });
}

TEST_F(MapEditTest, ANewMapTakesWhatThePropertiesSay)
{
    Ui::FrmMapProperties& dialog = frmMapProperties().ui();
    duringModal([] { press(frmMapa().ui().nuevo); },
                [&] {
                    EXPECT_EQ(dialog.lblZona->text(), u"90"_s);
                    boxes.expect();
                    QTest::mouseClick(dialog.cmdAceptar, Qt::LeftButton);
                    EXPECT_TRUE(boxes.asked().back().text.startsWith(u"No ha ingresado"_s));
                    dialog.txtNombre->setText(u"a/b"_s);
                    boxes.expect();
                    QTest::mouseClick(dialog.cmdAceptar, Qt::LeftButton);
                    EXPECT_TRUE(frmMapProperties().isVisible());
                    dialog.txtNombre->setText(u"Ávila"_s);
                    dialog.cmbAncho->setCurrentText(u"75"_s);
                    dialog.txtNotas->setPlainText(u"uno\n\u00A0dos"_s);
                    QTest::keyClick(dialog.txtNombre, Qt::Key_Return);
                });
    EXPECT_EQ(frmMapa().window().windowTitle(), u"Ávila"_s);
    EXPECT_EQ(frmMapa().mapa().mapaTiles.columns(), 75);
    EXPECT_EQ(frmMapa().mapa().mapaTiles.rows(), 50);
    EXPECT_EQ(frmMapa().mapa().latSur, -45);
    EXPECT_TRUE(frmMapa().documento.mapaCambiado());
    expectPixelsOfFullRedraw();

    alterMap([](WorldMap& map) { map.latNorte = 7; }); // not one of those offered
    for (const bool accepted : {false, true}) {
        duringModal([] { press(frmMapa().ui().propiedades); },
                    [&] {
                        EXPECT_EQ(frmMapa().mapa().notasMapa, u"uno\n\u00A0dos"_s);
                        EXPECT_EQ(dialog.cmbAncho->currentText(), u"75"_s);
                        EXPECT_FALSE(dialog.cmbAncho->isEnabled());
                        dialog.txtNombre->setText(u"Otra"_s);
                        if (accepted)
                            QTest::mouseClick(dialog.cmdAceptar, Qt::LeftButton);
                        else
                            frmMapProperties().window().close();
                    });
        EXPECT_EQ(frmMapa().mapa().nombre, accepted ? u"Otra"_s : u"Ávila"_s);
        EXPECT_EQ(frmMapa().mapa().latNorte, 7);
    }
}

TEST_F(MapEditTest, TheNorthStaysAboveTheSouth)
{
    Ui::FrmMapProperties& dialog = frmMapProperties().ui();
    const auto choose = [](QComboBox* list, const QString& latitude) {
        list->setCurrentIndex(list->findText(latitude));
    };
    choose(dialog.cmbLatitudSur, u"15"_s);
    EXPECT_EQ(dialog.lblZona->text(), u"30"_s);
    boxes.expect();
    choose(dialog.cmbLatitudNorte, u"15"_s);
    EXPECT_EQ(boxes.asked().back().text,
              u"No puede seleccionar una latitud norte menor que la latitud sur."_s);
    EXPECT_EQ(dialog.cmbLatitudNorte->currentText(), u"30"_s);
    EXPECT_EQ(dialog.lblZona->text(), u"15"_s);
    boxes.expect();
    choose(dialog.cmbLatitudSur, u"60"_s);
    EXPECT_EQ(boxes.asked().back().text,
              u"No puede seleccionar una latitud sur mayor que la latitud norte."_s);
    EXPECT_EQ(dialog.cmbLatitudSur->currentText(), u"15"_s);
    choose(dialog.cmbLatitudNorte, u"90"_s);
    choose(dialog.cmbLatitudSur, u"-90"_s);
    EXPECT_EQ(dialog.lblZona->text(), u"180"_s);

    // A map may have latitudes and sizes that the lists don't offer.
    frmMapProperties().setLatitudes(40, -10);
    frmMapProperties().setSize(1000, 2);
    EXPECT_EQ(dialog.lblZona->text(), u"50"_s);
    EXPECT_EQ(dialog.cmbAncho->currentText(), u"1000"_s);
    boxes.expect();
    choose(dialog.cmbLatitudNorte, u"-15"_s);
    EXPECT_EQ(dialog.cmbLatitudNorte->currentText(), u"15"_s);
    frmMapProperties().offerListedValues(); // 15 and -10
    EXPECT_EQ(dialog.cmbLatitudSur->findText(u"-10"_s), -1);
    EXPECT_EQ(dialog.cmbAncho->currentText(), u"50"_s);
    EXPECT_EQ(dialog.cmbLatitudNorte->currentText(), u"45"_s);
    EXPECT_EQ(dialog.cmbLatitudSur->currentText(), u"-45"_s);
    EXPECT_EQ(dialog.lblZona->text(), u"90"_s);
    frmMapProperties().setLatitudes(30, 0);
    frmMapProperties().setSize(75, 150);
    frmMapProperties().offerListedValues();
    EXPECT_EQ(dialog.lblZona->text(), u"30"_s);
    EXPECT_EQ(dialog.cmbAlto->currentText(), u"150"_s);

    // Latitudes of a map that leave no choice to the other list: a key ends in a pair that holds.
    struct Odd {
        int north, south;
    };
    for (const Odd map : {Odd{90, 80}, {100, 95}, {-80, -90}, {0, 90}, {-90, 90}, {0, 0}}) {
        for (QComboBox* const list : {dialog.cmbLatitudNorte, dialog.cmbLatitudSur}) {
            for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up}) {
                SCOPED_TRACE(map.north * 1000 + map.south);
                frmMapProperties().setLatitudes(map.north, map.south);
                const QString before = list->currentText();
                boxes.expect();
                QTest::keyClick(list, key);
                boxes.forgetAnswers();
                const int span = dialog.cmbLatitudNorte->currentText().toInt() -
                                 dialog.cmbLatitudSur->currentText().toInt();
                EXPECT_TRUE(span >= 15 || list->currentText() == before);
                EXPECT_EQ(dialog.lblZona->text(), QString::number(span));
            }
        }
    }
}

TEST_F(MapEditTest, WindowsFollowUndoAsAFullRedrawWould)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    frmMapa().newMapa({u"Ida y vuelta"_s, 0, 0, {}}, {14, 12});
    MapDocument& document = frmMapa().documento;
    const WorldMap& map = document.map();
    press(ui.tiles);
    press(ui.minimapa);
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 engine(seed);
        const auto below = [&](int limit) { return static_cast<int>(engine() % unsigned(limit)); };
        const auto anyCell = [&] { return QPoint(below(14), below(12)); };
        // Terrain under a place shows at the next full redraw only.
        const auto hasPlace = [&](QPoint cell) { return map.placeAt(cell) != nullptr; };
        const auto isBare = [&](const std::vector<QPoint>& cells) {
            return std::none_of(cells.begin(), cells.end(), hasPlace);
        };
        for (int edit = 0; edit < 6; ++edit) {
            const QPoint cell = anyCell();
            const QPoint other = anyCell();
            const QPoint place = map.mapaPines.empty() ? cell : map.mapaPines.begin()->first;
            choose(frmTiles().ui().lvTiles, below(30));
            const QString tile = frmTiles().selectedName();
            switch (below(9)) {
            case 0:
            case 1:
                if (!hasPlace(other)) // the end of a drag is a click, too
                    drag(inView(cell.x(), cell.y()), inView(other.x(), other.y()));
                break;
            case 2: {
                const QString name =
                    hasPlace(cell) ? map.placeAt(cell)->name : u"L%1"_s.arg(engine());
                document.setPlace(cell, {pinNames()[below(5)], name, QString::number(below(9))});
                break;
            }
            case 3:
                document.removePlace(place);
                break;
            case 4:
                document.movePlace(place, other);
                break;
            case 5:
                document.setPin(place, pinNames()[below(5)]);
                break;
            case 6:
                if (isBare(connectedArea(map, cell)))
                    document.fill(cell, tile);
                break;
            case 7:
                document.clear({cell, QSize(1 + below(14 - cell.x()), 1 + below(12 - cell.y()))},
                               tile);
                break;
            default:
                if (isBare(cellsAround(map, other, 6)))
                    document.paste(cutOut(map, {cell, QSize(4, 4)}), {other.x() & ~1, other.y()});
            }
            // Whatever is to be seen of the map meanwhile.
            ui.imgMapa->setWhole(below(6) == 0);
            ui.imgMapa->zoomBy(below(2) * below(6));
            ui.imgMapa->scrollBy({below(90), below(60)});
            for (int walk = below(4); walk > 0; --walk)
                action(below(2) == 0 ? u"deshacer"_s : u"rehacer"_s).trigger();
            ui.imgMapa->setZoom(1);
        }
        expectPixelsOfFullRedraw();
        ASSERT_EQ(frmMapa().lugares.count(), static_cast<int>(map.mapaPines.size()));
    }
    boxes.expect(platform::MsgBox::Answer::No);
    press(ui.generar);
    EXPECT_EQ(ui.menuBar->findChild<QMenu*>(u"menuEdición"_s)->actions().first()->text(),
              u"&Deshacer generar un mundo"_s);
    frmMapa().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frmMapa().window()));
    QTest::keySequence(&frmMapa().window(), QKeySequence(u"Ctrl+Z"_s));
    EXPECT_EQ(frmMapa().window().windowTitle(), u"Ida y vuelta"_s);
    EXPECT_EQ(frmMapa().mapa().ancho(), 14);
    expectPixelsOfFullRedraw();
}

TEST_F(MapEditTest, TheMinimapScrollsTheMap)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    frmMapa().newMapa({}, {100, 150});
    press(ui.minimapa);
    EXPECT_TRUE(frmMinimap().isVisible());
    platform::PictureBox& picture = *frmMinimap().ui().imgMinimap;
    QFrame& selector = *frmMinimap().ui().imgSelector;
    EXPECT_EQ(picture.height(), 177);
    EXPECT_EQ(picture.width(), qRound(177.0 * 1100 / 2107));
    EXPECT_NEAR(selector.width(), picture.width() * ui.imgMapa->width() / 1100.0, 1);

    const auto expectView = [&](QPoint first) {
        EXPECT_EQ(QPoint(frmMapa().currX, frmMapa().currY), first);
        const QImage shown = ui.imgMapa->grab().toImage();
        frmMapa().scrollMapa();
        EXPECT_EQ(shown, ui.imgMapa->grab().toImage());
    };
    QTest::mouseClick(&picture, Qt::LeftButton, {}, {1, 1});
    expectView({0, 0});
    const auto wantedAt = [&](QPoint position) {
        const double left = position.x() - picture.width() * ui.imgMapa->width() / 2200.0;
        const double top = position.y() - 177.0 * ui.imgMapa->height() / 4214.0;
        const int column = qRound(left * 100 / picture.width());
        return QPoint(column + column % 2, qRound(top * 150 / 177));
    };
    for (const QPoint position : {QPoint(35, 80), QPoint(40, 90), QPoint(37, 61)}) {
        QTest::mouseClick(&picture, Qt::LeftButton, {}, position);
        expectView(wantedAt(position));
        EXPECT_EQ(frmMapa().currX % 2, 0);
        frmMapa().drawMinimap(); // the selector shows the view
        EXPECT_EQ(selector.pos(), QPoint(frmMapa().currX * picture.width() / 100,
                                         frmMapa().currY * picture.height() / 150));
    }
    QMouseEvent move(QEvent::MouseMove, QPointF(36, 100), picture.mapToGlobal(QPointF(36, 100)),
                     Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&picture, &move);
    expectView(wantedAt({36, 100}));
    frmMinimap().window().close();
    EXPECT_FALSE(ui.minimapa->isChecked());
}

TEST_F(MapEditTest, ADoubleClickOnAPlaceBringsItIntoView)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    frmMapa().newMapa({}, {150, 150});
    alterMap([](WorldMap& map) {
        for (const QPoint cell : {QPoint(0, 0), QPoint(75, 80), QPoint(149, 149), QPoint(149, 3)})
            map.mapaPines[cell] = {u"Aldea"_s, u"Lugar %1 %2"_s.arg(cell.x()).arg(cell.y()), {}};
    });
    for (int i = 0; i < frmMapa().lugares.count(); ++i) {
        const platform::ListItem& place = frmMapa().lugares.at(i);
        SCOPED_TRACE(place.text().toStdString());
        const QRect row = ui.lvLugares->visualRect(ui.lvLugares->model()->index(i, 0));
        QTest::mouseClick(ui.lvLugares->viewport(), Qt::LeftButton, {}, row.center());
        QTest::mouseDClick(ui.lvLugares->viewport(), Qt::LeftButton, {}, row.center());
        EXPECT_EQ(frmMapa().currX % 2, 0);
        const QPoint inView = hex::cellOrigin(place.subItem(u"x"_s).toInt() - frmMapa().currX,
                                              place.subItem(u"y"_s).toInt() - frmMapa().currY);
        EXPECT_TRUE(ui.imgMapa->rect().contains(inView));
        EXPECT_TRUE(ui.lblLocation->isVisible());
        EXPECT_EQ(ui.lblLocation->text(), place.text());
        EXPECT_GE(ui.lblLocation->width(), ui.lblLocation->sizeHint().width());
        EXPECT_GE(ui.lblLocation->contentsRect().height(), ui.lblLocation->fontMetrics().ascent());
        EXPECT_EQ(ui.lblLocation->margin(), 0) << "would clip the text above and below";
        EXPECT_TRUE(ui.imgMapa->rect().contains(
            ui.imgLocationLeft->geometry().united(ui.imgLocationRight->geometry()) &
            QRect(-9999, inView.y(), 99999, 1)));
    }
    EXPECT_EQ(frmMapa().lugares.at(0).text(), u"Lugar 0 0"_s);
    frmMapa().scrollMapa();
    EXPECT_FALSE(ui.lblLocation->isVisible());
    EXPECT_FALSE(ui.imgLocationLeft->isVisible());
}

TEST_F(MapEditTest, AWholeEveningsWorkEndsInTheFile)
{
    Ui::FrmMapa& ui = frmMapa().ui();
    Ui::FrmMapProperties& properties = frmMapProperties().ui();
    duringModal([&] { press(ui.nuevo); },
                [&] {
                    QTest::mouseClick(properties.cmdGenerarNombre, Qt::LeftButton);
                    properties.cmbAncho->setCurrentText(u"100"_s);
                    properties.cmbAlto->setCurrentText(u"75"_s);
                    QTest::mouseClick(properties.cmdAceptar, Qt::LeftButton);
                });
    const QString name = frmMapa().mapa().nombre;
    ASSERT_FALSE(name.isEmpty());
    EXPECT_EQ(ui.lblNombre->text(), name);

    press(ui.tiles);
    choose(frmTiles().ui().lvTiles, 4);
    const QString tile = frmTiles().selectedName();
    click(2, 2);
    drag(inView(10, 10), inView(30, 20));
    press(ui.tiles);
    press(ui.pines);
    setPlace(10, 10, u"Soto"_s, u"una línea\ny otra"_s);
    setPlace(4, 20, u"Vado"_s, {});
    setPlace(30, 3, u"Risco"_s, u"nido de águilas"_s);
    setPlace(4, 20, u"Vado Viejo"_s, {});
    press(ui.minimapa);
    QTest::mouseClick(frmMinimap().ui().imgMinimap, Qt::LeftButton, {}, QPoint(170, 120));
    EXPECT_GT(frmMapa().currX, 0);
    const QModelIndex vado = ui.lvLugares->model()->index(2, 0);
    QTest::mouseDClick(ui.lvLugares->viewport(), Qt::LeftButton, {},
                       ui.lvLugares->visualRect(vado).center());
    press(ui.guardar);
    EXPECT_FALSE(frmMapa().documento.mapaCambiado());

    const WorldMap saved = frmMapa().mapa();
    const QByteArray file = app.read(u"mapas/%1.map"_s.arg(name));
    EXPECT_EQ(file.count('|'), 3);
    EXPECT_TRUE(file.contains("20;4;"));
    EXPECT_TRUE(file.contains(";Vado Viejo;|"));
    frmMapa().newMapa({u"Otro"_s, 0, 0, {}}, {50, 50});
    setChanged(false);
    duringModal([&] { press(ui.abrir); },
                [&] {
                    platform::IconView& list = *frmListaArchivos().ui().lvListaArchivos;
                    for (int row = 0; row < list.model()->rowCount(); ++row) {
                        const QModelIndex entry = list.model()->index(row, 0);
                        if (entry.data().toString().startsWith(name))
                            list.setCurrentIndex(entry);
                    }
                    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {},
                                       list.visualRect(list.currentIndex()).center());
                });
    EXPECT_EQ(frmMapa().mapa().nombre, name);
    EXPECT_EQ(frmMapa().mapa().mapaTiles, saved.mapaTiles);
    EXPECT_EQ(frmMapa().mapa().mapaPines, saved.mapaPines);
    EXPECT_EQ(frmMapa().mapa().mapaTiles(15, 20), tile) << "on the way that was dragged";
    EXPECT_EQ(frmMapa().lugares.count(), 3);
    EXPECT_EQ(frmMapa().accion, NoEditing);
    expectPixelsOfFullRedraw();
}
