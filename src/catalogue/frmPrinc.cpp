#include "catalogue/frmPrinc.h"

#include "app/frmVersiones.h"
#include "catalogue/frmArmaduras.h"
#include "catalogue/frmArmas.h"
#include "catalogue/frmConjuros.h"
#include "catalogue/frmEquipo.h"
#include "catalogue/frmProgreso.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/picture_box.h"

using namespace Qt::StringLiterals;

namespace {

void showPicture(QToolButton& button, const QString& name)
{
    button.setIcon(platform::pixelIcon({QImage(u":/pictures/%1.gif"_s.arg(name))}));
}

/// Shows a kind's shared editor for a new item.
template <auto Shared>
void newItem()
{
    Shared().createItem();
}

/// Opens an item in a further window of its editor.
template <typename Editor>
void openItem(const platform::ListItem& item)
{
    platform::FormRegistry::another<Editor>().editItem(item);
}

} // namespace

FrmPrinc& frmPrinc()
{
    return platform::FormRegistry::shared<FrmPrinc>();
}

const platform::ListItem* FrmPrinc::Page::chosen() const
{
    const platform::ListItem* const selected = list->selectedItem();
    return selected && list->isShown(*selected) ? selected : nullptr;
}

void FrmPrinc::setUp(const Page& page)
{
    platform::ListView& list = *page.list;
    CatalogueDocument& document = *page.document;
    list.setItems(document.model(), document.pictures());
    page.filter->filter(list);
    QObject::connect(&document, &CatalogueDocument::itemEdited, &list,
                     [&list](const platform::ListItem& item) { list.select(item); });
    list.setDragEnabled(true); // nothing takes what is dropped: the drag is only seen

    showPicture(*page.newButton, u"elemento_nuevo"_s);
    showPicture(*page.deleteButton, u"elemento_borrar"_s);
    showPicture(*page.saveButton, u"guardar"_s);
    const auto onClick = [&](QToolButton* button, const std::function<void()>& action) {
        QObject::connect(button, &QToolButton::clicked, &window(),
                         [action] { platform::runCommand(action); });
    };
    onClick(page.newButton, page.newItem);
    onClick(page.deleteButton, [this, &page] { deleteChosen(page); });
    onClick(page.saveButton, [this, &document] { save(document); });
    QObject::connect(&list, &platform::ListView::dblClick, &window(),
                     [this, &page] { platform::runCommand([&] { openChosen(page); }); });

    const auto follow = [this] { commands_->update(); };
    QObject::connect(&document.history(), &History::changed, &window(), follow);
    QObject::connect(&list, &platform::ListView::rowsShownChanged, &window(), follow);
    QObject::connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, &window(),
                     follow);
}

void FrmPrinc::Form_Load()
{
    Ui::FrmPrinc& c = ui();
    frames_ = {c.Frame_0, c.Frame_1, c.Frame_2, c.Frame_3, c.Frame_4, c.Frame_5, c.Frame_6};
    frameActual_ = 0;
    for (const QString& title : {u"Personajes"_s, u"Gente"_s, u"Monstruos"_s, u"Armas"_s,
                                 u"Armaduras"_s, u"Equipo"_s, u"Conjuros"_s})
        c.TabStrip->addTab(title);
    QObject::connect(c.TabStrip, &QTabBar::currentChanged, &window(),
                     [this](int tab) { TabStrip_Click(tab); });

    Workspace& all = workspace();
    pages_ = {Page{&all.armas, c.lvArmas, c.txtFiltroArmas, c.cmdNewArma, c.cmdDeleteArma,
                   c.cmdGuardarArmas, &newItem<frmArmas>, &openItem<FrmArmas>},
              Page{&all.armaduras, c.lvArmaduras, c.txtFiltroArmaduras, c.cmdNewArmadura,
                   c.cmdDeleteArmadura, c.cmdGuardarArmaduras, &newItem<frmArmaduras>,
                   &openItem<FrmArmaduras>},
              Page{&all.equipo, c.lvEquipo, c.txtFiltroEquipo, c.cmdNewEquipo, c.cmdDeleteEquipo,
                   c.cmdGuardarEquipo, &newItem<frmEquipo>, &openItem<FrmEquipo>},
              Page{&all.conjuros, c.lvConjuros, c.txtFiltroConjuros, c.cmdNewConjuro,
                   c.cmdDeleteConjuro, c.cmdGuardarConjuros, &newItem<frmConjuros>,
                   &openItem<FrmConjuros>}};
    for (const Page& page : pages_)
        setUp(page);
    loadCommands();
}

void FrmPrinc::Form_Unload()
{
    platform::endProgram();
}

const FrmPrinc::Page* FrmPrinc::page() const
{
    const std::size_t before = frames_.size() - pages_.size();
    const auto shown = static_cast<std::size_t>(frameActual_);
    return shown < before ? nullptr : &pages_.at(shown - before);
}

void FrmPrinc::TabStrip_Click(int tab)
{
    if (tab == frameActual_)
        return;
    QFrame& before = *frames_.at(static_cast<std::size_t>(frameActual_));
    const bool hadFocus = window().focusWidget() && before.isAncestorOf(window().focusWidget());
    frames_.at(static_cast<std::size_t>(tab))->setVisible(true);
    before.setVisible(false);
    frameActual_ = tab;
    if (hadFocus)
        page() ? page()->list->setFocus() : ui().TabStrip->setFocus();
    commands_->update();
}

void FrmPrinc::showPage(const CatalogueDocument& document)
{
    show(); // loads the pages
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        if (pages_[i].document == &document)
            ui().TabStrip->setCurrentIndex(static_cast<int>(frames_.size() - pages_.size() + i));
    }
}

void FrmPrinc::turnPage(int step)
{
    const int tabs = ui().TabStrip->count();
    ui().TabStrip->setCurrentIndex((frameActual_ + step + tabs) % tabs);
}

void FrmPrinc::openChosen(const Page& page)
{
    if (const platform::ListItem* const item = page.chosen())
        page.open(*item);
}

void FrmPrinc::deleteChosen(const Page& page)
{
    const platform::ListItem* const item = page.chosen();
    if (!item)
        return;
    const QString key = item->key();
    const auto answer = platform::MsgBox::show(
        u"Está por eliminar '%1'.\r\n ¿Está seguro?"_s.arg(item->text()), u"Advertencia"_s,
        platform::MsgBox::Icon::Question, platform::MsgBox::Buttons::YesNo);
    if (answer == platform::MsgBox::Answer::Yes)
        page.document->remove(key);
}

void FrmPrinc::save(CatalogueDocument& catalogue)
{
    platform::runCommand([&] {
        const platform::WaitCursor wait;
        std::optional<FrmProgreso::Run> progress;
        if (!catalogue.items().isEmpty())
            progress.emplace(catalogue.items().count());
        ui().lblEstado->clear();
        const SavedCatalogue saved = catalogue.save([] { frmProgreso().advance(); });
        ui().lblEstado->setText(u"Guardado: "_s + catalogue.kind().counted(saved.records));
        ui().avisos->tell(saved.notices);
        if (saved.other)
            tellOfOther(*ui().avisos, *saved.other);
    });
}
