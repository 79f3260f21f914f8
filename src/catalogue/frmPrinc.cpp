#include "catalogue/frmPrinc.h"

#include "app/frmManual.h"
#include "catalogue/frmArmaduras.h"
#include "catalogue/frmArmas.h"
#include "catalogue/frmConjuros.h"
#include "catalogue/frmEquipo.h"
#include "catalogue/frmProgreso.h"
#include "localmap/frmMapaLocal.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/picture_box.h"
#include "worldmap/frmMapa.h"

#include <QAction>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace {

void showPicture(QToolButton& button, const QString& name)
{
    button.setIcon(platform::pixelIcon({QImage(u":/pictures/%1.gif"_s.arg(name))}));
}

/// What runs an action as a command of the user.
template <typename Action>
auto command(Action action)
{
    return [action] { platform::runCommand(action); };
}

/// Opens the list's selected item in a further window of its editor, if there is one.
template <typename Editor>
void openSelected(platform::ListView& list)
{
    const platform::ListItem* const item = list.selectedItem();
    if (item && list.isShown(*item))
        platform::FormRegistry::another<Editor>().editItem(*item);
}

} // namespace

FrmPrinc& frmPrinc()
{
    return platform::FormRegistry::shared<FrmPrinc>();
}

void FrmPrinc::createColumns(Catalogue& catalogue)
{
    catalogue.items.setColumns(catalogue.kind.fields);
}

template <typename Editor>
void FrmPrinc::setUp(Catalogue& catalogue, const Page& page, Editor& (*shared)())
{
    platform::ListView& list = *page.list;
    list.setItems(catalogue.items, catalogue.pictures);
    page.filter->filter(list);
    list.setDragEnabled(true); // nothing takes what is dropped: the drag is only seen
    const auto open = command([&list] { openSelected<Editor>(list); });
    const auto remove = command([this, &catalogue, &list] { deleteSelected(catalogue, list); });
    QObject::connect(&list, &platform::ListView::dblClick, &window(), open);
    const auto onKey = [&](Qt::Key key, const auto& action) {
        auto* const shortcut = new QShortcut(key, &list, nullptr, nullptr, Qt::WidgetShortcut);
        shortcut->setAutoRepeat(false); // a key held down acts once
        QObject::connect(shortcut, &QShortcut::activated, &window(), action);
    };
    onKey(Qt::Key_Return, open);
    onKey(Qt::Key_Enter, open);
    onKey(Qt::Key_Delete, remove);
    auto* const search = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), page.filter);
    QObject::connect(search, &QShortcut::activated, page.filter, &platform::FilterBox::beginSearch);

    showPicture(*page.newItem, u"elemento_nuevo"_s);
    showPicture(*page.deleteItem, u"elemento_borrar"_s);
    showPicture(*page.save, u"guardar"_s);
    QObject::connect(page.newItem, &QToolButton::clicked, &window(),
                     command([shared] { shared().createItem(); }));
    QObject::connect(page.deleteItem, &QToolButton::clicked, &window(), remove);
    QObject::connect(page.save, &QToolButton::clicked, &window(),
                     [this, &catalogue] { save(catalogue); });
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

    setUp(armas, {c.lvArmas, c.txtFiltroArmas, c.cmdNewArma, c.cmdDeleteArma, c.cmdGuardarArmas},
          &frmArmas);
    setUp(armaduras,
          {c.lvArmaduras, c.txtFiltroArmaduras, c.cmdNewArmadura, c.cmdDeleteArmadura,
           c.cmdGuardarArmaduras},
          &frmArmaduras);
    setUp(equipo,
          {c.lvEquipo, c.txtFiltroEquipo, c.cmdNewEquipo, c.cmdDeleteEquipo, c.cmdGuardarEquipo},
          &frmEquipo);
    setUp(conjuros,
          {c.lvConjuros, c.txtFiltroConjuros, c.cmdNewConjuro, c.cmdDeleteConjuro,
           c.cmdGuardarConjuros},
          &frmConjuros);
    QObject::connect(c.cmdDungeon, &QPushButton::clicked, &window(),
                     command([] { frmMapaLocal().show(); }));
    QObject::connect(c.cmdMapa, &QPushButton::clicked, &window(),
                     command([] { frmMapa().show(); }));
    auto* const manual = new QAction(u"&Manual"_s, &window());
    manual->setObjectName(u"manual"_s);
    manual->setShortcut(Qt::Key_F1);
    window().addAction(manual);
    QObject::connect(manual, &QAction::triggered, &window(),
                     command([] { frmManual().showFor(u"frmPrinc"_s); }));
}

void FrmPrinc::Form_Unload()
{
    platform::endProgram();
}

void FrmPrinc::TabStrip_Click(int tab)
{
    if (tab == frameActual_)
        return;
    frames_.at(static_cast<std::size_t>(tab))->setVisible(true);
    frames_.at(static_cast<std::size_t>(frameActual_))->setVisible(false);
    frameActual_ = tab;
}

void FrmPrinc::deleteSelected(Catalogue& catalogue, platform::ListView& list)
{
    const platform::ListItem* const item = list.selectedItem();
    if (!item || !list.isShown(*item))
        return;
    const QString key = item->key();
    const auto answer = platform::MsgBox::show(
        u"Está por eliminar '%1'.\r\n ¿Está seguro?"_s.arg(item->text()), u"Advertencia"_s,
        platform::MsgBox::Icon::Question, platform::MsgBox::Buttons::YesNo);
    if (answer != platform::MsgBox::Answer::Yes)
        return;
    if (const platform::ListItem* const still = catalogue.items.find(key))
        catalogue.items.remove(*still);
}

void FrmPrinc::save(Catalogue& catalogue)
{
    platform::runCommand([&] {
        const platform::WaitCursor wait;
        std::optional<FrmProgreso::Run> progress;
        if (!catalogue.items.isEmpty())
            progress.emplace(catalogue.items.count());
        ui().lblEstado->clear();
        const SavedCatalogue saved = saveCatalogue(catalogue, [] { frmProgreso().advance(); });
        ui().lblEstado->setText(u"Guardado: "_s + catalogue.kind.counted(saved.records));
        ui().avisos->tell(saved.notices);
    });
}
