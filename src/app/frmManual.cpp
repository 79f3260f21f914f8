#include "app/frmManual.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTextBlock>
#include <QWindow>
#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int listWidth = 190;

/// The page that tells of a window.
QString pageOf(const QString& window)
{
    static const std::map<QString, QString> pages{
        {u"frmAbout"_s, u"inicio"_s},
        {u"frmClima"_s, u"clima"_s},
        {u"frmMapaLocal"_s, u"mapa_local"_s},
        {u"frmTilesLocales"_s, u"mapa_local"_s},
        {u"frmPrinc"_s, u"catalogo"_s},
        {u"frmArmas"_s, u"catalogo"_s},
        {u"frmArmaduras"_s, u"catalogo"_s},
        {u"frmEquipo"_s, u"catalogo"_s},
        {u"frmConjuros"_s, u"catalogo"_s},
        {u"frmListaImagenes"_s, u"catalogo"_s},
        {u"frmVersiones"_s, u"nada_se_pierde"_s},
    };
    const auto page = pages.find(window);
    return page == pages.end() ? u"mapa"_s : page->second;
}

} // namespace

FrmManual& frmManual()
{
    return platform::FormRegistry::shared<FrmManual>();
}

const std::vector<FrmManual::Page>& FrmManual::pages()
{
    static const std::vector<Page> all{
        {u"inicio"_s, u"Inicio"_s},
        {u"mapa"_s, u"La ventana del mapa"_s},
        {u"ver"_s, u"Ver el mapa"_s},
        {u"clima"_s, u"El clima"_s},
        {u"catalogo"_s, u"Los catálogos"_s},
        {u"mapa_local"_s, u"Los mapas locales"_s},
        {u"nombres"_s, u"Nombres inventados"_s},
        {u"nada_se_pierde"_s, u"Nada se pierde"_s},
        {u"archivos"_s, u"Los archivos"_s},
        {u"terrenos"_s, u"Terrenos y lugares"_s},
        {u"linea_de_ordenes"_s, u"Sin ventanas"_s},
    };
    return all;
}

void FrmManual::Form_Load()
{
    Ui::FrmManual& controls = ui();
    for (const Page& page : pages())
        controls.lvPaginas->addItem(page.title);
    // To the left, as the palettes, which stand above all windows, are on the right.
    if (const QWidget* const active = QApplication::activeWindow())
        moveTo(active->frameGeometry().topLeft());
    controls.separador->setSizes({listWidth, window().width() - listWidth});
    controls.separador->setStretchFactor(1, 1);
    QObject::connect(controls.lvPaginas, &QListWidget::currentRowChanged, &window(),
                     [this](int row) {
                         if (row >= 0)
                             ui().txtManual->goTo(pages().at(static_cast<std::size_t>(row)).name);
                     });
    QObject::connect(controls.txtManual, &QTextBrowser::historyChanged, &window(),
                     [this] { pageShown(); });
    QObject::connect(controls.txtManual, &QTextBrowser::backwardAvailable, controls.cmdAtras,
                     &QWidget::setEnabled);
    QObject::connect(controls.txtManual, &QTextBrowser::forwardAvailable, controls.cmdAdelante,
                     &QWidget::setEnabled);
    QObject::connect(controls.cmdAtras, &QToolButton::clicked, controls.txtManual,
                     &QTextBrowser::backward);
    QObject::connect(controls.cmdAdelante, &QToolButton::clicked, controls.txtManual,
                     &QTextBrowser::forward);
    QObject::connect(controls.txtBuscar, &QLineEdit::textChanged, &window(),
                     [this] { ui().lblBuscar->clear(); });
}

void FrmManual::showFor(const QString& window)
{
    const QString page = pageOf(window);
    if (ui().txtManual->page() != page)
        ui().txtManual->goTo(page);
    belongTo(QApplication::activeModalWidget());
    show();
    ui().txtManual->setFocus();
}

/// Makes the manual belong to a dialog, which then neither covers it nor keeps it from taking
/// input; or to none.
void FrmManual::belongTo(const QWidget* dialog)
{
    QWindow* const owner = dialog ? dialog->windowHandle() : nullptr;
    const QWindow* const own = window().windowHandle();
    const bool isOnTop = window().windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    // A dialog that is gone left the manual without an owner, but above all windows.
    if ((own ? own->transientParent() : nullptr) == owner && isOnTop == (dialog != nullptr))
        return;
    hide();
    window().setWindowFlag(Qt::WindowStaysOnTopHint, dialog);
    window().winId(); // makes its window
    window().windowHandle()->setTransientParent(owner);
}

/// Follows in the list the page that is shown.
void FrmManual::pageShown()
{
    const auto shown = std::find_if(pages().begin(), pages().end(), [this](const Page& page) {
        return page.name == ui().txtManual->page();
    });
    const QSignalBlocker quiet(ui().lvPaginas);
    ui().lvPaginas->setCurrentRow(
        shown == pages().end() ? -1 : static_cast<int>(shown - pages().begin()));
    ui().lblBuscar->clear();
}

bool FrmManual::Form_KeyDown(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_F1)
        return true; // it is shown already, and stays at its page
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (isEnter && window().focusWidget() == ui().txtBuscar) {
        find(event.modifiers().testFlag(Qt::ShiftModifier));
        return true;
    }
    if (event.matches(QKeySequence::Find)) {
        ui().txtBuscar->setFocus();
        ui().txtBuscar->selectAll();
        return true;
    }
    if (event.key() == Qt::Key_Escape && event.modifiers() == Qt::NoModifier) {
        hide();
        return true;
    }
    return false;
}

/// Selects the next place of the page, or the one before, that holds the words of the box; after
/// the last comes the first.
void FrmManual::find(bool backwards)
{
    QTextBrowser& manual = *ui().txtManual;
    const QString words = ui().txtBuscar->text();
    const QTextDocument::FindFlags way =
        backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (words.isEmpty() || manual.find(words, way))
        return;
    const QTextCursor here = manual.textCursor();
    manual.moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
    const bool isThere = manual.find(words, way);
    if (!isThere)
        manual.setTextCursor(here);
    ui().lblBuscar->setText(isThere ? QString() : u"No está en esta página"_s);
}
