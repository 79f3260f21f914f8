#include "app/frmAbout.h"
#include "app/procs_windows.h"
#include "catalogue/frmProgreso.h"
#include "platform/forms/application.h"
#include "platform/forms/placement.h"
#include "platform/forms/twips.h"
#include "window_test.h"
#include "worldmap/frmListaArchivos.h"
#include "worldmap/frmTiles.h"

#include <QHeaderView>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QWindow>

using namespace Qt::StringLiterals;
using platform::Error;
using platform::ErrorNumber;
namespace MsgBox = platform::MsgBox;

namespace {

/// A window with counters, on the design of a real one.
class Counting final : public platform::Form<Ui::FrmProgreso>
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

TEST_F(FormTest, AModalWindowReturnsWhenHiddenOrUnloaded)
{
    Counting form;
    duringModal([&] { form.showModal(); },
                [&] {
                    EXPECT_EQ(QApplication::activeModalWidget(), &form.window());
                    form.hide();
                });
    EXPECT_TRUE(form.isLoaded());
    duringModal([&] { form.showModal(); }, [&] { form.unload(); });
    EXPECT_FALSE(form.isLoaded());
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
    PictureCollection pictures, masks;
    frmTiles().load(pictures, masks);
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
