// A random walk over all windows: clicks, drags, keys and pasted texts on every control that can be
// seen, in no order. After each action the documents are what it should have made of them, now and
// then the pixels are those of a full redraw, and what is saved is read again.
// KESTRUNE_WALK_ACTIONS and KESTRUNE_WALK_SEED choose another walk; with a seed, each step is told.
#include "app/frmAbout.h"
#include "app/start.h"
#include "catalogue/frmPrinc.h"
#include "platform/core/random_source.h"
#include "platform/forms/text_guard.h"
#include "random_use.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmMapa.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_file.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <iostream>
#include <map>

using namespace Qt::StringLiterals;

namespace {

using Rows = QList<QStringList>;

/// A world map as its user knows it.
struct Document {
    QString name;
    QString notes;
    int north = 0;
    int south = 0;
    platform::Grid<QString> tiles;
    std::map<std::pair<int, int>, QStringList> places; ///< pin, name, notes; by row and column
};

// These four alone know how the program holds its map.

Document documentOf(const WorldMap& map)
{
    Document document{map.nombre, map.notasMapa, map.latNorte, map.latSur, map.mapaTiles, {}};
    for (const auto& [cell, place] : map.mapaPines)
        document.places[{cell.y(), cell.x()}] = {place.pin, place.name, place.notes};
    return document;
}

Document documentIn(const QString& file)
{
    return documentOf(readDrawableMap(platform::readTextFile(file), workspace().pictures));
}

QPoint firstCell()
{
    return {frmMapa().currX, frmMapa().currY};
}

QImage drawnAnew()
{
    MapCanvas canvas(workspace().pictures);
    canvas.crearBuffer(frmMapa().mapa().ancho(), frmMapa().mapa().alto());
    canvas.renderMapa(frmMapa().mapa());
    return canvas.hdcBuffer.image();
}

void expectEqual(const Document& one, const Document& other)
{
    EXPECT_EQ(one.name, other.name);
    EXPECT_EQ(one.notes, other.notes);
    EXPECT_EQ(std::pair(one.north, one.south), std::pair(other.north, other.south));
    EXPECT_TRUE(one.tiles == other.tiles);
    EXPECT_EQ(one.places, other.places);
}

/// What a control shows, without those that lie over it and without outlines and marks.
QImage pixels(QWidget* control)
{
    if (auto* const view = qobject_cast<MapView*>(control))
        return view->dc().image().copy();
    QImage image(control->size(), QImage::Format_RGB32);
    control->render(&image, {}, {}, QWidget::DrawWindowBackground);
    return image;
}

/// The texts of a list, as they are shown.
Rows rowsOf(const QAbstractItemModel& list)
{
    Rows rows;
    for (int row = 0; row < list.rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 0; column < list.columnCount(); ++column)
            rows.back().append(list.index(row, column).data().toString());
    }
    return rows;
}

Rows without(Rows rows, const Rows& some)
{
    for (const QStringList& row : some)
        rows.removeOne(row);
    return rows;
}

QStringList sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

/// Everything that a form's boxes say, sorted.
QStringList textsOf(const QWidget& form)
{
    QStringList texts;
    for (const QWidget* const control : form.findChildren<QWidget*>()) {
        if (const auto* const line = qobject_cast<const QLineEdit*>(control))
            texts.append(line->text());
        else if (const auto* const notes = qobject_cast<const QPlainTextEdit*>(control))
            texts.append(platform::textOf(*notes));
        else if (const auto* const box = qobject_cast<const QComboBox*>(control))
            texts.append(box->currentText());
        else if (const auto* const mark = qobject_cast<const QCheckBox*>(control))
            texts.append(mark->isChecked() ? u"Sí"_s : u"No"_s);
    }
    return sorted(texts);
}

const QStringList catalogueLists{u"lvArmas"_s, u"lvArmaduras"_s, u"lvEquipo"_s, u"lvConjuros"_s};

/// What may be said to the user, by how it begins; anything else is a fault.
const QStringList saidAtTimes{
    u"El mapa ha cambiado. ¿Desea guardarlo?"_s,
    u"Debe ingresar un nombre para el mapa"_s,
    u"Ya hay un lugar con ese nombre."_s,
    u"No ha ingresado un nombre para el mapa."_s,
    u"El mapa no puede llamarse así: "_s,
    u"No puede seleccionar una latitud "_s,
    u"No hay ningún elemento seleccionado"_s, // after a click beside the rows of a palette
    u"El mapa no tiene latitudes distintas"_s,
    u"El tile «» de la casilla "_s, // before there is a map
    u"mapas/Rota.map, línea 6: "_s,
    u"Está por eliminar '"_s,
    u"Debe ingresar el nombre del "_s,
    u"Ya existe un "_s,
    u"Error "_s}; // of an item that another editor renamed or took away

