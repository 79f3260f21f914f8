#include "app/frmAbout.h"
#include "app/procs_windows.h"
#include "catalogue/frmProgreso.h"
#include "platform/forms/application.h"
#include "platform/forms/list_view.h"
#include "platform/forms/placement.h"
#include "platform/forms/text_guard.h"
#include "platform/forms/twips.h"
#include "window_test.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmTiles.h"

#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QWindow>

using namespace Qt::StringLiterals;
using platform::endProgram;
using platform::Error;
using platform::ErrorNumber;
namespace MsgBox = platform::MsgBox;

namespace {

/// A window with counters, on the design of a real one.
template <typename Form>
class CountingForm final : public Form
{
public:
    int loads = 0;
    int unloads = 0;
    std::function<void()> onLoad;

protected:
    void Form_Load() override
    {
        ++loads;
        if (onLoad)
            onLoad();
    }
    void Form_Unload() override { ++unloads; }
};
using Counting = CountingForm<platform::Form<Ui::FrmProgreso>>;
using CountingDialog = CountingForm<platform::Dialog<Ui::FrmListaArchivos>>;

} // namespace

using FormTest = WindowTest;

TEST_F(FormTest, TouchingAControlLoadsWithoutShowing)
{
    Counting form;
    EXPECT_FALSE(form.isLoaded());
    form.ui().pbProgreso->setValue(40);
    EXPECT_TRUE(form.isLoaded());
    EXPECT_FALSE(form.isVisible());
    form.show();
    form.hide();
    EXPECT_EQ(form.ui().pbProgreso->value(), 40) << "hiding keeps the contents";
    form.show();
    const QPointer<QWidget> window = &form.window();
    window->close();
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(form.unloads, 1);
    EXPECT_TRUE(window) << "destroyed inside its own close event";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window);
    EXPECT_EQ(form.ui().pbProgreso->value(), 0) << "the next touch loads it afresh";
    EXPECT_EQ(form.loads, 2);
}

TEST_F(FormTest, AModalWindowIsADialogAndReturnsWhenHiddenOrUnloaded)
{
    Counting owner;
    owner.show();
    QApplication::setActiveWindow(&owner.window());
    CountingDialog form;
    duringModal([&] { form.showModal(); },
                [&] {
                    QWidget& dialog = form.window();
                    EXPECT_EQ(QApplication::activeModalWidget(), &dialog);
                    EXPECT_TRUE(qobject_cast<QDialog*>(&dialog));
                    EXPECT_EQ(dialog.windowHandle()->transientParent(),
                              owner.window().windowHandle());
                    EXPECT_TRUE(dialog.windowFlags() & Qt::WindowStaysOnTopHint);
                    CountingDialog above;
                    QObject::connect(above.ui().cmdCancelar, &QPushButton::clicked, &above.window(),
                                     [&] { above.hide(); });
                    duringModal([&] { above.showModal(); },
                                [&] {
                                    EXPECT_EQ(QApplication::activeModalWidget(), &above.window());
                                    QWidget* const button = above.ui().cmdCancelar;
                                    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
                                    QCoreApplication::sendEvent(button, &held);
                                    EXPECT_TRUE(above.isVisible());
                                    QTest::keyClick(button, Qt::Key_Return);
                                });
                    EXPECT_TRUE(above.isLoaded());
                    EXPECT_TRUE(form.isVisible());
                    form.hide();
                });
    EXPECT_TRUE(form.isLoaded());
    duringModal([&] { form.showModal(); }, [&] { form.unload(); });
    EXPECT_FALSE(form.isLoaded());
    QTimer::singleShot(0, qApp, [&] { duringModal([&] { form.showModal(); }, endProgram); });
    EXPECT_EQ(QApplication::exec(), 0) << "a dialog doesn't keep the program from ending";
    form.unload();
    form.onLoad = [] { throw Error(ErrorNumber::BadFormat, u"roto"_s); };
    EXPECT_THROW(form.ui(), Error);
    EXPECT_THROW(form.showModal(), Error);
    EXPECT_FALSE(form.isLoaded()) << "a window whose loading failed isn't there";
    form.onLoad = {};
    form.show();
    form.hide();
}

TEST_F(FormTest, SharedInstancesKeepTheirVariablesAcrossUnloading)
{
    FrmListaArchivos& list = frmListaArchivos();
    list.camino = u"mapas"_s;
    list.ui();
    list.unload();
    EXPECT_EQ(&frmListaArchivos(), &list);
    EXPECT_EQ(frmListaArchivos().camino, u"mapas"_s);
}

