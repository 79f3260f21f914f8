#include "app/frmManual.h"
#include "window_test.h"
#include "worldmap/frmInfoPin.h"
#include "worldmap/frmMapa.h"

#include <QDir>
#include <QTextBlock>
#include <QTextLayout>
#include <QTextTable>
#include <set>

using namespace Qt::StringLiterals;

namespace {

/// The manual over a copy of its files.
class ManualTest : public WindowTest
{
protected:
    ManualTest()
    {
        forms.onHelp = [](const QString& window) { frmManual().showFor(window); };
    }
    static Ui::FrmManual& ui() { return frmManual().ui(); }
    static QString page() { return ui().txtManual->page(); }
};

} // namespace

TEST_F(ManualTest, EveryPageIsListedAndItsLinksAndPicturesAreThere)
{
    std::set<QString> listed;
    frmManual().show();
    for (std::size_t i = 0; i < FrmManual::pages().size(); ++i) {
        ui().lvPaginas->setCurrentRow(static_cast<int>(i));
        SCOPED_TRACE(page().toStdString());
        EXPECT_EQ(page(), FrmManual::pages()[i].name);
        listed.insert(page() + u".md"_s);
        const QTextDocument& document = *ui().txtManual->document();
        EXPECT_GT(document.characterCount(), 200);
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextCharFormat format = part.fragment().charFormat();
                if (!format.anchorHref().isEmpty()) {
                    EXPECT_TRUE(QFile::exists(app.path(u"manual/"_s + format.anchorHref())))
                        << format.anchorHref().toStdString();
                }
                if (!format.isImageFormat())
                    continue;
                const QString name = format.toImageFormat().name();
                EXPECT_FALSE(QImage(app.path(u"manual/"_s + name)).isNull()) << name.toStdString();
                EXPECT_LE(format.toImageFormat().width(), ui().txtManual->viewport()->width());
                EXPECT_GT(format.toImageFormat().width(), 0);
            }
        }
    }
    const QStringList files = QDir(app.path(u"manual"_s)).entryList({u"*.md"_s}, QDir::Files);
    EXPECT_EQ(listed, std::set<QString>(files.begin(), files.end()));
}

TEST_F(ManualTest, OpensAtThePageOfTheWindowAndGoesBack)
{
    frmMapa().show();
    frmMapa().ui().menuBar->window()->findChild<QAction*>(u"manual"_s)->trigger();
    EXPECT_EQ(page(), u"mapa"_s);
    ui().txtManual->setSource(QUrl(u"clima.md"_s));
    EXPECT_EQ(page(), u"clima"_s);
    EXPECT_EQ(ui().lvPaginas->currentItem()->text(), u"El clima"_s);
    for (const QString& elsewhere :
         {u"https://example.org/a.md"_s, u"../ini/tiles.ini"_s, u"file:///etc/hostname"_s}) {
        ui().txtManual->setSource(QUrl(elsewhere));
        EXPECT_EQ(page(), u"clima"_s) << elsewhere.toStdString();
    }
    QTest::mouseClick(ui().cmdAtras, Qt::LeftButton);
    EXPECT_EQ(page(), u"mapa"_s);
    QTest::mouseClick(ui().cmdAdelante, Qt::LeftButton);
    EXPECT_EQ(page(), u"clima"_s);

    // Over a dialog too, and back to being a window of its own.
    duringModal([] { frmInfoPin().showModal(); },
                [] {
                    QTest::keyClick(frmInfoPin().ui().txtNombre, Qt::Key_F1);
                    EXPECT_EQ(page(), u"mapa"_s);
                    EXPECT_EQ(frmManual().window().windowHandle()->transientParent(),
                              frmInfoPin().window().windowHandle());
                    frmInfoPin().unload();
                });
    frmManual().showFor(u"frmPrinc"_s);
    EXPECT_EQ(page(), u"catalogo"_s);
    EXPECT_TRUE(frmManual().isVisible());
    EXPECT_EQ(frmManual().window().windowHandle()->transientParent(), nullptr);
    QTest::keyClick(ui().txtManual, Qt::Key_F1);
    EXPECT_EQ(page(), u"catalogo"_s) << "its own window has no page";
    duringModal([] { frmMapa().window().findChild<QAction*>(u"guardarComo"_s)->trigger(); },
                [] {
                    QWidget& dialog = *QApplication::activeModalWidget();
                    QApplication::setActiveWindow(&dialog);
                    QTest::keyClick(dialog.findChild<QLineEdit*>(u"txtNombre"_s), Qt::Key_F1);
                    EXPECT_EQ(page(), u"mapa"_s);
                    dialog.close();
                });
    frmManual().showFor(u"frmMapa"_s);
    EXPECT_TRUE(frmManual().isVisible());
    EXPECT_FALSE(frmManual().window().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(ManualTest, LaysOutEveryLineWhateverTheWindowsSize)
{
    frmManual().showFor(u"frmMapa"_s);
    for (const QSize size : {frmManual().window().size(), QSize(700, 500), QSize(1200, 800)}) {
        frmManual().window().resize(size);
        const QTextDocument& document = *ui().txtManual->document();
        EXPECT_GT(document.size().height(), size.height()); // and so lays out what is left to do
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            EXPECT_GT(block.layout()->lineCount(), 0) << block.text().toStdString();
    }
}

TEST_F(ManualTest, FindsWordsInThePageRoundAndRound)
{
    frmManual().showFor(u"frmClima"_s);
    const auto find = [](const QString& words, Qt::KeyboardModifiers modifiers = {}) {
        ui().txtBuscar->setText(words);
        ui().txtBuscar->setFocus();
        QTest::keyClick(ui().txtBuscar, Qt::Key_Return, modifiers);
        return ui().txtManual->textCursor().selectionStart();
    };
    const int first = find(u"ecuador"_s);
    const int second = find(u"ecuador"_s);
    EXPECT_LT(first, second);
    EXPECT_EQ(find(u"ecuador"_s, Qt::ShiftModifier), first);
    while (find(u"ecuador"_s) != first)
        ASSERT_LT(ui().txtManual->textCursor().position(), 5000);
    EXPECT_TRUE(ui().lblBuscar->text().isEmpty());
    EXPECT_EQ(find(u"xyzzy"_s), first);
    EXPECT_EQ(ui().lblBuscar->text(), u"No está en esta página"_s);
}

TEST_F(ManualTest, SaysWhichPageIsMissing)
{
    ASSERT_TRUE(QDir(app.path(u"manual"_s)).removeRecursively());
    frmManual().showFor(u"frmMapa"_s);
    EXPECT_TRUE(ui().txtManual->toPlainText().contains(u"«mapa.md»"_s));
    EXPECT_TRUE(frmManual().isVisible());
}
