// What leaves the map window for files, paper and the clipboard, and what comes back.

#include "exchange/frmExportar.h"
#include "exchange/map_image.h"
#include "exchange/map_import.h"
#include "mapview/reduced_picture.h"
#include "platform/core/app_folder.h"
#include "platform/forms/application.h"
#include "worldmap/frmMapa.h"
#include "worldmap/map_file.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QPainter>

using namespace Qt::StringLiterals;

std::vector<platform::Command> FrmMapa::exchangeCommands()
{
    return {{.key = u"exportar"_s,
             .text = u"&Exportar…"_s,
             .shortcuts = {QKeySequence(u"Ctrl+E"_s)},
             .run = [this](bool) { exportMapa(); }},
            {.key = u"importar"_s, .text = u"&Importar…"_s, .run = [this](bool) { importMapa(); }},
            {.key = u"copiarImagen"_s,
             .text = u"C&opiar imagen"_s,
             .shortcuts = {QKeySequence(u"Ctrl+Shift+C"_s)},
             .run = [this](bool) { copyPicture(); }}};
}

/// The cells that can be seen, at least in part.
QRect FrmMapa::seenCells()
{
    const QRect seen = ui().imgMapa->seen() & hdcBuffer.rect();
    const QPoint last = hex::cellAt(seen.bottomRight());
    return QRect(hex::cellAt(seen.topLeft()), last) & QRect(0, 0, mapa().ancho(), mapa().alto());
}

/// The options that lay over a picture what lies over the view.
ExportOptions FrmMapa::layersNow() const
{
    ExportOptions options;
    options.hasNames = capas_.isOn(u"nombres"_s);
    options.hasGrid = capas_.isOn(u"rejilla"_s);
    options.hasNumbers = capas_.isOn(u"coordenadas"_s);
    options.hasClimate = capas_.isOn(u"climaColor"_s);
    options.hasInhabitants = capas_.isOn(u"habitantes"_s);
    options.hasScaleBar = capas_.isOn(u"barraEscala"_s);
    return options;
}

void FrmMapa::exportMapa()
{
    documento.endStroke();
    const QString file = mapa().nombre.isEmpty() ? QString() : mapFilePath(mapa().nombre);
    const QStringList told =
        frmExportar().offer({mapa(), file, tools_.selection, seenCells(), layersNow()});
    if (!told.isEmpty())
        ui().avisos->tell(told);
}

/// Brings the terrain and places of a file into the map, as one step.
void FrmMapa::importMapa()
{
    documento.endStroke();
    QFileDialog chooser(&window(), u"Importar"_s, platform::inAppFolder(u"exportado"_s),
                        u"Mapas de Tiled y tablas de lugares (*.tmx *.csv)"_s);
    chooser.setObjectName(u"dlgImportar"_s);
    chooser.setFileMode(QFileDialog::ExistingFile);
    if (chooser.exec() != QDialog::Accepted || chooser.selectedFiles().isEmpty())
        return;
    const QString path = chooser.selectedFiles().constFirst();
    const platform::WaitCursor wait;
    WorldMap map = importedInto(mapa(), path, workspace().pictures);
    const auto places = map.mapaPines.size();
    if (map == mapa()) {
        ui().avisos->tell(
            QStringList(u"El mapa ya era como «%1»."_s.arg(platform::displayPath(path))));
        return;
    }
    prepared_ = prepare(map);
    setAccion(NoEditing);
    documento.bringBack(std::move(map), u"importar"_s);
    ui().avisos->tell(QStringList(u"Se ha importado «%1»: el mapa tiene ahora %2 lugares."_s.arg(
        platform::displayPath(path), QString::number(places))));
}

/// Copies the picture of what is selected or, without that, of what is seen, at the view's zoom and
/// with what the menu Ver lays over it.
void FrmMapa::copyPicture()
{
    const platform::WaitCursor wait;
    const MapView& view = *ui().imgMapa;
    const HexMapGeometry geometry({mapa().ancho(), mapa().alto()});
    const QRect part =
        (tools_.selection ? hex::zonePicture(*tools_.selection) : view.seen()) & hdcBuffer.rect();
    QImage picture;
    if (view.viewport().isWhole() && !tools_.selection) {
        const QSize size = view.viewport().wholeRect().size();
        picture = reducedPart(hdcBuffer, part, size, [](double) {});
        QPainter painter(&picture);
        drawOverlays(painter, geometry, {part, static_cast<double>(size.width()) / part.width(), 1},
                     mapOverlays_);
    } else {
        picture = drawn({hdcBuffer, part, view.viewport().zoom(), &geometry, mapOverlays_});
    }
    QGuiApplication::clipboard()->setImage(picture);
    tools_.outcome =
        u"Imagen copiada: %1 × %2 píxeles"_s.arg(picture.width()).arg(picture.height());
    showTools();
}
