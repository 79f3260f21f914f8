#include "catalogue/frmListaImagenes.h"

#include "catalogue/editor_boxes_form.h"
#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/core/text_codec.h"
#include "platform/forms/application.h"
#include "platform/gdi/picture.h"

#include <QDir>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace {

/// How many names of files that can't be read find room in the status line.
constexpr int namesShown = 3;

} // namespace

FrmListaImagenes& frmListaImagenes()
{
    return platform::FormRegistry::shared<FrmListaImagenes>();
}

void FrmListaImagenes::Form_Load()
{
    ui().lvListaImagenes->setItems(images_, imgImagenes_);
    QObject::connect(ui().lvListaImagenes, &platform::IconView::dblClick, &window(),
                     [this] { platform::runCommand([this] { lvListaImagenes_DblClick(); }); });
}

void FrmListaImagenes::listImages()
{
    if (camino.isEmpty() || mascara.isEmpty())
        return;
    const platform::WaitCursor wait;
    const QDir folder(platform::inAppFolder(camino));
    platform::ListItems listed;
    imgImagenes_ = platform::ImageList(platform::largeIconSize);
    QStringList skipped;
    for (const QString& name :
         folder.entryList({mascara}, QDir::Files, QDir::Name | QDir::IgnoreCase)) {
        if (name.contains(platform::fieldSeparators) || platform::firstOutsideWindows1252(name)) {
            skipped.append(name); // no record could hold its path
            continue;
        }
        try {
            const QImage picture =
                platform::loadPicture(folder.filePath(name), imgImagenes_.largest());
            listed.add(name, name).setIcon(imgImagenes_.add(name, picture));
        } catch (const platform::Error&) {
            skipped.append(name);
        }
    }
    images_.swapItems(listed);
    tellSkipped(skipped);
    ui().lvListaImagenes->scrollToTop();
    ui().lvListaImagenes->setFocus();
    selectCurrent();
}

QString FrmListaImagenes::pathOf(const platform::ListItem& picture) const
{
    return camino + u'\\' + picture.text();
}

/// Selects the picture whose path the text box holds.
void FrmListaImagenes::selectCurrent()
{
    if (!controlDestino)
        return;
    const QString current = controlDestino->text().replace(u'/', u'\\');
    for (int i = 0; i < images_.count(); ++i) {
        if (pathOf(images_.at(i)).compare(current, Qt::CaseInsensitive) == 0)
            ui().lvListaImagenes->select(images_.at(i));
    }
}

void FrmListaImagenes::tellSkipped(const QStringList& names)
{
    QString text;
    if (!names.isEmpty())
        text = u"No se pueden usar (%1): %2"_s.arg(
            QString::number(names.size()),
            names.mid(0, namesShown).join(u", "_s) + (names.size() > namesShown ? u"…"_s : u""_s));
    ui().lblEstado->setText(text);
    ui().lblEstado->setToolTip(Qt::convertFromPlainText(names.join(u", "_s)));
    ui().lblEstado->setVisible(!names.isEmpty());
}

void FrmListaImagenes::lvListaImagenes_DblClick()
{
    const platform::ListItem* const chosen = ui().lvListaImagenes->selectedItem();
    if (chosen && controlDestino)
        controlDestino->setText(pathOf(*chosen));
    hide();
}

bool FrmListaImagenes::Form_KeyDown(const QKeyEvent& event)
{
    if (hasModifiers(event))
        return false;
    if (event.key() == Qt::Key_Escape) {
        hide();
        return true;
    }
    if (!isEnter(event))
        return false;
    if (ui().lvListaImagenes->selectedItem())
        platform::runCommand([this] { lvListaImagenes_DblClick(); });
    return true;
}
