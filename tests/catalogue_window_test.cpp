// The catalogue window, its editors and the picture picker, with real clicks and keys.
#include "catalogue/frmArmaduras.h"
#include "catalogue/frmArmas.h"
#include "catalogue/frmConjuros.h"
#include "catalogue/frmEquipo.h"
#include "catalogue/frmListaImagenes.h"
#include "catalogue/frmPrinc.h"
#include "window_test.h"

#include <QClipboard>
#include <QHeaderView>

using namespace Qt::StringLiterals;

using platform::ListItem;
using platform::MsgBox::Answer;

namespace {

class CatalogueWindowTest : public WindowTest
{
protected:
    CatalogueWindowTest()
    {
        for (Catalogue* const catalogue :
             {&princ.armas, &princ.armaduras, &princ.equipo, &princ.conjuros}) {
            princ.createColumns(*catalogue);
            loadCatalogue(*catalogue);
        }
        princ.show();
    }

    void choosePage(int tab) { ui().TabStrip->setCurrentIndex(tab); }
    Ui::FrmPrinc& ui() { return princ.ui(); }

    static void click(QAbstractButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

    /// Double-clicks the item's row and returns the editor that opens.
    static QWidget* open(platform::ListView* list, const QString& text)
    {
        const QModelIndex row =
            list->model()
                ->match(list->model()->index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly)
                .value(0);
        list->scrollTo(row);
        const QPoint place = list->visualRect(row).center();
        const auto before = editors();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
        for (QWidget* const editor : editors()) {
            if (!before.contains(editor))
                return editor;
        }
        return nullptr;
    }

    static QWidgetList editors()
    {
        QWidgetList found;
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->findChild<QLineEdit*>(u"txtImagen"_s))
                found.append(window);
        }
        return found;
    }

    template <typename Control = QLineEdit>
    static Control* in(QWidget* window, const QString& name)
    {
        auto* const control = window->findChild<Control*>(name);
        EXPECT_TRUE(control) << name.toStdString();
        return control;
    }

    static void save(QWidget* editor) { click(in<QToolButton>(editor, u"cmdGuardar"_s)); }

    /// Every text of a catalogue, item by item.
    static QList<QStringList> contents(const Catalogue& catalogue)
    {
        QList<QStringList> all;
        for (int i = 0; i < catalogue.items.count(); ++i) {
            const ListItem& item = catalogue.items.at(i);
            QStringList texts{item.key(), item.text()};
            for (const platform::ListColumn& field : catalogue.kind.fields) {
                if (item.hasSubItem(field.key))
                    texts.append(item.subItem(field.key));
            }
            all.append(texts);
        }
        return all;
    }

    void expectReport(const QString& tail)
    {
        EXPECT_TRUE(boxes.asked().back().text.startsWith(u"Error "_s));
        EXPECT_TRUE(boxes.asked().back().text.endsWith(
            u") in procedure cmdGuardar_Click of Formulario "_s + tail))
            << boxes.asked().back().text.toStdString();
        EXPECT_EQ(boxes.asked().back().title, u"Kestrune"_s);
    }

    FrmPrinc& princ = frmPrinc();
};

} // namespace

TEST_F(CatalogueWindowTest, TabsShowOnePageEach)
{
    const std::array<QFrame*, 7> pages{ui().Frame_0, ui().Frame_1, ui().Frame_2, ui().Frame_3,
                                       ui().Frame_4, ui().Frame_5, ui().Frame_6};
    const QStringList titles{u"Personajes"_s, u"Gente"_s,  u"Monstruos"_s, u"Armas"_s,
                             u"Armaduras"_s,  u"Equipo"_s, u"Conjuros"_s};
    ASSERT_EQ(ui().TabStrip->count(), 7);
    for (const int tab : {0, 3, 1, 1, 6, 4, 5, 0}) {
        QTest::mouseClick(ui().TabStrip, Qt::LeftButton, {}, ui().TabStrip->tabRect(tab).center());
        for (int page = 0; page < 7; ++page)
            EXPECT_EQ(pages.at(static_cast<std::size_t>(page))->isVisible(), page == tab);
        EXPECT_EQ(ui().TabStrip->tabText(tab), titles[tab]);
        EXPECT_TRUE(ui().cmdMapa->isVisible() && ui().cmdDungeon->isVisible());
    }
    EXPECT_TRUE(ui().Frame_0->findChildren<QWidget*>().isEmpty());
}

