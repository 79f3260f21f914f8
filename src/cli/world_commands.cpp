// The commands that make, draw and read world maps.
#include "cli/atlas.h"
#include "cli/command.h"
#include "cli/picture.h"
#include "generation/climate.h"
#include "generation/path_finding.h"
#include "platform/core/text_codec.h"
#include "worldmap/hex_geometry.h"

#include <QLocale>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The cell of an option's value: its column and row, or the name of the place on it.
QPoint cellOf(const Arguments& arguments, const QString& option, const WorldMap& map)
{
    if (const std::optional<QPoint> cell = arguments.cell(option)) {
        if (!map.mapaTiles.contains(cell->y(), cell->x()))
            throw UsageError{u"la casilla de --%1 está fuera del mapa, que tiene %2 columnas y %3 "
                             "filas contadas desde 0"_s.arg(option, QString::number(map.ancho),
                                                            QString::number(map.alto))};
        return *cell;
    }
    const QString name = arguments.value(option).normalized(QString::NormalizationForm_C);
    std::vector<QPoint> alike; // but for letter case
    for (int row = 0; row < map.alto; ++row) {
        for (int column = 0; column < map.ancho; ++column) {
            const QString& place = map.mapaPines(row, column);
            if (place.isEmpty())
                continue;
            const QString other = Place::fromStored(place).name;
            if (other == name)
                return {column, row};
            if (other.compare(name, Qt::CaseInsensitive) == 0)
                alike.emplace_back(column, row);
        }
    }
    if (alike.size() != 1)
        throw UsageError{u"--%1 ha de ser una casilla X,Y o el nombre de un lugar del mapa, y no "
                         "«%2»"_s.arg(option, arguments.value(option))};
    return alike.front();
}

} // namespace

ExitCode dibujar(const Arguments& arguments)
{
    const QString& source = arguments.only(u"el mapa"_s);
    const int scale = arguments.number(u"escala"_s, 1, maxScale, 1);
    arguments.value(u"png"_s);
    const PictureTarget picture(arguments, mapPath(source));
    Atlas atlas;
    const WorldMap map = atlas.read(source);
    picture.write(atlas.png(map, scale));
    QTextStream out(picture.lines());
    picture.tell(out, hex::mapSize(map.ancho, map.alto) * scale);
    return Success;
}

ExitCode ruta(const Arguments& arguments)
{
    const QString& source = arguments.only(u"el mapa"_s);
    arguments.value(u"desde"_s);
    arguments.value(u"hasta"_s);
    const PictureTarget picture(arguments, mapPath(source));
    Atlas atlas;
    const WorldMap map = atlas.read(source);
    const QPoint from = cellOf(arguments, u"desde"_s, map);
    const QPoint to = cellOf(arguments, u"hasta"_s, map);

    QTextStream out(picture.lines());
    const QString route =
        PathFinding::FindPath(map.mapaTiles, from.x(), from.y(), to.x(), to.y(), atlas.tiles);
    if (route == PathFinding::notFound) {
        out << route << '\n';
        return No;
    }
    if (picture.isWanted())
        picture.write(atlas.png(map, 1, route));
    out << route
        << u"\nCasillas: %1\nCosto: %2\n"_s.arg(PathFinding::routeCells(route).size())
               .arg(PathFinding::routeCost(map.mapaTiles, route, atlas.tiles));
    if (picture.isWanted())
        picture.tell(out, hex::mapSize(map.ancho, map.alto));
    return Success;
}

ExitCode lugares(const Arguments& arguments)
{
    const QString& source = arguments.only(u"el mapa"_s);
    const WorldMap map = Atlas().read(source);
    QTextStream out(stdout);
    for (int row = 0; row < map.alto; ++row) {
        for (int column = 0; column < map.ancho; ++column) {
            if (const QString& place = map.mapaPines(row, column); !place.isEmpty())
                out << u"%1;%2;"_s.arg(row).arg(column) << platform::notesToFile(place) << '\n';
        }
    }
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
