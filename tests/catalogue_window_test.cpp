// The catalogue window and the picture picker, with real clicks and keys.
#include "catalogue_window_test.h"

#include "catalogue/frmArmaduras.h"
#include "catalogue/frmArmas.h"
#include "catalogue/frmListaImagenes.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

using platform::ListItem;
using platform::MsgBox::Answer;

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

TEST_F(CatalogueWindowTest, DeletingAsksAndTheNameIsFreeAgain)
{
    choosePage(3);
    click(ui().cmdDeleteArma); // nothing selected, nothing asked
    QWidget* const editor = open(ui().lvArmas, u"Daga"_s);
    const QByteArray file = app.read(u"ini/Armas.ini"_s);
    const int count = workspace.armas.items().count();
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        boxes.expect(answer);
        click(ui().cmdDeleteArma);
        EXPECT_EQ(boxes.asked().back().text, u"Está por eliminar 'Daga'.\r\n ¿Está seguro?"_s);
        EXPECT_EQ(boxes.asked().back().title, u"Advertencia"_s);
        EXPECT_EQ(workspace.armas.items().count(), answer == Answer::No ? count : count - 1);
    }
    EXPECT_EQ(app.read(u"ini/Armas.ini"_s), file);
    boxes.expect();
    save(editor);
    expectReport(u"frmArmas"_s);
    EXPECT_EQ(workspace.armas.items().count(), count - 1);

    click(ui().cmdNewArma);
    Ui::FrmArmas& fresh = frmArmas().ui();
    fresh.txtNombre->setText(u"Daga"_s);
    fresh.txtImagen->setText(u"ini\\pics\\armas\\daga.gif"_s);
    save(&frmArmas().window());
    EXPECT_FALSE(frmArmas().isVisible());
    EXPECT_GT(workspace.armas.items().find(u"Daga"_s)->icon(), 0);
}

TEST_F(CatalogueWindowTest, ASaveTellsWhatItWrote)
{
    for (const auto& [button, text] :
         {std::pair{ui().cmdGuardarArmas, u"Guardado: 84 armas"_s},
          {ui().cmdGuardarArmaduras, u"Guardado: 41 armaduras"_s},
          {ui().cmdGuardarEquipo, u"Guardado: 145 elementos de equipo"_s},
          {ui().cmdGuardarConjuros, u"Guardado: 99 conjuros"_s}}) {
        button->click();
        EXPECT_EQ(ui().lblEstado->text(), text);
    }
    EXPECT_FALSE(ui().avisos->isVisible());
    replace(workspace.equipo, "Cuerda;No;;;;\r\n");
    ui().cmdGuardarEquipo->click();
    EXPECT_EQ(ui().lblEstado->text(), u"Guardado: 1 elemento de equipo"_s);

    workspace.armas.model().at(4).setText(workspace.armas.items().at(2).text());
    boxes.expect();
    ui().cmdGuardarArmas->click();
    EXPECT_TRUE(boxes.asked().back().text.contains(u"filas 3"_s));
    EXPECT_TRUE(ui().lblEstado->text().isEmpty());

    EXPECT_THROW(replace(workspace.equipo, "Cuerda;No;;;;\r\nSaco\r\nVela\r\n"), platform::Error);
    ui().cmdGuardarEquipo->click();
    EXPECT_EQ(ui().lblEstado->text(), u"Guardado: 1 elemento de equipo"_s);
    EXPECT_TRUE(ui().avisos->isVisible());
    EXPECT_TRUE(ui().avisos->text().contains(u"sin leer por un error: 2."_s));
}

