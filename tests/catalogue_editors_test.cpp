// The item editors, with real clicks and keys.
#include "catalogue/frmArmaduras.h"
#include "catalogue/frmArmas.h"
#include "catalogue/frmConjuros.h"
#include "catalogue/frmEquipo.h"
#include "catalogue_window_test.h"

#include <QClipboard>
#include <QWindow>

using namespace Qt::StringLiterals;

using platform::ListItem;

using CatalogueEditorsTest = CatalogueWindowTest;

TEST_F(CatalogueEditorsTest, AnItemOpensInWindowsOfItsOwn)
{
    choosePage(3);
    QWidget* const one = open(ui().lvArmas, u"Daga"_s);
    QWidget* const two = open(ui().lvArmas, u"Daga"_s);
    ASSERT_TRUE(one && two && one != two);
    const ListItem daga = *workspace.armas.items().find(u"Daga"_s);
    for (QWidget* const editor : {one, two}) {
        EXPECT_EQ(editor->objectName(), u"frmArmas"_s);
        EXPECT_EQ(editor->windowTitle(), u"Daga"_s);
        EXPECT_FALSE(in<platform::PreviewBox>(editor, u"imgArma"_s)->picture().isNull());
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
    EXPECT_EQ(app.read(u"ini/Armas.ini"_s), file);
    click(ui().cmdGuardarArmas);
    Catalogue again(armasKind());
    loadCatalogue(again);
    EXPECT_EQ(again.items.find(u"Daga"_s)->subItem(u"peso"_s), u"9 kg"_s);
    EXPECT_EQ(again.items.find(u"Daga"_s)->subItem(u"notas"_s), u"Corta,\ny | pincha"_s);

    // The other one renames it; then the first one's key is gone.
    EXPECT_EQ(in(two, u"txtPeso"_s)->text(), daga.subItem(u"peso"_s));
    in(two, u"txtNombre"_s)->setText(u"Puñal largo"_s);
    EXPECT_EQ(two->windowTitle(), u"Puñal largo"_s);
    QWidget* const three = open(ui().lvArmas, u"Daga"_s);
    QTest::keyClick(in(two, u"txtDP"_s), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_FALSE(two->isVisible());
    EXPECT_TRUE(workspace.armas.items().find(u"Puñal largo"_s));
    boxes.expect();
    save(three);
    expectReport(u"frmArmas"_s);
    EXPECT_TRUE(three->isVisible());
    EXPECT_FALSE(workspace.armas.items().find(u"Daga"_s));
}

TEST_F(CatalogueEditorsTest, ARenameOntoAnotherItemLeavesTheOldKey)
{
    choosePage(6);
    const QString spell = u"Bola de fuego"_s;
    QWidget* const editor = open(ui().lvConjuros, spell);
    ASSERT_TRUE(editor);
    EXPECT_TRUE(in<QCheckBox>(editor, u"chkMagiaSalvaje"_s)->isChecked());
    const QString key = spell + u'-' + in(editor, u"txtTipo"_s)->text();
    const QString other =
        u"Bola de fuego-"_s + (key.endsWith(u"Mago"_s) ? u"Hechicero"_s : u"Mago"_s);
    ASSERT_TRUE(workspace.conjuros.items().find(other)) << "the shipped spells have it twice";
    in(editor, u"txtTipo"_s)->setText(other.section(u'-', 1));
    in(editor, u"txtNivel"_s)->setText(u"8"_s);
    in<QCheckBox>(editor, u"chkMagiaSalvaje"_s)->setChecked(false);
    boxes.expect();
    save(editor);
    expectReport(u"frmConjuros"_s);
    EXPECT_TRUE(editor->isVisible());
    const ListItem& half = *workspace.conjuros.items().find(key);
    EXPECT_EQ(half.subItem(u"nivel"_s), u"8"_s) << "what was done stays done";
    EXPECT_EQ(half.subItem(u"magiasalvaje"_s), u"No"_s);
    in(editor, u"txtTipo"_s)->setText(u"Paladín"_s);
    save(editor);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_FALSE(workspace.conjuros.items().find(key));
    EXPECT_TRUE(workspace.conjuros.items().find(u"Bola de fuego-Paladín"_s));
}

TEST_F(CatalogueEditorsTest, NewItemsAreCheckedAndTheEditorKeepsItsFields)
{
    choosePage(6);
    click(ui().cmdNewConjuro);
    Ui::FrmConjuros& editor = frmConjuros().ui();
    EXPECT_TRUE(frmConjuros().window().windowTitle().isEmpty());
    EXPECT_EQ(frmConjuros().window().windowHandle()->title(), u" "_s) << "not the program's name";
    const auto expectRefusal = [&](const QString& text) {
        boxes.expect();
        save(&frmConjuros().window());
        EXPECT_EQ(boxes.asked().back().text, text);
        EXPECT_EQ(boxes.asked().back().title, u"Error"_s);
        EXPECT_EQ(boxes.asked().back().icon, platform::MsgBox::Icon::Information);
        EXPECT_TRUE(frmConjuros().isVisible());
    };
    expectRefusal(u"Debe ingresar el nombre del conjuro."_s);
    const int count = workspace.conjuros.items().count();
    editor.txtNombre->setText(u"Bola de fuego"_s);
    editor.txtTipo->setText(u"Chamán"_s);
    expectRefusal(u"Ya existe un conjuro con ese nombre."_s);
    EXPECT_EQ(workspace.conjuros.items().count(), count);
    editor.txtNombre->setText(u"Bola de nieve"_s);
    editor.chkReversible->setChecked(true);
    save(&frmConjuros().window());
    EXPECT_FALSE(frmConjuros().isVisible());
    const ListItem* const made = workspace.conjuros.items().find(u"Bola de nieve-Chamán"_s);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->subItem(u"reversible"_s), u"Sí"_s);
    EXPECT_EQ(made->subItem(u"magiasalvaje"_s), u"No"_s);
    EXPECT_EQ(made->icon(), 0);
    EXPECT_EQ(ui().lvConjuros->selectedItem(), made);
    EXPECT_TRUE(ui().lvConjuros->viewport()->rect().contains(
        ui().lvConjuros->visualRect(ui().lvConjuros->currentIndex()).center()));

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
    ASSERT_TRUE(workspace.equipo.items().find(u"Cosa"_s));
    EXPECT_FALSE(workspace.equipo.items().find(u"Cosa"_s)->hasSubItem(u"precio"_s));
    click(ui().cmdGuardarEquipo);
    EXPECT_TRUE(app.read(u"ini/Equipo.ini"_s).contains("\r\nCosa;;;;;\r\n"));
}

TEST_F(CatalogueEditorsTest, NothingTypedOrPastedSpoilsTheFile)
{
    choosePage(3);
    ui().lvArmas->header()->sectionClicked(0); // sorted by name from here on
    click(ui().cmdNewArma);
    Ui::FrmArmas& editor = frmArmas().ui();
    QGuiApplication::clipboard()->setText(u"#\u0141Arco\r\nde dos\nli\u0301neas"_s);
    editor.txtNombre->setFocus();
    editor.txtNombre->paste();
    EXPECT_EQ(editor.txtNombre->text(), u"Arco de dos líneas"_s);
    EXPECT_EQ(frmArmas().window().windowTitle(), u"Arco de dos líneas"_s);
    editor.txtNotas->setFocus();
    QTest::keyClicks(editor.txtNotas, u"uno; dos"_s);
    editor.txtNotas->insertPlainText(u" \u00B6 tres Ł"_s);
    EXPECT_EQ(editor.txtNotas->toPlainText(), u"uno, dos  tres "_s);
    editor.txtNotas->undo();
    editor.txtNotas->undo();
    EXPECT_LT(editor.txtNotas->toPlainText().size(), 9) << "corrections can be undone";
    save(&frmArmas().window());
    const ListItem* const made = workspace.armas.items().find(u"Arco de dos líneas"_s);
    ASSERT_TRUE(made);
    EXPECT_LT(workspace.armas.items().positionOf(*made), 10) << "among the first letters";

    // What gets past the boxes all the same is refused by the writer.
    const QByteArray file = app.read(u"ini/Armas.ini"_s);
    const auto expectRefused = [&](const QString& fragment) {
        expectError([&] { workspace.armas.save(); }, platform::ErrorNumber::BadCharacter,
                    {fragment});
        EXPECT_EQ(app.read(u"ini/Armas.ini"_s), file);
    };
    ListItem& item = *workspace.armas.model().find(u"Daga"_s);
    item.setSubItem(u"dp"_s, u"1\n2"_s);
    expectRefused(u"salto de línea"_s);
    item.setSubItem(u"dp"_s, u"1"_s);
    item.setText(u"#Daga"_s);
    expectRefused(u"«#»"_s);
}

TEST_F(CatalogueEditorsTest, AFullCatalogueTakesNoMore)
{
    workspace.equipo.model().clear();
    for (int i = 0; i < maxCatalogueItems; ++i)
        workspace.equipo.model().add(QString::number(i), QString::number(i));
    choosePage(5);
    click(ui().cmdNewEquipo);
    frmEquipo().ui().txtNombre->setText(u"Uno más"_s);
    boxes.expect();
    save(&frmEquipo().window());
    expectReport(u"frmEquipos"_s);
    EXPECT_TRUE(frmEquipo().isVisible());
    EXPECT_EQ(workspace.equipo.items().count(), maxCatalogueItems);
}

namespace {

/// A field of an editor: its sub-item, its control, and whether that selects its text on focus.
struct Field {
    QString key;
    QString control;
    bool selectsAll;

    bool isCheck() const { return control.startsWith(u"chk"_s); }
};

struct Editor {
    CatalogueDocument& catalogue;
    platform::ListView* list;
    int page;
    QString name;  ///< its box, with "*" behind it if it selects its text
    QString boxes; ///< those of the fields, likewise

    std::vector<Field> fields() const
    {
        std::vector<Field> all;
        for (const QString& box : (boxes + u" imagen:txtImagen notas:txtNotas"_s).split(u' '))
            all.push_back(
                {box.section(u':', 0, 0), box.section(u':', 1).remove(u'*'), box.endsWith(u'*')});
        return all;
    }
};

std::vector<Editor> allEditors()
{
    Ui::FrmPrinc& ui = frmPrinc().ui();
    return {{workspace().armas, ui.lvArmas, 3, u"txtNombre*"_s,
             u"dp:txtDP* dm:txtDM* critico:txtCritico* categoria:txtCategoria* tipo:txtTipo* "
             "precio:txtPrecio* peso:txtPeso*"_s},
            {workspace().armaduras, ui.lvArmaduras, 4, u"txtNombre*"_s,
             u"bonificadorarmadura:txtBonificadorArmadura* "
             "bonificadordestreza:txtBonificadorDestreza* "
             "penalizadorarmadura:txtPenalizadorArmadura* falloconjuro:txtFalloConjuro* "
             "categoria:txtCategoria* precio:txtPrecio* peso:txtPeso*"_s},
            {workspace().equipo, ui.lvEquipo, 5, u"txtNombre"_s,
             u"magico:chkMagico precio:txtPrecio* peso:txtPeso*"_s},
            {workspace().conjuros, ui.lvConjuros, 6, u"txtNombre*"_s,
             u"tipo:txtTipo* nivel:txtNivel* magiasalvaje:chkMagiaSalvaje reversible:chkReversible "
             "escuela:txtEscuela* esfera:txtEsfera* alcance:txtAlcance* "
             "componentes:txtComponentes* duracion:txtDuracion* tlanzamiento:txtTlanzamiento* "
             "area:txtArea* ts:txtTS* origen:txtOrigen* materiales:txtMateriales*"_s}};
}

/// Keys and the pointer select a box's whole text, or nothing, when they give it the focus.
void expectFocus(QLineEdit& box, bool selectsAll)
{
    EXPECT_EQ(box.cursorPosition(), 0) << "a long text shows its start";
    auto* const other = box.window()->findChild<QToolButton*>(u"cmdGuardar"_s);
    for (const Qt::FocusReason reason : {Qt::TabFocusReason, Qt::BacktabFocusReason}) {
        box.deselect();
        other->setFocus();
        box.setFocus(reason);
        EXPECT_EQ(box.selectedText(), selectsAll ? box.text() : QString());
    }
    other->setFocus();
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
    QCoreApplication::processEvents();
    EXPECT_EQ(box.selectedText(), selectsAll ? box.text() : QString());
}

/// Checks that a control shows a field's text, and changes it.
void expectShown(QWidget* editor, const Field& field, const QString& text)
{
    SCOPED_TRACE(field.control.toStdString());
    if (auto* const box = editor->findChild<QCheckBox*>(field.control)) {
        EXPECT_EQ(box->isChecked(), text == u"Sí"_s);
        box->toggle();
    } else if (auto* const line = editor->findChild<QLineEdit*>(field.control)) {
        EXPECT_EQ(line->text(), text);
        expectFocus(*line, field.selectsAll);
        QTest::keyClicks(line, u"x"_s);
        EXPECT_EQ(line->text(), field.selectsAll ? u"x"_s : text)
            << "typing replaces what is selected; a picture can't be typed";
        line->setText(u"nuevo "_s + field.key);
    } else {
        auto* const notes = editor->findChild<QPlainTextEdit*>(field.control);
        ASSERT_TRUE(notes);
        EXPECT_EQ(notes->toPlainText(), text);
        notes->setFocus(Qt::TabFocusReason);
        EXPECT_FALSE(notes->textCursor().hasSelection());
        notes->setPlainText(u"nuevo "_s + field.key);
    }
}

} // namespace

TEST_F(CatalogueEditorsTest, EveryControlShowsAndWritesItsField)
{
    for (const Editor& kind : allEditors()) {
        ListItem& item = kind.catalogue.model().at(0);
        choosePage(kind.page);
        for (const QString& checked : {u"Sí"_s, u"No"_s, u"sí"_s}) {
            SCOPED_TRACE(item.text().toStdString());
            for (const Field& field : kind.fields())
                item.setSubItem(field.key, field.isCheck() ? checked : field.key.repeated(40));
            QWidget* const editor = open(kind.list, item.text());
            ASSERT_TRUE(editor && QTest::qWaitForWindowActive(editor));
            expectFocus(*in(editor, u"txtNombre"_s), kind.name.endsWith(u'*'));
            for (const Field& field : kind.fields())
                expectShown(editor, field, item.subItem(field.key));
            for (const QString& right : {u"txtPrecio"_s, u"txtPeso"_s}) {
                const auto* const box = editor->findChild<QLineEdit*>(right);
                EXPECT_TRUE(!box || box->alignment() & Qt::AlignRight);
            }
            save(editor);
            EXPECT_FALSE(editor->isVisible());
            const QString toggled = checked == u"Sí"_s ? u"No"_s : u"Sí"_s;
            for (const Field& field : kind.fields())
                EXPECT_EQ(item.subItem(field.key),
                          field.isCheck() ? toggled : u"nuevo "_s + field.key);
        }
    }
}

TEST_F(CatalogueEditorsTest, SavingARecordUnchangedChangesNoByte)
{
    QByteArray all; // what a field may hold
    for (int byte = 0; byte <= 0xFF; ++byte) {
        if (byte != ';' && byte != '\r' && byte != '\n')
            all += static_cast<char>(byte);
    }
    const QList<QByteArray> texts{all,
                                  "  dos  ",
                                  "\t",
                                  "\xA0 \xA0",
                                  "\xB6#\xB6",
                                  "e\xB4 n~",
                                  "\x85\x1F\x1E",
                                  "a\xB6\xB6 b ",
                                  QByteArray(40'000, 'w')};
    for (CatalogueDocument* const catalogue : workspace.catalogues()) {
        SCOPED_TRACE(catalogue->kind().file.toStdString());
        QByteArray bytes = catalogue->kind().headerLine.toLatin1() + "\r\n";
        for (int i = 0; i < texts.size(); ++i) {
            const QByteArray& text = texts[i];
            bytes += QByteArray::number(i) + text;
            for (const platform::ListColumn& field : catalogue->kind().fields) {
                const bool isCheck = field.key == u"magico"_s || field.key == u"reversible"_s ||
                                     field.key == u"magiasalvaje"_s;
                if (field.key == u"imagen"_s)
                    bytes += ';';
                else if (field.key != u"nombre"_s)
                    bytes += ';' + (isCheck ? QByteArray("S\xED") : text);
            }
            bytes += "\r\n";
        }
        replace(*catalogue, bytes);
        for (int i = 0; i < catalogue->items().count(); ++i) {
            const ListItem& item = catalogue->items().at(i);
            save(opened([&] {
                if (catalogue == &workspace.armas)
                    platform::FormRegistry::another<FrmArmas>().editItem(item);
                else if (catalogue == &workspace.armaduras)
                    platform::FormRegistry::another<FrmArmaduras>().editItem(item);
                else if (catalogue == &workspace.equipo)
                    platform::FormRegistry::another<FrmEquipo>().editItem(item);
                else
                    platform::FormRegistry::another<FrmConjuros>().editItem(item);
            }));
        }
        EXPECT_TRUE(editors().isEmpty());
        catalogue->save();
        EXPECT_TRUE(app.read(u"ini/"_s + catalogue->kind().file) == bytes);
    }
}

TEST_F(CatalogueEditorsTest, KeysHeldDownActOnceAndADoubleClickOpensTheSelectedItem)
{
    replace(workspace.armas, "Daga;1d4;;;;;;;;\r\nMaza;1d6;;;;;;;;\r\n");
    choosePage(3);
    QWidget* const rows = ui().lvArmas->viewport();
    const QPoint below(40, rows->height() - 4);
    const auto doubleClickBelow = [&] {
        QTest::mouseClick(rows, Qt::LeftButton, {}, below);
        QTest::mouseDClick(rows, Qt::LeftButton, {}, below);
    };
    EXPECT_FALSE(opened(doubleClickBelow)) << "nothing is selected";
    ui().lvArmas->select(workspace.armas.items().at(1));
    QWidget* const editor = opened(doubleClickBelow);
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->windowTitle(), u"Maza"_s);

    princ.window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&princ.window()));
    ui().lvArmas->setFocus();
    EXPECT_FALSE(opened([&] { press(ui().lvArmas, Qt::Key_Return, true); }));
    press(ui().lvArmas, Qt::Key_Delete, true); // asks nothing
    EXPECT_TRUE(opened([&] { press(ui().lvArmas, Qt::Key_Return, false); }));
    editor->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        press(in(editor, u"txtNombre"_s), key, true);
        EXPECT_TRUE(editor->isVisible());
    }
    press(in<QPlainTextEdit>(editor, u"txtNotas"_s), Qt::Key_Enter, true);
    EXPECT_TRUE(editor->isVisible());
    press(in(editor, u"txtNombre"_s), Qt::Key_Return, false);
    EXPECT_FALSE(editor->isVisible());
}