TEST_F(CatalogueWindowTest, SavingWritesTheOrderShownAndReadsBackTheSame)
{
    for (Catalogue* const catalogue :
         {&princ.armas, &princ.armaduras, &princ.equipo, &princ.conjuros}) {
        SCOPED_TRACE(catalogue->kind.file.toStdString());
        for (int column = -1; column < static_cast<int>(catalogue->kind.fields.size()); ++column) {
            if (column >= 0)
                catalogue->items.sortByColumn(column);
            saveCatalogue(*catalogue);
            Catalogue again(catalogue->kind);
            loadCatalogue(again);
            ASSERT_EQ(contents(again), contents(*catalogue)) << "column " << column;
        }
    }
    choosePage(3);
    QHeaderView& header = *ui().lvArmas->header();
    for (int twice = 0; twice < 2; ++twice) {
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                          QPoint(header.sectionViewportPosition(6) + 10, 8));
        EXPECT_LE(princ.armas.items.at(0).subItem(u"precio"_s),
                  princ.armas.items.at(5).subItem(u"precio"_s));
    }
    const QString first = princ.armas.items.at(0).text();
    click(ui().cmdGuardarArmas);
    EXPECT_EQ(
        QString::fromLatin1(app.read(u"ini/Armas.ini"_s).split('\n').at(1)).section(u';', 0, 0),
        first);
}