class RandomWalkTest : public RandomUse
{
protected:
    RandomWalkTest()
    {
        // Besides the shipped maps, tiny and narrow ones, and one that can't be read.
        const auto write = [this](const QString& name, int rows, int columns,
                                  const QByteArray& places) {
            app.write(u"mapas/%1.map"_s.arg(name),
                      name.toLatin1() + "\r\n" + QByteArray::number(rows) + ';' +
                          QByteArray::number(columns) + "\r\n80;-7\r\nuno\xB6 dos\r\n" +
                          QByteArray("M2;").repeated(rows * columns) + "\r\n" + places + "\r\n");
        };
        write(u"Uno"_s, 1, 1, {});
        write(u"Tira"_s, 3, 60, "2;59;Aldea;Fin;\xB6|");
        write(u"Torre"_s, 70, 2, "0;1;Aldea;A;b|1;1;Aldea;B;|");
        write(u"Rota"_s, 2, 2, "0;7;Aldea;Lejos;|");
    }

    void walk(int actions, unsigned seed)
    {
        tells_ = qEnvironmentVariableIsSet("KESTRUNE_WALK_SEED");
        engine_.seed(seed);
        duringModal(Main, [] { frmAbout().window().close(); });
        platform::randomSource().seed(seed);
        expected_ = documentOf(frmMapa().mapa());
        for (const QString& list : catalogueLists)
            rows_.append(rowsOf(*in<QAbstractItemView>(u"frmPrinc"_s, list)->model()));
        QTimer dialogs;
        QObject::connect(&dialogs, &QTimer::timeout, [this] { actInDialog(); });
        dialogs.start(0);
        for (int i = 0; i < actions && !HasFailure(); ++i)
            act();
        std::cout << log_.size() << " steps, " << comparisons_ << " comparisons, " << saves_
                  << " saves\n";
        if (!HasFailure()) {
            EXPECT_GT(comparisons_, actions / 60);
            EXPECT_GT(saves_, actions / 60);
            return;
        }
        std::cerr << "seed " << seed << ", step " << log_.size() << "; the last ones:\n";
        for (const QString& step : log_.last(std::min(qsizetype{40}, log_.size())))
            std::cerr << step.left(200).toStdString() << '\n';
    }

private:
    /// The key of the item selected in a palette, or nothing.
    static QString chosen(const QString& form, const QString& list)
    {
        const QModelIndexList rows =
            in<QAbstractItemView>(form, list)->selectionModel()->selectedRows();
        return rows.isEmpty() ? QString()
                              : rows.first().data(platform::ListItems::KeyRole).toString();
    }
    bool isOnMap(QPoint cell) const
    {
        return cell.x() >= firstCell().x() && cell.y() >= firstCell().y() &&
               expected_.tiles.contains(cell.y(), cell.x());
    }
    bool wasAsked(const QString& begin) const
    {
        return std::any_of(boxes.asked().begin() + asked_, boxes.asked().end(),
                           [&](const auto& box) { return box.text.startsWith(begin); });
    }

    void act()
    {
        QWidgetList forms;
        for (QWidget* const form : QApplication::topLevelWidgets()) {
            if (form->isVisible() && form->objectName().startsWith(u"frm"_s))
                forms.append(form);
        }
        // In the order in which they were made, which is the same in every walk of a seed.
        std::sort(forms.begin(), forms.end(),
                  [](const QWidget* a, const QWidget* b) { return a->winId() < b->winId(); });
        QWidget* const map = window(u"frmMapa"_s);
        QWidget& form = oneIn(3) ? *map : *anyOf(forms);

        asked_ = static_cast<std::ptrdiff_t>(boxes.asked().size());
        answersYes_ = oneIn(2);
        for (int i = 0; i < 100; ++i) // more than any action asks
            boxes.expect(answersYes_ ? platform::MsgBox::Answer::Yes
                                     : platform::MsgBox::Answer::No);
        dialog_.clear();
        use(form);
        boxes.forgetAnswers();
        if (&form != map)
            expectRows(form);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        expectShown();
        if (oneIn(12) && !isStale_)
            expectFullRedraw();
    }

