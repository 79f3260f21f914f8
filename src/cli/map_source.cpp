#include "cli/map_source.h"

#include "generation/camino.h"
#include "platform/core/app_folder.h"
#include "platform/core/text_file.h"
#include "worldmap/map_canvas.h"
#include "worldmap/map_file.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

WorldWorkspace::WorldWorkspace()
{
    loadTiles();
    loadPines();
}

WorldMap WorldWorkspace::read(const QString& map) const
{
    return readDrawableMap(platform::readTextFile(mapPath(map)), pictures);
}

void writePicture(const PictureTarget& target, const MapPictures& pictures, const WorldMap& map,
                  int scale, const QString& route, const std::function<void()>& between)
{
    MapCanvas canvas(pictures);
    canvas.crearBuffer(map.ancho(), map.alto());
    canvas.renderMapa(map);
    drawCamino(canvas.hdcBuffer, route);
    target.write({canvas.hdcBuffer, canvas.hdcBuffer.rect(), scale}, isLongWork(map), between);
}

bool isLongWork(const WorldMap& map)
{
    constexpr int cells = 200'000;
    return map.ancho() * map.alto() > cells;
}

QString mapPath(const QString& map)
{
    if (QFileInfo(map).isFile())
        return map;
    const QString suffix = u".map"_s;
    QString wanted = map.endsWith(suffix, Qt::CaseInsensitive) ? map : map + suffix;
    if (QFileInfo(wanted).isFile())
        return wanted;
    const QDir maps(platform::inAppFolder(u"mapas"_s));
    const QStringList names = maps.entryList(QDir::Files);
    if (names.contains(wanted))
        return maps.filePath(wanted);
    const QStringList alike = names.filter(
        QRegularExpression(QRegularExpression::anchoredPattern(QRegularExpression::escape(wanted)),
                           QRegularExpression::CaseInsensitiveOption));
    return alike.size() == 1 ? maps.filePath(alike.first()) : map;
}
