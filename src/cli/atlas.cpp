#include "cli/atlas.h"

#include "generation/camino.h"
#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "worldmap/map_file.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <limits>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;

namespace {

constexpr qsizetype longestFileName = 255; // in bytes, on the usual file systems

} // namespace

Atlas::Atlas()
{
    loadDefinitions(tiles, canvas.colTiles, canvas.colMascarasTiles);
    loadDefinitions(pins, canvas.colPines, canvas.colMascarasPines);
}

WorldMap Atlas::read(const QString& map) const
{
    return readDrawableMap(platform::readTextFile(mapPath(map)), canvas);
}

QByteArray Atlas::png(const WorldMap& map, int scale, const QString& route)
{
    canvas.crearBuffer(map.ancho, map.alto);
    canvas.renderMapa(map);
    drawCamino(canvas.hdcBuffer, route);
    return pngBytes(canvas.hdcBuffer.image(), scale);
}

QString mapPath(const QString& map)
{
    const QString named = mapFilePath(map);
    return !QFileInfo::exists(map) && QFileInfo(named).isFile() ? named : map;
}

void checkWritable(const QString& path)
{
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    QString reason;
    if (!folder.isDir())
        reason = u"no existe la carpeta"_s;
    else if (file.isDir())
        reason = u"es una carpeta"_s;
    else if (file.exists() && !file.isFile())
        reason = u"no es un archivo corriente"_s;
    else if (file.fileName().toUtf8().size() > longestFileName)
        reason = u"el nombre del archivo es demasiado largo"_s;
    else if (!(file.exists() ? file : folder).isWritable())
        reason = u"no hay permiso para escribir ahí"_s;
    if (!reason.isEmpty())
        throw Error(ErrorNumber::FileUnwritable,
                    u"No se puede guardar «%1»: %2."_s.arg(platform::displayPath(path), reason));
}

bool isSameFile(const QString& a, const QString& b)
{
    // Files that aren't there yet all count as equal by the first comparison.
    return (QFileInfo::exists(a) && QFileInfo(a) == QFileInfo(b)) ||
           QDir::cleanPath(QFileInfo(a).absoluteFilePath()) ==
               QDir::cleanPath(QFileInfo(b).absoluteFilePath());
}

QByteArray pngBytes(const QImage& picture, int scale)
{
    const qint64 size = qint64{picture.sizeInBytes()} * scale * scale;
    if (size > std::numeric_limits<int>::max())
        throw Error(ErrorNumber::TooLarge,
                    u"La imagen sería demasiado grande. Pida una escala menor."_s);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!(scale == 1 ? picture : picture.scaled(picture.size() * scale)).save(&buffer, "PNG"))
        throw Error(ErrorNumber::FileUnwritable, u"No se puede crear la imagen PNG."_s);
    return bytes;
}