    /// The next step in a modal window, while there is one.
    void actInDialog()
    {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        if (dialog_.isEmpty())
            dialog_ = textsOf(*dialog) + QStringList(dialog->objectName());
        use(*dialog);
    }

    void pressed(const QString& form, const QString& button) override
    {
        if (form == u"frmMapa"_s) // those of the empty view are named by their command, too
            expectCommand(button.startsWith(u"cmd"_s) ? button.sliced(3).toLower() : button);
        else if (form == u"frmPrinc"_s && button.startsWith(u"cmdGuardar"_s))
            expectSavedRows(button);
    }

    /// Of a button of the map window.
    void expectCommand(const QString& button)
    {
        if (wasAsked(u"El mapa ha cambiado."_s) && answersYes_ && !expected_.name.isEmpty())
            expectSaved(expected_);
        const QString dialog = u"frmMapProperties"_s;
        const auto number = [&](const QString& list) {
            return in<QComboBox>(dialog, list)->currentText();
        };
        if (button == u"propiedades"_s) {
            const Document& d = expected_;
            EXPECT_EQ(dialog_, sorted({d.name, d.notes, QString::number(d.north),
                                       QString::number(d.south), QString::number(d.tiles.rows()),
                                       QString::number(d.tiles.columns())}) +
                                   QStringList(dialog));
        }
        const QString tile = chosen(u"frmTiles"_s, u"lvTiles"_s);
        const QString& last = log_.back();
        const bool isAccepted = last == u"frmMapProperties cmdAceptar click"_s ||
                                (last.startsWith(dialog + u' ') && last.endsWith(u" Return"_s) &&
                                 !last.contains(u"cmdCancelar"_s)); // Enter presses "Aceptar"
        if (isAccepted && (button == u"propiedades"_s || !tile.isEmpty())) {
            expected_.name = in<QLineEdit>(dialog, u"txtNombre"_s)->text();
            expected_.notes = platform::textOf(*in<QPlainTextEdit>(dialog, u"txtNotas"_s));
            expected_.north = number(u"cmbLatitudNorte"_s).toInt();
            expected_.south = number(u"cmbLatitudSur"_s).toInt();
            if (button == u"nuevo"_s) {
                expected_.tiles = platform::Grid<QString>(number(u"cmbAlto"_s).toInt(),
                                                          number(u"cmbAncho"_s).toInt(), tile);
                expected_.places.clear();
                isStale_ = false;
            }
        }
        const QString file = frmListaArchivos().caminoArchivo;
        if (button == u"abrir"_s && !file.isEmpty() && !file.endsWith(u"/Rota.map"_s)) {
            expected_ = documentIn(file);
            isStale_ = false;
        } else if (button == u"generar"_s) {
            const Document world = documentOf(frmMapa().mapa());
            EXPECT_FALSE(world.name.isEmpty());
            EXPECT_EQ(world.tiles.rows(), expected_.tiles.rows());
            EXPECT_EQ(world.tiles.columns(), expected_.tiles.columns());
            EXPECT_EQ(world.notes, expected_.notes);
            expected_ = world;
            isStale_ = false;
        } else if (button == u"guardar"_s) {
            EXPECT_EQ(wasAsked(u"Debe ingresar un nombre"_s), expected_.name.isEmpty());
            if (!expected_.name.isEmpty())
                expectSaved(expected_);
        }
    }

    void usedMap(QWidget& map, const QList<QPoint>& way, Qt::MouseButton button) override
    {
        if (map.window()->objectName() != u"frmMapa"_s)
            return;
        const QPoint cell = hex::cellAt(way.back()) + firstCell();
        const bool isClick = button == Qt::LeftButton && map.rect().contains(way.back());
        EXPECT_EQ(in<QLabel>(u"frmMapa"_s, u"lblPosicion"_s)->text(),
                  u"X:%1 Y:%2"_s.arg(cell.x()).arg(cell.y()));
        if (frmMapa().accion == DrawRoads)
            isStale_ = true;
        else if (frmMapa().accion == PaintTiles && button == Qt::LeftButton)
            expectPainted(way, isClick);
        else if (frmMapa().accion == SetPlaces && isClick && isOnMap(cell))
            expectPlace(hex::cellAt(way.front()) + firstCell(), cell);
        const auto place = expected_.places.find({cell.y(), cell.x()});
        const bool isPlace = isOnMap(cell) && place != expected_.places.end();
        EXPECT_EQ(map.toolTip(), isPlace ? place->second[1] : QString());
    }