TEST_F(FormTest, NoExceptionCrossesTheEventLoop)
{
    struct Receiver final : QObject {
        std::function<void()> fault;
        bool event(QEvent* /*event*/) override
        {
            fault();
            return true;
        }
    } receiver;
    std::function<void()>& fault = receiver.fault;
    const auto expectBox = [&](const QString& text) {
        boxes.expect();
        QEvent event(QEvent::User);
        QCoreApplication::sendEvent(&receiver, &event);
        EXPECT_EQ(boxes.asked().back().text, text);
        EXPECT_EQ(boxes.asked().back().title, u"Error"_s);
    };
    fault = [] { throw Error(ErrorNumber::BadFormat, u"línea 3: mal"_s); };
    expectBox(u"línea 3: mal"_s);
    fault = [] { throw std::bad_alloc(); };
    expectBox(u"No queda memoria para esta operación."_s);
    fault = [] { throw std::runtime_error("otra cosa"); };
    expectBox(u"otra cosa"_s);
}

TEST(MsgBoxTest, ShowsARealMessageBoxWithSpanishButtons)
{
    const auto answerWith = [](QMessageBox::StandardButton button, MsgBox::Buttons buttons) {
        QTimer::singleShot(0, qApp, [button] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            EXPECT_EQ(box->text(), u"¿<b>Seguro</b>?"_s);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->windowTitle(), u"Advertencia"_s);
            EXPECT_EQ(box->icon(), QMessageBox::Question);
            if (button == QMessageBox::NoButton || box->button(QMessageBox::No)) {
                QTest::keyClick(box, Qt::Key_Escape); // no answer to a question
                box->close();
            }
            if (box->isVisible())
                QTest::mouseClick(box->button(button), Qt::LeftButton);
        });
        return MsgBox::show(u"¿<b>Seguro</b>?"_s, u"Advertencia"_s, MsgBox::Icon::Question,
                            buttons);
    };
    EXPECT_EQ(answerWith(QMessageBox::Yes, MsgBox::Buttons::YesNo), MsgBox::Answer::Yes);
    EXPECT_EQ(answerWith(QMessageBox::No, MsgBox::Buttons::YesNo), MsgBox::Answer::No);
    EXPECT_EQ(answerWith(QMessageBox::Ok, MsgBox::Buttons::Ok), MsgBox::Answer::Ok);
    EXPECT_EQ(answerWith(QMessageBox::NoButton, MsgBox::Buttons::Ok), MsgBox::Answer::Ok);
}

TEST(Placement, ToolsOpenBesideTheMapAndOnTheScreen)
{
    using platform::besideMap;
    const QRect map(100, 150, 700, 600);
    const QRect owner(90, 40, 1060, 760);
    const QSize tool(400, 300);
    // Right of the window, left of it, or over what stands beside the map, made narrower if need
    // be.
    EXPECT_EQ(besideMap(tool, map, owner, {0, 0, 1800, 1000}, 0), QRect(QPoint(1150, 150), tool));
    EXPECT_EQ(besideMap(tool, map, owner, {-400, 0, 1600, 1000}, 1),
              QRect(QPoint(-310, 450), tool));
    EXPECT_EQ(besideMap(tool, map, owner, {0, 0, 1300, 1000}, 0), QRect(QPoint(800, 150), tool));
    EXPECT_EQ(besideMap(tool, map, owner, {0, 0, 1150, 1000}, 0), QRect(800, 150, 350, 300));
    EXPECT_EQ(besideMap(tool, map, owner, {0, 0, 900, 400}, 0.5), QRect(640, 150, 260, 250));
}

TEST_F(FormTest, ComesBackOntoTheScreen)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (const QPoint wanted : {QPoint(9000, 9000), QPoint(-9000, -9000)}) {
        frmTiles().moveTo(wanted);
        EXPECT_TRUE(screen.contains(QRect(frmTiles().window().pos(), frmTiles().window().size())));
    }
    frmTiles().window().showMinimized();
    frmTiles().show();
    EXPECT_FALSE(frmTiles().window().isMinimized());
}