TEST_F(CatalogueEditorsTest, OnlyItsButtonTakesAPictureAway)
{
    app.write(u"ini/pics/armas/enorme.gif"_s, plainGif({900, 300}));
    replace(workspace.armas, "Daga;;;;;;;;ini\\pics\\armas\\enorme.gif;\r\n"
                             "Maza;;;;;;;;;\r\n");
    choosePage(3);
    QWidget* editor = open(ui().lvArmas, u"Daga"_s);
    const auto preview = [&] { return in<platform::PreviewBox>(editor, u"imgArma"_s)->picture(); };
    EXPECT_EQ(preview().size(), QSize(256, 85)) << "the file's own picture, but no larger";
    in(editor, u"txtImagen"_s)->setText(u"ini/pics/armas/nada.gif"_s);
    in(editor, u"txtImagen"_s)->clear();
    EXPECT_FALSE(preview().isNull()) << "what was shown stays";
    in(editor, u"txtImagen"_s)->setText(u"ini\\pics\\armas\\daga.gif"_s);
    EXPECT_EQ(preview().size(), QSize(32, 32));
    click(in<QToolButton>(editor, u"cmdSinImagen"_s));
    EXPECT_TRUE(preview().isNull());
    EXPECT_TRUE(in(editor, u"txtImagen"_s)->text().isEmpty());
    save(editor);
    const ListItem& daga = *workspace.armas.items().find(u"Daga"_s);
    EXPECT_TRUE(daga.subItem(u"imagen"_s).isEmpty());
    EXPECT_EQ(daga.icon(), 1) << "the list shows it until it is loaded again";
    ASSERT_TRUE(QFile::remove(app.path(u"ini/pics/armas/enorme.gif"_s)));
    editor = open(ui().lvArmas, u"Daga"_s);
    EXPECT_EQ(preview().width(), 32) << "and so does a further editor, as far as it is kept";

    // The frame is there also when it is empty; a wide picture isn't stretched.
    editor = open(ui().lvArmas, u"Maza"_s);
    EXPECT_TRUE(preview().isNull());
    auto* const box = in<platform::PreviewBox>(editor, u"imgArma"_s);
    const QImage empty = box->grab().toImage();
    EXPECT_NE(empty.pixel(0, empty.height() / 2), empty.pixel(empty.rect().center()));
    QImage wide(40, 10, QImage::Format_RGB32);
    wide.fill(Qt::red);
    box->setPicture(wide);
    const QImage shown = box->grab().toImage();
    EXPECT_EQ(shown.pixelColor(shown.rect().center()), QColor(Qt::red));
    EXPECT_EQ(shown.pixel(shown.width() / 2, 20), empty.pixel(shown.width() / 2, 20));
}