    /// Keys and the menu of a place change places, too; the document is taken at its word.
    void usedKey(const QWidget& form) override
    {
        static const QStringList forms{u"frmMapa"_s, u"frmTiles"_s, u"frmPines"_s, u"frmMinimap"_s};
        if (!forms.contains(form.objectName()))
            return;
        expected_ = documentOf(frmMapa().mapa());
        dialog_.clear();
    }

    /// Every cell on the way has the chosen tile; a place spares its cell from a drag.
    void expectPainted(const QList<QPoint>& way, bool endsInClick)
    {
        const QString tile = chosen(u"frmTiles"_s, u"lvTiles"_s);
        const auto paint = [&](QPoint point, bool isClick) {
            const QPoint cell = hex::cellAt(point) + firstCell();
            const bool isPlace = expected_.places.contains({cell.y(), cell.x()});
            if (tile.isEmpty() || !isOnMap(cell) || (isPlace && !isClick))
                return;
            isStale_ = isStale_ || (isPlace && expected_.tiles(cell.y(), cell.x()) != tile);
            expected_.tiles(cell.y(), cell.x()) = tile;
        };
        QPoint from = way.front();
        for (const QPoint to : way) {
            const QPoint all = to - from;
            const int steps = std::max({1, std::abs(all.x()), std::abs(all.y())});
            for (int step = 0; step <= steps; ++step)
                paint(from + all * step / steps, false);
            from = to;
        }
        if (endsInClick)
            paint(way.back(), true);
    }

    /// Of a click in a cell while places are set, or a place that was dragged there.
    void expectPlace(QPoint from, QPoint cell)
    {
        const std::pair at(cell.y(), cell.x());
        const bool isNew = !expected_.places.contains(at);
        const std::pair pressed(from.y(), from.x());
        if (from != cell && expected_.places.contains(pressed)) {
            const QStringList dragged = expected_.places.extract(pressed).mapped();
            expected_.places[isNew ? at : pressed] = dragged;
            return;
        }
        const QString form = u"frmInfoPin"_s;
        const QString pin =
            isNew ? chosen(u"frmPines"_s, u"lvPines"_s) : expected_.places[at].front();
        if (pin.isEmpty())
            return;
        EXPECT_EQ(dialog_,
                  (isNew ? QStringList({{}, {}}) : sorted(expected_.places[at].sliced(1))) +
                      QStringList(form));
        dialog_.clear();
        const QString name = in<QLineEdit>(form, u"txtNombre"_s)->text();
        if (log_.back().endsWith(u" Esc"_s) && !name.isEmpty())
            expected_.places[at] = {pin, name,
                                    platform::textOf(*in<QPlainTextEdit>(form, u"txtInfo"_s))};
    }

    void expectSaved(const Document& document)
    {
        ++saves_;
        try {
            expectEqual(documentIn(app.path(u"mapas/%1.map"_s.arg(document.name))), document);
        } catch (const platform::Error& error) {
            ADD_FAILURE() << error.what();
        }
    }

    /// Of a window: an editor leaves at most one row changed, and it is what its boxes say; the
    /// catalogue window at most takes away the item it asked about.
    void expectRows(const QWidget& form)
    {
        static const QRegularExpression saving(u"(cmdGuardar click| Return| Enter)$"_s);
        const bool isSaved =
            form.findChild<QLineEdit*>(u"txtImagen"_s) && log_.back().contains(saving);
        const QStringList said = isSaved ? textsOf(form) : QStringList();
        bool isListed = !isSaved || form.isVisible();
        QStringList taken;
        for (qsizetype i = 0; i < rows_.size(); ++i) {
            const Rows now =
                rowsOf(*in<QAbstractItemView>(u"frmPrinc"_s, catalogueLists[i])->model());
            const Rows more = without(now, rows_[i]);
            const Rows less = without(rows_[i], now);
            EXPECT_LE(more.size(), isSaved ? 1 : 0);
            for (const QStringList& row : more)
                EXPECT_EQ(sorted(row), said);
            for (const QStringList& row : less.mid(more.size()))
                taken.append(u"Está por eliminar '%1'"_s.arg(row.front()));
            for (const QStringList& row : isListed ? Rows() : now)
                isListed = isListed || sorted(row) == said;
            rows_[i] = now;
        }
        EXPECT_EQ(taken.size(), wasAsked(u"Está por eliminar"_s) && answersYes_ ? 1 : 0);
        EXPECT_TRUE(taken.isEmpty() || wasAsked(taken.front()));
        EXPECT_TRUE(isListed) << "what was said isn't listed";
    }