TEST_F(CatalogueWindowTest, AFilterHidesRowsAndNothingElse)
{
    replace(workspace.armas, "Maza;1d6;;;;;;;;De hierro\r\nÁrbol;;;;;;;;;\r\nDaga;1d4;;;;;;;;\r\n");
    choosePage(3);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&princ.window()));
    platform::ListView& list = *ui().lvArmas;
    platform::FilterBox& box = *ui().txtFiltroArmas;
    const auto* const count = princ.window().findChild<QLabel*>(u"lblFiltroArmas"_s);
    ASSERT_TRUE(count);
    EXPECT_FALSE(count->isVisible());
    const auto shown = [&] {
        QStringList texts;
        for (QModelIndex row = list.indexAt(QPoint(1, 1)); row.isValid();
             row = list.indexBelow(row))
            texts.append(row.data().toString());
        return texts.join(u' ');
    };
    const auto type = [&](const QString& text) {
        QTest::keyClick(&princ.window(), Qt::Key_F, Qt::ControlModifier);
        ASSERT_EQ(QApplication::focusWidget(), &box);
        QTest::keyClicks(&box, text);
    };
    list.select(workspace.armas.items().at(2));
    type(u"HIERRO maza"_s);
    EXPECT_EQ(shown(), u"Maza"_s);
    EXPECT_EQ(count->text(), u"1 de 3"_s);
    EXPECT_TRUE(count->isVisible());
    click(ui().cmdDeleteArma); // what is selected can't be seen: asks nothing
    EXPECT_EQ(list.selectedItem()->text(), u"Daga"_s);
    type(u"a"_s);
    EXPECT_EQ(shown(), u"Maza Árbol Daga"_s);
    list.header()->sectionClicked(0);
    EXPECT_EQ(shown(), u"Árbol Daga Maza"_s);
    type(u"arbol"_s);
    list.header()->sectionClicked(1);
    EXPECT_EQ(shown(), u"Árbol"_s);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &list);
    EXPECT_EQ(list.selectedItem()->text(), u"Árbol"_s);
    click(ui().cmdGuardarArmas);
    EXPECT_EQ(app.read(u"ini/Armas.ini"_s).count('\n'), 4) << "all items are saved";

    // An item that a filter hides is removed, made and changed as any other.
    workspace.armas.remove(u"Maza"_s);
    EXPECT_EQ(count->text(), u"1 de 2"_s);
    click(ui().cmdNewArma);
    frmArmas().ui().txtNombre->setText(u"Arco"_s);
    save(&frmArmas().window());
    EXPECT_TRUE(box.text().isEmpty());
    EXPECT_EQ(list.selectedItem()->text(), u"Arco"_s);
    EXPECT_EQ(shown(), u"Árbol Arco Daga"_s);
    box.setText(u"daga"_s);
    QWidget* const editor = open(&list, u"Daga"_s);
    in(editor, u"txtNombre"_s)->setText(u"Puñal"_s);
    save(editor);
    EXPECT_EQ(list.selectedItem()->text(), u"Puñal"_s);
    EXPECT_EQ(shown(), u"Árbol Arco Puñal"_s);

    activate();
    type(u"x"_s);
    EXPECT_EQ(shown(), QString());
    EXPECT_EQ(count->text(), u"0 de 3"_s);
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_TRUE(box.text().isEmpty());
    EXPECT_EQ(shown(), u"Árbol Arco Puñal"_s);
    EXPECT_FALSE(count->isVisible());
}

TEST_F(CatalogueWindowTest, KeysUndoWhatWasDoneToTheListShown)
{
    CatalogueDocument& armas = workspace.armas;
    choosePage(3);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&princ.window()));
    platform::ListView& list = *ui().lvArmas;
    const auto key = [&](QKeyCombination keys) {
        QTest::keyClick(QApplication::focusWidget(), keys.key(), keys.keyboardModifiers());
    };
    const auto undo = [&] { key(Qt::CTRL | Qt::Key_Z); };
    const ListItem::Contents daga = armas.items().find(u"Daga"_s)->contents();
    const int row = armas.items().positionOf(*armas.items().find(u"Daga"_s));
    list.select(*armas.items().find(u"Daga"_s));
    list.setFocus();
    boxes.expect(Answer::Yes);
    key(Qt::Key_Delete);
    EXPECT_EQ(action(u"deshacer"_s).text(), u"&Deshacer eliminar «Daga»"_s);
    ui().txtFiltroArmas->setText(u"maza"_s);
    undo();
    ASSERT_TRUE(list.selectedItem());
    EXPECT_TRUE(list.selectedItem()->contents() == daga);
    EXPECT_EQ(armas.items().positionOf(*list.selectedItem()), row);
    EXPECT_TRUE(ui().txtFiltroArmas->text().isEmpty()) << "it hid what came back";
    EXPECT_EQ(action(u"rehacer"_s).text(), u"&Rehacer eliminar «Daga»"_s);
    key(Qt::CTRL | Qt::Key_Y);
    EXPECT_FALSE(armas.items().find(u"Daga"_s));
    undo();
    key(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    EXPECT_FALSE(armas.items().find(u"Daga"_s));
    undo();

    QWidget* const editor = open(&list, u"Daga"_s);
    in(editor, u"txtNombre"_s)->setText(u"Sal & "_s + QString(99, u'x'));
    save(editor);
    EXPECT_LT(action(u"deshacer"_s).text().size(), 99);
    EXPECT_TRUE(action(u"deshacer"_s).text().startsWith(u"&Deshacer editar «Sal && x"_s));
    EXPECT_TRUE(list.selectedItem()->text().startsWith(u"Sal"_s));

    // What is typed is undone where it was typed; another page has steps of its own.
    activate();
    platform::FilterBox& box = *ui().txtFiltroArmas;
    box.setFocus();
    QTest::keyClicks(&box, u"sal"_s);
    undo();
    EXPECT_TRUE(box.text().isEmpty());
    undo();
    EXPECT_FALSE(armas.items().find(u"Daga"_s)) << "the box has nothing left to undo";
    list.setFocus();
    undo();
    box.setFocus();
    QTest::keyClicks(&box, u"daga"_s);
    undo();
    key(Qt::CTRL | Qt::Key_Y);
    EXPECT_EQ(box.text(), u"daga"_s);
    EXPECT_TRUE(armas.items().find(u"Daga"_s));
    for (const int other : {4, 0}) {
        choosePage(other);
        EXPECT_FALSE(action(u"deshacer"_s).isEnabled());
        EXPECT_EQ(action(u"deshacer"_s).text(), u"&Deshacer"_s);
        undo();
    }
    EXPECT_TRUE(list.selectedItem()->contents() == daga);
}

