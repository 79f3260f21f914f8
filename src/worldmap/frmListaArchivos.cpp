#include "worldmap/frmListaArchivos.h"

#include "app/workspace.h"
#include "platform/core/app_folder.h"
#include "worldmap/map_look.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

QString savedText(const QDateTime& time)
{
    return QLocale(QLocale::Spanish)
        .toString(time, u"'Guardado el' d 'de' MMMM 'de' yyyy 'a las' H:mm."_s);
}

} // namespace

FrmListaArchivos& frmListaArchivos()
{
    return platform::FormRegistry::shared<FrmListaArchivos>();
}

void FrmListaArchivos::Form_Load()
{
    if (imgArchivos_.count() == 0)
        imgArchivos_.add(u"mapa"_s, QImage(u":/pictures/archivo_mapa.gif"_s));
    files_.clear();
    isLooking_ = false; // what was begun for an earlier window never ends
    auto* const list = ui().lvListaArchivos;
    list->setItems(files_, imgArchivos_);
    QObject::connect(list, &platform::IconView::dblClick, &window(), [this] {
        choose();
        hide(); // also beside the files
    });
    QObject::connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, &window(),
                     [this] { showSelected(); });
    QObject::connect(ui().cmdAbrir, &QPushButton::clicked, &window(), [this] { choose(); });
    QObject::connect(ui().cmdCancelar, &QPushButton::clicked, &dialog(), &QDialog::reject);
}

void FrmListaArchivos::Form_Activate()
{
    listFiles();
    platform::IconView& list = *ui().lvListaArchivos;
    if (!list.selectedItem() && !files_.isEmpty())
        list.select(files_.at(0));
    showSelected();
    list.setFocus();
}

void FrmListaArchivos::listFiles()
{
    if (camino.isEmpty() || mascara.isEmpty())
        return;
    // By name, as the file systems that the pattern comes from return them.
    const QStringList names = QDir(platform::inAppFolder(camino))
                                  .entryList({mascara}, QDir::Files | QDir::Hidden,
                                             QDir::Name | QDir::IgnoreCase | QDir::LocaleAware);
    QStringList shown;
    for (int i = 0; i < files_.count(); ++i)
        shown.append(files_.at(i).text());
    if (names == shown) // nothing new: the selection stays
        return;
    const platform::ListItem* const selected = ui().lvListaArchivos->selectedItem();
    const QString wanted = selected ? selected->key() : QString();
    platform::ListItems all; // the view takes one list sooner than many rows
    for (const QString& name : names)
        all.add(name, name).setIcon(icono);
    files_.swapItems(all);
    if (const platform::ListItem* const file = files_.find(wanted))
        ui().lvListaArchivos->select(*file);
}

QString FrmListaArchivos::pathOf(const platform::ListItem& file) const
{
    return platform::inAppFolder(camino) + u'/' + file.text();
}

/// Shows the map selected, as far as it is known, and has it looked at where it isn't.
void FrmListaArchivos::showSelected()
{
    const platform::ListItem* const file = ui().lvListaArchivos->selectedItem();
    const QString path = file ? pathOf(*file) : QString();
    const QDateTime time = QFileInfo(path).lastModified();
    const bool isKnown = file && path == lookedAt_ && time == lookedAtTime_;
    if (!isKnown)
        look_ = {file               ? u"Leyendo…"_s
                 : files_.isEmpty() ? u"Aquí no hay ningún mapa todavía."_s
                                    : QString()};
    ui().lblVistaPrevia->setText(look_.text);
    showPicture();
    if (file && !isKnown && !isLooking_)
        look(path, time);
}

void FrmListaArchivos::showPicture()
{
    platform::PreviewBox& box = *ui().imgVistaPrevia;
    box.setPicture(look_.picture.isNull() ? QImage() : inProportion(look_.picture, box.room()));
}

/// Looks at a file in the background, and then at the one that is selected by then.
void FrmListaArchivos::look(const QString& path, const QDateTime& time)
{
    isLooking_ = true;
    workspace().background.run(
        window(),
        [path, time, pictures = workspace().pictures, colours = tileColours(workspace().tiles)] {
            return lookOrReason([&] {
                FileLook look = lookAtMapFile(path, pictures, colours);
                look.text += u'\n' + savedText(time);
                return look;
            });
        },
        [this, path, time](const FileLook& look) {
            isLooking_ = false;
            lookedAt_ = path;
            lookedAtTime_ = time;
            look_ = look;
            showSelected();
        },
        platform::Background::Urgency::WhenIdle);
}

void FrmListaArchivos::choose()
{
    const platform::ListItem* const file = ui().lvListaArchivos->selectedItem();
    if (!file)
        return;
    caminoArchivo = pathOf(*file);
    hide();
}