    void expectSavedRows(const QString& button)
    {
        ++saves_;
        for (CatalogueDocument* const shown : workspace.catalogues()) {
            if (button != u"cmdGuardar"_s + shown->kind().file.section(u'.', 0, 0))
                continue;
            Catalogue read(shown->kind());
            read.items.setColumns(shown->kind().fields);
            try {
                loadCatalogue(read);
            } catch (const platform::Error& error) {
                ADD_FAILURE() << error.what();
            }
            EXPECT_EQ(rowsOf(read.items), rowsOf(shown->items()));
        }
    }

    /// What holds between any two actions.
    void expectShown()
    {
        for (auto box = boxes.asked().begin() + asked_; box != boxes.asked().end(); ++box)
            EXPECT_TRUE(std::any_of(saidAtTimes.begin(), saidAtTimes.end(), [&](const auto& begin) {
                return box->text.startsWith(begin);
            })) << box->text.toStdString();
        expectEqual(documentOf(frmMapa().mapa()), expected_);
        const QString map = u"frmMapa"_s;
        EXPECT_EQ(in<QLabel>(map, u"lblNombre"_s)->text(), expected_.name);
        EXPECT_EQ(window(map)->windowTitle(),
                  expected_.name.isEmpty() ? u"Kestrune"_s : expected_.name);
        Rows places = rowsOf(*in<QAbstractItemView>(map, u"lvLugares"_s)->model());
        for (const auto& [cell, place] : expected_.places)
            EXPECT_TRUE(places.removeOne(
                {place[1], place[2], QString::number(cell.second), QString::number(cell.first)}))
                << place[1].toStdString() << " isn't listed";
        EXPECT_TRUE(places.isEmpty());

        EXPECT_EQ(firstCell().x() % 2, 0);
        EXPECT_TRUE(isOnMap(firstCell()));
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        const QString local = u"frmMapaLocal"_s;
        EXPECT_EQ(isShown(u"frmTiles"_s), isOn(map, u"tiles"_s));
        EXPECT_EQ(isShown(u"frmPines"_s), isOn(map, u"pines"_s));
        EXPECT_EQ(isShown(u"frmTilesLocales"_s), isOn(local, u"tiles"_s));
        EXPECT_EQ(isShown(u"frmMinimap"_s), isOn(map, u"minimapa"_s) || isOn(local, u"minimapa"_s));
        EXPECT_FALSE(isOn(map, u"minimapa"_s) && isOn(local, u"minimapa"_s));
    }

    void expectFullRedraw()
    {
        ++comparisons_;
        const QImage whole = drawnAnew();
        QWidget* const view = in(u"frmMapa"_s, u"imgMapa"_s);
        QImage part(view->size(), QImage::Format_RGB32);
        part.fill(qRgb(0x24, 0x22, 0x20));
        QPainter(&part).drawImage(-hex::cellOrigin(firstCell().x(), firstCell().y()), whole);
        EXPECT_EQ(pixels(view), part);
        if (!isOn(u"frmMapa"_s, u"minimapa"_s))
            return;
        QWidget* const minimap = in(u"frmMinimap"_s, u"imgMinimap"_s);
        platform::MemoryDC reduced(minimap->width(), minimap->height());
        const QSize size = hex::mapSize(frmMapa().mapa().ancho(), frmMapa().mapa().alto());
        reduced.StretchBlt(0, 0, minimap->width(), minimap->height(), platform::MemoryDC(whole), 0,
                           0, size.width(), size.height(), platform::RasterOp::SRCCOPY);
        EXPECT_EQ(pixels(minimap), reduced.image());
    }

    std::ptrdiff_t asked_ = 0; ///< boxes before the action
    bool answersYes_ = false;
    QStringList dialog_;   ///< what the modal window of this action said at first, and its name
    bool isStale_ = false; ///< a road, or terrain under a place, waits for the next full redraw
    int comparisons_ = 0;
    int saves_ = 0;
    Document expected_;
    QList<Rows> rows_; ///< of the catalogues
};

int numberFrom(const char* variable, int otherwise)
{
    return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariableIntValue(variable) : otherwise;
}

} // namespace

TEST_F(RandomWalkTest, WhatIsSavedIsWhatTheWindowsShowed)
{
    walk(numberFrom("KESTRUNE_WALK_ACTIONS", 400),
         static_cast<unsigned>(numberFrom("KESTRUNE_WALK_SEED", 1)));
}