TEST_F(CatalogueWindowTest, CommandsActOnThePageShown)
{
    const auto key = [&](QKeyCombination keys) {
        QTest::keyClick(&princ.window(), keys.key(), keys.keyboardModifiers());
    };
    for (int tab = 0; tab < 7; ++tab) {
        SCOPED_TRACE(tab);
        activate();
        EXPECT_EQ(ui().TabStrip->currentIndex(), tab);
        EXPECT_TRUE(action(u"ver"_s + ui().TabStrip->tabText(tab)).isChecked());
        for (const QString& command : {u"guardar"_s, u"nuevo"_s, u"buscar"_s})
            EXPECT_EQ(action(command).isEnabled(), tab > 2);
        auto* const list =
            princ.window().findChild<platform::ListView*>(u"lv"_s + ui().TabStrip->tabText(tab));
        ASSERT_EQ(list != nullptr, tab > 2);
        ui().lblEstado->clear();
        key(Qt::CTRL | Qt::Key_S);
        EXPECT_EQ(ui().lblEstado->text().isEmpty(), tab < 3);
        activate();
        const auto newItem = [&] { key(Qt::CTRL | Qt::Key_N); };
        QWidget* const editor = opened(newItem);
        EXPECT_EQ(editor != nullptr, tab > 2);
        if (!list) {
            key(tab == 0 ? Qt::CTRL | Qt::Key_PageDown : Qt::CTRL | Qt::Key_Tab);
            continue;
        }
        editor->close();
        activate();
        for (const QString& command : {u"editar"_s, u"eliminar"_s}) {
            list->clearSelection();
            EXPECT_FALSE(action(command).isEnabled());
            list->selectFirst();
            EXPECT_TRUE(action(command).isEnabled());
        }
        const auto enter = [&](QWidget* at) {
            at->setFocus();
            return opened([&] { QTest::keyClick(at, Qt::Key_Return); });
        };
        EXPECT_FALSE(enter(ui().cmdDungeon));
        QWidget* const opened = enter(list);
        ASSERT_TRUE(opened);
        EXPECT_EQ(opened->windowTitle(), list->selectedItem()->text());
        opened->close();

        // Tab goes through the page, and round.
        activate();
        ui().TabStrip->setFocus();
        QStringList way;
        for (int i = 0; i < 8; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            way.append(QApplication::focusWidget()->objectName());
        }
        EXPECT_TRUE(way[0].startsWith(u"txtFiltro"_s));
        EXPECT_EQ(way[1], list->objectName());
        EXPECT_TRUE(way[2].startsWith(u"cmdNew"_s) && way[3].startsWith(u"cmdDelete"_s) &&
                    way[4].startsWith(u"cmdGuardar"_s));
        EXPECT_EQ(way.mid(5), QStringList({u"cmdMapa"_s, u"cmdDungeon"_s, u"TabStrip"_s}));
        list->setFocus();
        key(tab == 3 ? Qt::CTRL | Qt::Key_PageDown : Qt::CTRL | Qt::Key_Tab);
        EXPECT_TRUE(tab == 6 || QApplication::focusWidget()->objectName().startsWith(u"lv"_s));
    }
    EXPECT_EQ(ui().TabStrip->currentIndex(), 0) << "round";
    key(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab);
    key(Qt::CTRL | Qt::Key_PageUp);
    EXPECT_EQ(ui().TabStrip->currentIndex(), 5);
    action(u"verGente"_s).trigger();
    action(u"verGente"_s).trigger();
    EXPECT_TRUE(action(u"verGente"_s).isChecked() && ui().Frame_1->isVisible());
}

