#include "cli/command.h"
#include "platform/core/app_folder.h"
#include "platform/core/text_file.h"
#include "worldmap/definitions.h"
#include "worldmap/map_canvas.h"
#include "worldmap/map_file.h"

#include <QBuffer>
#include <QFileInfo>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

/// A map given as a file's path or as the name of one in AppFolder\mapas.
QString mapPath(const QString& argument)
{
    const QString named = mapFilePath(argument);
    return !QFileInfo::exists(argument) && QFileInfo(named).isFile() ? named : argument;
}

QByteArray pngOf(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "PNG"))
        throw platform::Error(platform::ErrorNumber::FileUnwritable,
                              u"No se puede crear la imagen PNG."_s);
    return bytes;
}

} // namespace

ExitCode dibujar(const Arguments& arguments)
{
    const QString output = arguments.options.value(u"png"_s);
    if (arguments.positional.size() != 1 || output.isEmpty())
        throw UsageError{u"hacen falta un mapa y la opción --png con un archivo"_s};

    const QString input = mapPath(arguments.positional.first());
    if (QFileInfo::exists(output) && QFileInfo(input) == QFileInfo(output))
        throw UsageError{u"la imagen ocuparía el lugar del mapa"_s};

    MapCanvas canvas;
    Palette tiles(tilesKind());
    Palette pins(pinesKind());
    loadDefinitions(tiles, canvas.colTiles, canvas.colMascarasTiles);
    loadDefinitions(pins, canvas.colPines, canvas.colMascarasPines);
    const WorldMap map = readMapFile(
        input, [&](const QString& name) { return canvas.colTiles.contains(name); },
        [&](const QString& name) { return canvas.colPines.contains(name); });
    canvas.crearBuffer(map.ancho, map.alto);
    canvas.renderMapa(map);
    platform::writeFileAtomically(output, pngOf(canvas.hdcBuffer.image()));
    QTextStream(stdout) << u"%1: %2 × %3 píxeles\n"_s.arg(
        output, QString::number(canvas.hdcBuffer.width()),
        QString::number(canvas.hdcBuffer.height()));
    return Success;
}
