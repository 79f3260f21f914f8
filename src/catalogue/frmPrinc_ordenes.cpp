// What the user can have the catalogue window do: the one table behind its menus and shortcuts.

#include "app/frmAbout.h"
#include "app/frmManual.h"
#include "app/frmVersiones.h"
#include "catalogue/frmPrinc.h"
#include "localmap/frmMapaLocal.h"
#include "worldmap/frmMapa.h"

#include <QActionGroup>

using namespace Qt::StringLiterals;

namespace {

/// The pages by their tabs, each with the letter that chooses it in the menu.
const QStringList& pageTexts()
{
    static const QStringList texts{u"&Personajes"_s, u"&Gente"_s,  u"&Monstruos"_s, u"&Armas"_s,
                                   u"A&rmaduras"_s,  u"&Equipo"_s, u"&Conjuros"_s};
    return texts;
}

QString pageKey(int tab)
{
    return u"ver"_s + QString(pageTexts()[tab]).remove(u'&');
}

std::vector<platform::Menu> menus()
{
    platform::Menu pages{u"&Ver"_s, {}};
    for (int tab = 0; tab < pageTexts().size(); ++tab)
        pages.keys.append(pageKey(tab));
    pages.keys += {{}, u"paginaSiguiente"_s, u"paginaAnterior"_s};
    return {{u"&Archivo"_s, {u"guardar"_s, u"versiones"_s}},
            {u"&Edición"_s,
             {u"deshacer"_s,
              u"rehacer"_s,
              {},
              u"nuevo"_s,
              u"editar"_s,
              u"eliminar"_s,
              {},
              u"buscar"_s}},
            pages,
            {u"&Mapa"_s, {u"mapa"_s, u"dungeon"_s}},
            {u"A&yuda"_s, {u"manual"_s, u"acercaDe"_s}}};
}

} // namespace

/// What is done to the items of the page shown.
std::vector<platform::Command> FrmPrinc::itemCommands()
{
    const auto hasPage = [this] { return page() != nullptr; };
    const auto hasChosen = [this] { return page() && page()->chosen(); };
    return {
        {.key = u"guardar"_s,
         .text = u"&Guardar"_s,
         .shortcuts = {QKeySequence(u"Ctrl+S"_s)},
         .run = [this](bool) { save(*page()->document); },
         .isPossible = hasPage,
         .textNow =
             [this] {
                 return page() ? u"&Guardar "_s + page()->document->kind().manyItems
                               : u"&Guardar"_s;
             }},
        {.key = u"versiones"_s,
         .text = u"&Versiones anteriores…"_s,
         .run = [this](bool) { frmVersiones().showFor(cataloguePath(page()->document->kind())); },
         .isPossible = hasPage},
        {.key = u"deshacer"_s,
         .text = u"&Deshacer"_s,
         .shortcuts = {QKeySequence(u"Ctrl+Z"_s)},
         .run = [this](bool) { page()->document->undo(); },
         .isPossible = [this] { return page() && page()->document->history().canUndo(); },
         .textNow =
             [this] {
                 return platform::stepText(
                     u"&Deshacer"_s, page() ? page()->document->history().undoText() : QString());
             }},
        {.key = u"rehacer"_s,
         .text = u"&Rehacer"_s,
         .shortcuts = {QKeySequence(u"Ctrl+Y"_s), QKeySequence(u"Ctrl+Shift+Z"_s)},
         .run = [this](bool) { page()->document->redo(); },
         .isPossible = [this] { return page() && page()->document->history().canRedo(); },
         .textNow =
             [this] {
                 return platform::stepText(
                     u"&Rehacer"_s, page() ? page()->document->history().redoText() : QString());
             }},
        {.key = u"nuevo"_s,
         .text = u"&Nuevo elemento…"_s,
         .shortcuts = {QKeySequence(u"Ctrl+N"_s)},
         .run = [this](bool) { page()->newItem(); },
         .isPossible = hasPage},
        {.key = u"editar"_s,
         .text = u"&Editar…"_s,
         .shortcuts = {QKeySequence(Qt::Key_Enter), QKeySequence(Qt::Key_Return)},
         .run = [this](bool) { openChosen(*page()); },
         .isPossible = hasChosen},
        {.key = u"eliminar"_s,
         .text = u"E&liminar…"_s,
         .shortcuts = {QKeySequence(Qt::Key_Delete)},
         .run = [this](bool) { deleteChosen(*page()); },
         .isPossible = hasChosen},
        {.key = u"buscar"_s,
         .text = u"&Buscar"_s,
         .shortcuts = {QKeySequence(u"Ctrl+F"_s)},
         .run = [this](bool) { page()->filter->beginSearch(); },
         .isPossible = hasPage},
    };
}