TEST_F(CatalogueWindowTest, AnItemOpensInWindowsOfItsOwn)
{
    choosePage(3);
    QWidget* const one = open(ui().lvArmas, u"Daga"_s);
    QWidget* const two = open(ui().lvArmas, u"Daga"_s);
    ASSERT_TRUE(one && two && one != two);
    const ListItem daga = *princ.armas.items.find(u"Daga"_s);
    for (QWidget* const editor : {one, two}) {
        EXPECT_EQ(editor->objectName(), u"frmArmas"_s);
        EXPECT_EQ(editor->windowTitle(), u"Daga"_s);
        EXPECT_EQ(in(editor, u"txtDP"_s)->text(), daga.subItem(u"dp"_s));
        EXPECT_EQ(in(editor, u"txtImagen"_s)->text(), daga.subItem(u"imagen"_s));
        EXPECT_EQ(in<QPlainTextEdit>(editor, u"txtNotas"_s)->toPlainText(),
                  daga.subItem(u"notas"_s));
        EXPECT_FALSE(in<platform::ImageBox>(editor, u"imgArma"_s)->picture().isNull());
    }

    // Typed in full, saved by Enter in the notes.
    const QByteArray file = app.read(u"ini/Armas.ini"_s);
    auto* const notes = in<QPlainTextEdit>(one, u"txtNotas"_s);
    notes->selectAll();
    QTest::keyClicks(notes, u"Corta;"_s);
    QTest::keyClick(notes, Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClicks(notes, u"y | pincha"_s);
    in(one, u"txtPeso"_s)->setText(u"9 kg"_s);
    QTest::keyClick(notes, Qt::Key_Return);
    EXPECT_FALSE(one->isVisible());
    EXPECT_EQ(princ.armas.items.find(u"Daga"_s)->subItem(u"notas"_s), u"Corta,\ny | pincha"_s);
    EXPECT_EQ(app.read(u"ini/Armas.ini"_s), file);
    click(ui().cmdGuardarArmas);
    Catalogue again(armasKind());
    loadCatalogue(again);
    EXPECT_EQ(contents(again), contents(princ.armas));
    EXPECT_EQ(again.items.find(u"Daga"_s)->subItem(u"peso"_s), u"9 kg"_s);

    // The other one renames it; then the first one's key is gone.
    EXPECT_EQ(in(two, u"txtPeso"_s)->text(), daga.subItem(u"peso"_s));
    in(two, u"txtNombre"_s)->setText(u"Puñal largo"_s);
    EXPECT_EQ(two->windowTitle(), u"Puñal largo"_s);
    QWidget* const three = open(ui().lvArmas, u"Daga"_s);
    QTest::keyClick(in(two, u"txtDP"_s), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_FALSE(two->isVisible());
    EXPECT_TRUE(princ.armas.items.find(u"Puñal largo"_s));
    boxes.expect();
    save(three);
    expectReport(u"frmArmas"_s);
    EXPECT_TRUE(three->isVisible());
    EXPECT_FALSE(princ.armas.items.find(u"Daga"_s));
}

TEST_F(CatalogueWindowTest, ARenameOntoAnotherItemLeavesTheOldKey)
{
    choosePage(6);
    const QString spell = u"Bola de fuego"_s;
    QWidget* const editor = open(ui().lvConjuros, spell);
    ASSERT_TRUE(editor);
    EXPECT_TRUE(in<QCheckBox>(editor, u"chkMagiaSalvaje"_s)->isChecked());
    const QString key = spell + u'-' + in(editor, u"txtTipo"_s)->text();
    const QString other =
        u"Bola de fuego-"_s + (key.endsWith(u"Mago"_s) ? u"Hechicero"_s : u"Mago"_s);
    ASSERT_TRUE(princ.conjuros.items.find(other)) << "the shipped spells have it twice";
    in(editor, u"txtTipo"_s)->setText(other.section(u'-', 1));
    in(editor, u"txtNivel"_s)->setText(u"8"_s);
    in<QCheckBox>(editor, u"chkMagiaSalvaje"_s)->setChecked(false);
    boxes.expect();
    save(editor);
    expectReport(u"frmConjuros"_s);
    EXPECT_TRUE(editor->isVisible());
    const ListItem& half = *princ.conjuros.items.find(key);
    EXPECT_EQ(half.subItem(u"nivel"_s), u"8"_s) << "what was done stays done";
    EXPECT_EQ(half.subItem(u"magiasalvaje"_s), u"No"_s);
    in(editor, u"txtTipo"_s)->setText(u"Paladín"_s);
    save(editor);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_FALSE(princ.conjuros.items.find(key));
    EXPECT_TRUE(princ.conjuros.items.find(u"Bola de fuego-Paladín"_s));
}

TEST_F(CatalogueWindowTest, NewItemsAreCheckedAndTheEditorKeepsItsFields)
{
    choosePage(6);
    click(ui().cmdNewConjuro);
    Ui::FrmConjuros& editor = frmConjuros().ui();
    EXPECT_TRUE(frmConjuros().window().windowTitle().isEmpty());
    const auto expectRefusal = [&](const QString& text) {
        boxes.expect();
        save(&frmConjuros().window());
        EXPECT_EQ(boxes.asked().back().text, text);
        EXPECT_EQ(boxes.asked().back().title, u"Error"_s);
        EXPECT_EQ(boxes.asked().back().icon, platform::MsgBox::Icon::Information);
        EXPECT_TRUE(frmConjuros().isVisible());
    };
    expectRefusal(u"Debe ingresar el nombre del conjuro."_s);
    const int count = princ.conjuros.items.count();
    editor.txtNombre->setText(u"Bola de fuego"_s);
    editor.txtTipo->setText(u"Chamán"_s);
    expectRefusal(u"Ya existe un conjuro con ese nombre."_s);
    EXPECT_EQ(princ.conjuros.items.count(), count);
    editor.txtNombre->setText(u"Bola de nieve"_s);
    editor.chkReversible->setChecked(true);
    save(&frmConjuros().window());
    EXPECT_FALSE(frmConjuros().isVisible());
    const ListItem* const made = princ.conjuros.items.find(u"Bola de nieve-Chamán"_s);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->subItem(u"reversible"_s), u"Sí"_s);
    EXPECT_EQ(made->subItem(u"magiasalvaje"_s), u"No"_s);
    EXPECT_EQ(made->icon(), 0);

    click(ui().cmdNewConjuro);
    EXPECT_EQ(editor.txtNombre->text(), u"Bola de nieve"_s);
    EXPECT_TRUE(frmConjuros().conjuroEditado.isEmpty());
    frmConjuros().window().close();
    click(ui().cmdNewConjuro);
    EXPECT_TRUE(frmConjuros().ui().txtNombre->text().isEmpty());
    QTest::keyClick(frmConjuros().ui().txtNombre, Qt::Key_Escape, Qt::ShiftModifier);
    EXPECT_TRUE(frmConjuros().isVisible());
    QTest::keyClick(frmConjuros().ui().txtNombre, Qt::Key_Escape);
    EXPECT_FALSE(frmConjuros().isVisible());

    // A picture that isn't there: the item stays, without its fields.
    choosePage(5);
    click(ui().cmdNewEquipo);
    frmEquipo().ui().txtNombre->setText(u"Cosa"_s);
    frmEquipo().ui().txtImagen->setText(u"ini\\pics\\equipo\\nada.gif"_s);
    boxes.expect();
    save(&frmEquipo().window());
    expectReport(u"frmEquipos"_s);
    EXPECT_TRUE(frmEquipo().isVisible());
    ASSERT_TRUE(princ.equipo.items.find(u"Cosa"_s));
    EXPECT_FALSE(princ.equipo.items.find(u"Cosa"_s)->hasSubItem(u"precio"_s));
    click(ui().cmdGuardarEquipo);
    EXPECT_TRUE(app.read(u"ini/Equipo.ini"_s).contains("\r\nCosa;;;;;\r\n"));
}

TEST_F(CatalogueWindowTest, DeletingAsksAndTheNameIsFreeAgain)
{
    choosePage(3);
    click(ui().cmdDeleteArma); // nothing selected, nothing asked
    QWidget* const editor = open(ui().lvArmas, u"Daga"_s);
    const QByteArray file = app.read(u"ini/Armas.ini"_s);
    const int count = princ.armas.items.count();
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        boxes.expect(answer);
        click(ui().cmdDeleteArma);
        EXPECT_EQ(boxes.asked().back().text, u"Está por eliminar 'Daga'.\r\n ¿Está seguro?"_s);
        EXPECT_EQ(boxes.asked().back().title, u"Advertencia"_s);
        EXPECT_EQ(princ.armas.items.count(), answer == Answer::No ? count : count - 1);
    }
    EXPECT_EQ(app.read(u"ini/Armas.ini"_s), file);
    boxes.expect();
    save(editor);
    expectReport(u"frmArmas"_s);
    EXPECT_EQ(princ.armas.items.count(), count - 1);

    click(ui().cmdNewArma);
    Ui::FrmArmas& fresh = frmArmas().ui();
    fresh.txtNombre->setText(u"Daga"_s);
    fresh.txtImagen->setText(u"ini\\pics\\armas\\daga.gif"_s);
    save(&frmArmas().window());
    EXPECT_FALSE(frmArmas().isVisible());
    EXPECT_GT(princ.armas.items.find(u"Daga"_s)->icon(), 0);
}