TEST_F(CatalogueWindowTest, PicturesTakeWhatIsShownOfThem)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "freed memory is held back";
#endif
    QFile status(u"/proc/self/status"_s);
    const auto megabytes = [&](const QByteArray& which) {
        if (!status.open(QIODevice::ReadOnly))
            return 0;
        const QByteArray all = status.readAll();
        status.close();
        return all.mid(all.indexOf(which) + which.size()).trimmed().split(' ').at(0).toInt() / 1024;
    };
    if (megabytes("VmRSS:") == 0)
        GTEST_SKIP() << "no way to measure";
    const QByteArray gif = plainGif({4000, 3000});
    for (const auto& name : {u"ini/pics/equipo/a.gif"_s, u"ini/pics/equipo/b.gif"_s})
        app.write(name, gif);
    frmListaImagenes().camino = u"ini\\pics\\equipo"_s;
    frmListaImagenes().mascara = u"*.gif"_s;
    const auto openPicker = [] {
        frmListaImagenes().listImages();
        frmListaImagenes().show();
        frmListaImagenes().window().grab();
        frmListaImagenes().hide();
    };
    const int before = megabytes("VmRSS:");
    openPicker();
    EXPECT_TRUE(frmListaImagenes().ui().lvListaImagenes->model()->index(0, 0).data() == u"a.gif"_s);
    EXPECT_LT(megabytes("VmHWM:") - before, 150) << "one large picture at a time";
    EXPECT_LT(megabytes("VmRSS:") - before, 30);
    ASSERT_TRUE(QFile::remove(app.path(u"ini/pics/equipo/b.gif"_s)));
    app.write(u"ini/pics/equipo/a.gif"_s, onePixelGif());
    const int one = megabytes("VmRSS:");
    for (int i = 0; i < 20; ++i)
        openPicker();
    EXPECT_LT(megabytes("VmRSS:") - one, 10) << "icons go with their list";
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
    platform::PreviewBox& preview = *in<platform::PreviewBox>(editor, u"imgArma"_s);
    const QImage before = preview.picture();
    const auto doubleClick = [&](int row) {
        QWidget* const list = picker->lvListaImagenes->viewport();
        picker->lvListaImagenes->scrollTo(picker->lvListaImagenes->model()->index(row, 0));
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

    // Enter chooses, as the double click does; the current picture is selected.
    app.write(u"ini/pics/armas/ab\u00B6.gif"_s, onePixelGif());
    in(editor, u"txtImagen"_s)->setText(u"INI/pics/armas/daga.gif"_s);
    browse(editor);
    EXPECT_EQ(picker->lvListaImagenes->currentIndex().data(), u"daga.gif"_s);
    ASSERT_TRUE(picker->lvListaImagenes->selectedItem());
    EXPECT_EQ(picker->lvListaImagenes->selectedItem()->text(), u"daga.gif"_s);
    picker->lvListaImagenes->setCurrentIndex(picker->lvListaImagenes->model()->index(0, 0));
    press(picker->lvListaImagenes, Qt::Key_Return, true);
    EXPECT_TRUE(frmListaImagenes().isVisible());
    press(picker->lvListaImagenes, Qt::Key_Return, false);
    EXPECT_FALSE(frmListaImagenes().isVisible());
    EXPECT_EQ(in(editor, u"txtImagen"_s)->text(), u"ini\\pics\\armas\\ab\u00B6.gif"_s);
    in(editor, u"txtImagen"_s)->clear();

    browse(editor);
    EXPECT_FALSE(picker->lvListaImagenes->selectedItem());
    QTest::keyClick(picker->lvListaImagenes, Qt::Key_Return);
    EXPECT_TRUE(frmListaImagenes().isVisible()) << "nothing to choose";
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