/// What goes to another page or window.
std::vector<platform::Command> FrmPrinc::viewCommands()
{
    std::vector<platform::Command> all{
        {.key = u"paginaSiguiente"_s,
         .text = u"Página &siguiente"_s,
         .shortcuts = {QKeySequence(u"Ctrl+Tab"_s), QKeySequence(u"Ctrl+PgDown"_s)},
         .run = [this](bool) { turnPage(1); }},
        {.key = u"paginaAnterior"_s,
         .text = u"Página a&nterior"_s,
         .shortcuts = {QKeySequence(u"Ctrl+Shift+Tab"_s), QKeySequence(u"Ctrl+PgUp"_s)},
         .run = [this](bool) { turnPage(-1); }},
        {.key = u"mapa"_s, .text = u"&Mapa del mundo"_s, .run = [](bool) { frmMapa().show(); }},
        {.key = u"dungeon"_s,
         .text = u"Mapa &local (Dungeon)"_s,
         .run = [](bool) { frmMapaLocal().show(); }},
        {.key = u"manual"_s,
         .text = u"&Manual"_s,
         .shortcuts = {QKeySequence(Qt::Key_F1)},
         .run = [](bool) { frmManual().showFor(u"frmPrinc"_s); }},
        {.key = u"acercaDe"_s,
         .text = u"&Acerca de Kestrune"_s,
         .run = [](bool) { frmAbout().showModal(); }},
    };
    for (int tab = 0; tab < pageTexts().size(); ++tab)
        all.push_back({.key = pageKey(tab),
                       .text = pageTexts()[tab],
                       .isTwoState = true,
                       .run = [this, tab](bool) { ui().TabStrip->setCurrentIndex(tab); }});
    return all;
}

void FrmPrinc::loadCommands()
{
    std::vector<platform::Command> all = itemCommands();
    for (platform::Command& command : viewCommands())
        all.push_back(std::move(command));
    commands_.emplace(window(), std::move(all));
    commands_->fill(*ui().menuBar, menus());
    window().layout()->setMenuBar(ui().menuBar);

    const platform::CommandSet& set = *commands_;
    auto* const pageShown = new QActionGroup(&window());
    for (int tab = 0; tab < pageTexts().size(); ++tab)
        pageShown->addAction(&set[pageKey(tab)]);
    QObject::connect(ui().TabStrip, &QTabBar::currentChanged, &window(),
                     [&set](int tab) { set[pageKey(tab)].setChecked(true); });
    set[pageKey(frameActual_)].setChecked(true);

    // Keys that a button or a box has a use of its own for.
    for (const QString& key : {u"editar"_s, u"eliminar"_s}) {
        set[key].setShortcutContext(Qt::WidgetShortcut);
        for (const Page& page : pages_)
            page.list->addAction(&set[key]);
    }
    QObject::connect(ui().cmdMapa, &QPushButton::clicked, &set[u"mapa"_s], &QAction::trigger);
    QObject::connect(ui().cmdDungeon, &QPushButton::clicked, &set[u"dungeon"_s], &QAction::trigger);
}