TEST_F(CatalogueWindowTest, NothingTypedOrPastedSpoilsTheFile)
{
    choosePage(3);
    ui().lvArmas->header()->sectionClicked(0); // sorted by name from here on
    click(ui().cmdNewArma);
    Ui::FrmArmas& editor = frmArmas().ui();
    QGuiApplication::clipboard()->setText(u"#¶Arco\r\nde dos\nlíneas"_s);
    editor.txtNombre->setFocus();
    editor.txtNombre->paste();
    EXPECT_EQ(editor.txtNombre->text(), u"Arco de dos líneas"_s);
    EXPECT_EQ(frmArmas().window().windowTitle(), u"Arco de dos líneas"_s);
    editor.txtNotas->setFocus();
    QTest::keyClicks(editor.txtNotas, u"uno; dos"_s);
    QTextCursor cursor = editor.txtNotas->textCursor();
    cursor.insertText(u" \u00B6 tres Ł"_s);
    EXPECT_EQ(editor.txtNotas->toPlainText(), u"uno, dos  tres "_s);
    editor.txtNotas->undo();
    editor.txtNotas->undo();
    EXPECT_LT(editor.txtNotas->toPlainText().size(), 9) << "corrections can be undone";
    editor.txtNotas->setPlainText(u"a\nb"_s);
    save(&frmArmas().window());
    const ListItem* const made = princ.armas.items.find(u"Arco de dos líneas"_s);
    ASSERT_TRUE(made);
    const auto position = [&] {
        for (int i = 0; i < princ.armas.items.count(); ++i) {
            if (&princ.armas.items.at(i) == made)
                return i;
        }
        return -1;
    };
    EXPECT_LT(position(), 10) << "among the first letters";
    click(ui().cmdGuardarArmas);
    Catalogue again(armasKind());
    loadCatalogue(again);
    EXPECT_EQ(contents(again), contents(princ.armas));

    // What gets past the boxes all the same is refused by the writer.
    const QByteArray file = app.read(u"ini/Armas.ini"_s);
    const auto expectRefused = [&](const QString& fragment) {
        expectError([&] { saveCatalogue(princ.armas); }, platform::ErrorNumber::BadCharacter,
                    {fragment});
        EXPECT_EQ(app.read(u"ini/Armas.ini"_s), file);
    };
    ListItem& item = *princ.armas.items.find(u"Daga"_s);
    item.setSubItem(u"dp"_s, u"1\n2"_s);
    expectRefused(u"salto de línea"_s);
    item.setSubItem(u"dp"_s, u"1"_s);
    item.setText(u"#Daga"_s);
    expectRefused(u"«#»"_s);
}

TEST_F(CatalogueWindowTest, AFullCatalogueTakesNoMore)
{
    Catalogue full(equipoKind());
    full.items.setColumns(full.kind.fields);
    for (int i = 0; i < maxCatalogueItems; ++i)
        full.items.add(QString::number(i), QString::number(i));
    princ.equipo.items.swapItems(full.items);
    choosePage(5);
    click(ui().cmdNewEquipo);
    frmEquipo().ui().txtNombre->setText(u"Uno más"_s);
    boxes.expect();
    save(&frmEquipo().window());
    expectReport(u"frmEquipos"_s);
    EXPECT_TRUE(frmEquipo().isVisible());
    EXPECT_EQ(princ.equipo.items.count(), maxCatalogueItems);
}