TEST_F(FormTest, AClickOnAHeaderSortsAscendingEveryTime)
{
    frmTiles().createColumns();
    workspace.loadTiles();
    frmTiles().selectFirst();
    platform::ListView& list = *frmTiles().ui().lvTiles;
    frmTiles().show();
    EXPECT_EQ(frmTiles().selectedName(), frmTiles().palette.items.at(0).key());
    const QString selected = frmTiles().selectedName();

    QHeaderView& header = *list.header();
    const int nameColumn = 1;
    EXPECT_EQ(header.sectionSize(nameColumn), platform::pixelsFromTwips(2100));
    header.resizeSection(nameColumn, 150);
    const QPoint onHeader(header.sectionViewportPosition(nameColumn) + 10, header.height() / 2);
    for (int click = 0; click < 2; ++click) {
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, onHeader);
        const auto& items = frmTiles().palette.items;
        for (int i = 1; i < items.count(); ++i)
            EXPECT_LE(items.at(i - 1).key().localeAwareCompare(items.at(i).key()), 0);
        EXPECT_EQ(frmTiles().selectedName(), selected);
    }
    EXPECT_EQ(header.sectionSize(nameColumn), 150);
    EXPECT_EQ(list.model()->headerData(4, Qt::Horizontal, Qt::TextAlignmentRole).toInt() &
                  Qt::AlignRight,
              Qt::AlignRight);

    // What is filtered away stays chosen, also when the palette is loaded again.
    frmTiles().window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frmTiles().window()));
    QTest::keyClick(&list, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), u"nada de nada"_s);
    EXPECT_EQ(list.hiddenRows(), frmTiles().palette.items.count());
    EXPECT_EQ(frmTiles().selectedName(), selected);
    workspace.loadTiles();
    EXPECT_EQ(list.hiddenRows(), frmTiles().palette.items.count());
    frmTiles().ui().txtFiltro->setText(selected);
    EXPECT_LT(list.hiddenRows(), frmTiles().palette.items.count());
    frmTiles().selectFirst();
    frmTiles().ui().txtFiltro->clear();
    EXPECT_EQ(list.hiddenRows(), 0);
    list.select(*frmTiles().palette.items.find(selected));

    frmTiles().window().close(); // by its box: the definitions stay
    EXPECT_FALSE(frmTiles().isVisible());
    EXPECT_EQ(frmTiles().selectedName(), selected);
}

TEST_F(FormTest, AnEmptyPaletteSaysSo)
{
    expectError([] { frmTiles().selectedName(); }, ErrorNumber::NoSuchKey, {u"«Tiles»"_s});
}

TEST_F(FormTest, TopmostIsSetAndTakenBackInPlace)
{
    frmTiles().show();
    const QRect place = frmTiles().window().geometry();
    QWindow* const handle = frmTiles().window().windowHandle();
    EXPECT_TRUE(Procs::setTopmost(handle, true));
    EXPECT_TRUE(handle->flags() & Qt::WindowStaysOnTopHint);
    EXPECT_FALSE(Procs::setTopmost(handle, false));
    EXPECT_FALSE(handle->flags() & Qt::WindowStaysOnTopHint);
    EXPECT_FALSE(Procs::setTopmost(nullptr, true));
    EXPECT_EQ(frmTiles().window().geometry(), place);
    EXPECT_TRUE(frmTiles().isVisible());
}

namespace {

/// A character that a text box gets at a place, what it makes of it, and where the caret then is.
struct Entered {
    QString before;
    int caret;
    QString entered;
    QString after;
    int caretAfter;
    QString inNotes{}; ///< where that differs from a box of one line
};

} // namespace

