#include "worldmap/frmListaArchivos.h"

#include "platform/core/app_folder.h"

#include <QDir>
#include <QPushButton>

using namespace Qt::StringLiterals;

FrmListaArchivos& frmListaArchivos()
{
    return platform::FormRegistry::shared<FrmListaArchivos>();
}

void FrmListaArchivos::Form_Load()
{
    if (imgArchivos_.count() == 0)
        imgArchivos_.add(u"mapa"_s, QImage(u":/pictures/archivo_mapa.gif"_s));
    files_.clear();
    auto* const list = ui().lvListaArchivos;
    list->setItems(files_, imgArchivos_);
    QObject::connect(list, &platform::IconView::dblClick, &window(), [this] {
        choose();
        hide(); // also beside the files
    });
    QObject::connect(ui().cmdAbrir, &QPushButton::clicked, &window(), [this] { choose(); });
    QObject::connect(ui().cmdCancelar, &QPushButton::clicked, &dialog(), &QDialog::reject);
}

void FrmListaArchivos::Form_Activate()
{
    listFiles();
    ui().lvListaArchivos->setFocus();
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
    files_.clear();
    for (const QString& name : names)
        files_.add(name, name).setIcon(icono);
}

void FrmListaArchivos::choose()
{
    const platform::ListItem* const file = ui().lvListaArchivos->selectedItem();
    if (!file)
        return;
    caminoArchivo = platform::inAppFolder(camino) + u'/' + file->text();
    hide();
}