TEST_F(CatalogueWindowTest, BoxesSelectTheirTextOnFocus)
{
    choosePage(3);
    QWidget* const editor = open(ui().lvArmas, u"Daga"_s);
    for (const QString& name : {u"txtDP"_s, u"txtPrecio"_s, u"txtNombre"_s}) {
        QLineEdit& box = *in(editor, name);
        QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
        QCoreApplication::processEvents();
        EXPECT_EQ(box.selectedText(), box.text()) << name.toStdString();
    }
    QLineEdit& image = *in(editor, u"txtImagen"_s);
    const QString path = image.text();
    QTest::keyClicks(&image, u"abc"_s);
    EXPECT_EQ(image.text(), path);
    EXPECT_TRUE(in(editor, u"txtPrecio"_s)->alignment() & Qt::AlignRight);
}

TEST_F(CatalogueWindowTest, ThePickerWritesThePathOfAPicture)
{
    app.write(u"ini/pics/armas/rota.gif"_s, "GIF89a?");
    app.write(u"ini/pics/armas/con;coma.gif"_s, onePixelGif());
    choosePage(3);
    QWidget* const editor = open(ui().lvArmas, u"Daga"_s);
    const auto browse = [](QWidget* from) {
        click(in<QToolButton>(from, u"cmdBuscarImagenes"_s));
        return &frmListaImagenes().ui();
    };
    auto* const picker = browse(editor);
    EXPECT_TRUE(frmListaImagenes().isVisible());
    const QDir folder(app.path(u"ini/pics/armas"_s));
    EXPECT_EQ(picker->lvListaImagenes->model()->rowCount(),
              folder.entryList({u"*.gif"_s}).size() - 2);
    EXPECT_TRUE(picker->lblEstado->isVisible());
    EXPECT_TRUE(picker->lblEstado->text().contains(u"con;coma.gif"_s));
    EXPECT_TRUE(picker->lblEstado->text().contains(u"rota.gif"_s));
    platform::ImageBox& preview = *in<platform::ImageBox>(editor, u"imgArma"_s);
    const QImage before = preview.picture();
    const auto doubleClick = [&](int row) {
        QWidget* const list = picker->lvListaImagenes->viewport();
        const QPoint place = row < 0
                                 ? QPoint(list->width() - 2, list->height() - 2)
                                 : picker->lvListaImagenes
                                       ->visualRect(picker->lvListaImagenes->model()->index(row, 0))
                                       .center();
        QTest::mouseClick(list, Qt::LeftButton, {}, place);
        QTest::mouseDClick(list, Qt::LeftButton, {}, place);
    };
    doubleClick(0);
    EXPECT_FALSE(frmListaImagenes().isVisible());
    const QString chosen = picker->lvListaImagenes->model()->index(0, 0).data().toString();
    EXPECT_EQ(in(editor, u"txtImagen"_s)->text(), u"ini\\pics\\armas\\"_s + chosen);
    const QImage shown = preview.picture();
    EXPECT_NE(shown, before);
    in(editor, u"txtImagen"_s)->setText(u"ini\\pics\\armas\\rota.gif"_s);
    EXPECT_EQ(preview.picture(), shown) << "the picture that was there stays";
    in(editor, u"txtImagen"_s)->setText(QString());

    browse(editor);
    QTest::keyClick(picker->lvListaImagenes, Qt::Key_Escape, Qt::ShiftModifier);
    EXPECT_TRUE(frmListaImagenes().isVisible());
    QTest::keyClick(picker->lvListaImagenes, Qt::Key_Escape);
    EXPECT_FALSE(frmListaImagenes().isVisible());
    EXPECT_TRUE(in(editor, u"txtImagen"_s)->text().isEmpty());

    choosePage(4);
    click(ui().cmdNewArmadura);
    browse(&frmArmaduras().window());
    EXPECT_EQ(picker->lvListaImagenes->model()->rowCount(),
              QDir(app.path(u"ini/pics/armaduras"_s)).entryList({u"*.gif"_s}).size());
    EXPECT_FALSE(picker->lblEstado->isVisible());
    frmArmaduras().window().close(); // the box that was to receive the path is gone
    doubleClick(1);
    EXPECT_FALSE(frmListaImagenes().isVisible());
}