TEST_F(FormTest, TextBoxesTakeWhatTheFilesHoldAndKeepTheCaretWhereItIs)
{
    const std::vector<Entered> cases{
        {u"abcd"_s, 2, u";"_s, u"ab,cd"_s, 3},
        {u"abcd"_s, 2, u"x|y;"_s, u"abx/y,cd"_s, 6},
        {u"abcd"_s, 2, u"Ł→"_s, u"abcd"_s, 2},
        {u"abcd"_s, 2, u"x🐉y"_s, u"abxycd"_s, 4},
        {u"abcd"_s, 1, u"1\r\n2\n3"_s, u"a1 2 3bcd"_s, 6, u"a1\n2\n3bcd"_s},
        {u"abcd"_s, 1, u"\u2028"_s, u"a bcd"_s, 2, u"a\nbcd"_s},
        {u"abcd"_s, 2, u"\u00B6"_s, u"ab\u00B6cd"_s, 3, u"abcd"_s},
        {u"ab"_s, 1, u"Pen\u0303o\u0301n"_s, u"aPeñónb"_s, 6},
        {u"an"_s, 2, u"\u0303"_s, u"añ"_s, 2},
        {u"eb"_s, 1, u"Ł\u0301"_s, u"éb"_s, 1},
        {u"ab"_s, 1, u"q\u0301\u212B"_s, u"aqÅb"_s, 3},
        {u"ab"_s, 1, u"\u00A0\t \u00A0"_s, u"a\u00A0\t \u00A0b"_s, 5},
        {{}, 0, QString(40'000, u'w'), QString(40'000, u'w'), 40'000}};
    QWidget window;
    QLineEdit line(&window);
    QPlainTextEdit notes(&window);
    platform::guardText(line);
    platform::guardText(notes);
    for (const Entered& c : cases) {
        SCOPED_TRACE(c.entered.left(10).toStdString());
        QGuiApplication::clipboard()->setText(c.entered);
        line.setText(c.before);
        line.setCursorPosition(c.caret);
        line.paste();
        EXPECT_EQ(line.text(), c.after);
        EXPECT_EQ(line.cursorPosition(), c.caretAfter);

        const QString after = c.inNotes.isEmpty() ? c.after : c.inNotes;
        notes.setPlainText(c.before);
        QTextCursor caret = notes.textCursor();
        caret.setPosition(c.caret);
        notes.setTextCursor(caret);
        notes.paste();
        EXPECT_EQ(platform::textOf(notes), after);
        EXPECT_EQ(notes.textCursor().position(),
                  c.caretAfter - static_cast<int>(c.after.size() - after.size()));
    }
}

TEST_F(FormTest, ListsShowTheStartOfWhatIsCut)
{
    platform::ListItems items;
    items.setColumns({{u"a"_s, u"Texto"_s, 1200},
                      {u"b"_s, u"Precio"_s, 700, Qt::AlignRight},
                      {u"c"_s, u"Componentes"_s, 1400},
                      {u"d"_s, u"Componentes"_s, 1100}});
    const auto add = [&](const QString& text) -> platform::ListItem& {
        platform::ListItem& item = items.add(text, text);
        item.setSubItem(u"b"_s, text);
        return item;
    };
    add(u"Personal o de toque"_s);
    add(u"Personal y duradero"_s);
    add(u"1200000000 piezas 1"_s);
    add(u"1200000000 piezas 2"_s);
    add(u"3400000000 piezas 1"_s);
    const platform::ImageList none;
    platform::ListView list;
    list.setItems(items, none);
    list.resize(400, 200);
    list.show();
    const auto cell = [&](int row, int column) {
        return list.viewport()->grab(list.visualRect(items.index(row, column))).toImage();
    };
    for (const int column : {0, 1})
        EXPECT_EQ(cell(0, column), cell(1, column)) << "cut to its start";
    EXPECT_NE(cell(2, 1), cell(3, 1)) << "a number keeps its end";
    EXPECT_NE(cell(2, 1), cell(4, 1)) << "and its start";

    // The arrow of a sorted column covers none of its header's text.
    QHeaderView& header = *list.header();
    constexpr int arrowRoom = 9;
    const int tight = 3; // its text fits without the arrow only
    std::vector<QImage> ends;
    for (const int column : {0, 1, 2, tight}) {
        const QRect place(header.sectionViewportPosition(column), 0, header.sectionSize(column),
                          header.height());
        header.setSortIndicatorShown(false);
        const QImage plain = header.viewport()->grab(place).toImage();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place.center());
        QTest::mouseMove(list.viewport(), QPoint(5, 150));
        const QImage sorted = header.viewport()->grab(place).toImage();
        ends.push_back(
            sorted.copy(sorted.width() - arrowRoom - 2, 3, arrowRoom, sorted.height() - 6));
        if (column == tight)
            continue;
        int arrow = 0;
        const auto ink = [](const QImage& image, int x, int y) {
            return qGray(image.pixel(x, y)) < 128;
        };
        for (int y = 3; y < plain.height() - 3; ++y) {
            for (int x = 2; x < plain.width() - 2; ++x) {
                EXPECT_TRUE(!ink(plain, x, y) || ink(sorted, x, y)) << x << ',' << y;
                arrow += ink(sorted, x, y) && !ink(plain, x, y);
            }
        }
        EXPECT_GT(arrow, 10);
    }
    EXPECT_EQ(ends[tight], ends[0]) << "text where the arrow is";
}
