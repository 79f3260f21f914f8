// The commands that make, draw and read world maps.
#include "cli/atlas.h"
#include "cli/command.h"
#include "generation/climate.h"
#include "generation/path_finding.h"
#include "generation/world_generator.h"
#include "platform/core/text_file.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_file.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QTextStream>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The sizes of generated maps, in cells.
constexpr int smallestMap = 2;
constexpr int largestMap = 1000;

/// Where the picture goes, checked; empty when none is asked for.
QString pictureTarget(const Arguments& arguments, const QString& map)
{
    if (!arguments.has(u"png"_s))
        return {};
    QString picture = arguments.value(u"png"_s);
    if (isSameFile(picture, map))
        throw UsageError{u"la imagen ocuparía el lugar del mapa"_s};
    checkWritable(picture);
    return picture;
}

void tellOfPicture(QTextStream& out, const QString& picture, const WorldMap& map, int scale)
{
    const QSize size = hex::mapSize(map.ancho, map.alto) * scale;
    out << u"Imagen: %1 (%2 × %3 píxeles)\n"_s.arg(picture, QString::number(size.width()),
                                                   QString::number(size.height()));
}

void checkOnMap(const WorldMap& map, QPoint cell, const QString& option)
{
    if (!map.mapaTiles.contains(cell.y(), cell.x()))
        throw UsageError{u"la casilla de --%1 está fuera del mapa, que tiene %2 columnas y %3 "
                         "filas contadas desde 0"_s.arg(option, QString::number(map.ancho),
                                                        QString::number(map.alto))};
}

} // namespace

ExitCode generar(const Arguments& arguments)
{
    if (!arguments.positional.isEmpty())
        throw UsageError{u"sobra «%1»"_s.arg(arguments.positional.first())};
    WorldMap map;
    map.ancho = arguments.number(u"ancho"_s, smallestMap, largestMap);
    map.alto = arguments.number(u"alto"_s, smallestMap, largestMap);
    const int scale = arguments.number(u"escala"_s, 1, maxScale, 1);
    const QString target = arguments.value(u"mapa"_s);
    const QString picture = pictureTarget(arguments, target);
    if (arguments.has(u"nombre"_s)) {
        if (const auto problem = mapNameProblem(arguments.options[u"nombre"_s]))
            throw UsageError{u"el mapa no puede llamarse así: %1"_s.arg(*problem)};
    }
    checkWritable(target);

    arguments.seed();
    Atlas atlas;
    for (const QString& tile : generatedTiles())
        atlas.canvas.selectTile(tile); // fails before anything is made
    generarMundo(map, atlas.pins);
    if (arguments.has(u"nombre"_s))
        map.nombre = arguments.value(u"nombre"_s);
    const QByteArray bytes = mapFileBytes(map);
    // The picture first: it's the larger one. If the map then finds no room, it goes again.
    const bool replaces = QFileInfo::exists(picture);
    if (!picture.isEmpty())
        platform::writeFileAtomically(picture, atlas.png(map, scale));
    try {
        platform::writeFileAtomically(target, bytes);
    } catch (const platform::Error&) {
        if (!picture.isEmpty() && !replaces)
            QFile::remove(picture);
        throw;
    }

    QTextStream out(stdout);
    out << u"Mapa: %1 («%2», %3 lugares)\n"_s.arg(
        target, map.nombre,
        QString::number(std::count_if(map.mapaPines.begin(), map.mapaPines.end(),
                                      [](const QString& place) { return !place.isEmpty(); })));
    if (!picture.isEmpty())
        tellOfPicture(out, picture, map, scale);
    return Success;
}

ExitCode dibujar(const Arguments& arguments)
{
    const QString& source = arguments.only(u"el mapa"_s);
    const int scale = arguments.number(u"escala"_s, 1, maxScale, 1);
    arguments.value(u"png"_s);
    const QString picture = pictureTarget(arguments, mapPath(source));
    Atlas atlas;
    const WorldMap map = atlas.read(source);
    platform::writeFileAtomically(picture, atlas.png(map, scale));
    QTextStream out(stdout);
    tellOfPicture(out, picture, map, scale);
    return Success;
}

ExitCode ruta(const Arguments& arguments)
{
    const QString& source = arguments.only(u"el mapa"_s);
    const QPoint from = arguments.cell(u"desde"_s);
    const QPoint to = arguments.cell(u"hasta"_s);
    const QString picture = pictureTarget(arguments, mapPath(source));
    Atlas atlas;
    const WorldMap map = atlas.read(source);
    checkOnMap(map, from, u"desde"_s);
    checkOnMap(map, to, u"hasta"_s);

    QTextStream out(stdout);
    const QString route =
        PathFinding::FindPath(map.mapaTiles, from.x(), from.y(), to.x(), to.y(), atlas.tiles);
    if (route == PathFinding::notFound) {
        out << route << '\n';
        return No;
    }
    if (!picture.isEmpty())
        platform::writeFileAtomically(picture, atlas.png(map, 1, route));
    const std::vector<QPoint> cells = PathFinding::routeCells(route);
    int cost = 0;
    for (std::size_t i = 0; i + 1 < cells.size(); ++i) // the last one is the start, never entered
        cost += PathFinding::TileCost(atlas.tiles, map.mapaTiles(cells[i].y(), cells[i].x()))
                    .value_or(0);
    out << route << u"\nCasillas: %1\nCosto: %2\n"_s.arg(cells.size()).arg(cost);
    if (!picture.isEmpty())
        tellOfPicture(out, picture, map, 1);
    return Success;
}

ExitCode clima(const Arguments& arguments)
{
    const Atlas atlas;
    const WorldMap map = atlas.read(arguments.only(u"el mapa"_s));
    const QString report = climateReport(map, atlas.tiles, QLocale().decimalPoint());
    QTextStream(stdout) << QString(report).replace(u"\r\n"_s, u"\n"_s);
    return Success;
}
