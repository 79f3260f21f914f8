// The commands that make, draw and read world maps.
#include "cli/command.h"
#include "cli/map_source.h"
#include "cli/picture.h"
#include "exchange/export_options.h"
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
        if (!map.contains(*cell))
            throw UsageError{u"la casilla de --%1 está fuera del mapa, que tiene %2 columnas y %3 "
                             "filas contadas desde 0"_s.arg(option, QString::number(map.ancho()),
                                                            QString::number(map.alto()))};
        return *cell;
    }
    const QString name = arguments.value(option).normalized(QString::NormalizationForm_C);
    if (const QPoint* const cell = map.cellOf(name))
        return *cell;
    std::vector<QPoint> alike; // but for letter case
    for (const auto& [cell, place] : map.mapaPines) {
        if (place.name.compare(name, Qt::CaseInsensitive) == 0)
            alike.push_back(cell);
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
    const WorldWorkspace workspace;
    const WorldMap map = workspace.read(source);
    writePicture(picture, workspace.pictures, map, scale);
    QTextStream out(picture.lines());
    picture.tell(out, hex::pictureSize(map.ancho(), map.alto()) * scale);
    return Success;
}

ExitCode ruta(const Arguments& arguments)
{
    const QString& source = arguments.only(u"el mapa"_s);
    arguments.value(u"desde"_s);
    arguments.value(u"hasta"_s);
    const PictureTarget picture(arguments, mapPath(source));
    const WorldWorkspace workspace;
    const WorldMap map = workspace.read(source);
    const QPoint from = cellOf(arguments, u"desde"_s, map);
    const QPoint to = cellOf(arguments, u"hasta"_s, map);

    QTextStream out(picture.lines());
    const QString route =
        PathFinding::FindPath(map.mapaTiles, from.x(), from.y(), to.x(), to.y(), workspace.tiles);
    if (route == PathFinding::notFound) {
        out << route << '\n';
        return No;
    }
    if (picture.isWanted())
        writePicture(picture, workspace.pictures, map, 1, route);
    out << route
        << u"\nCasillas: %1\nCosto: %2\n"_s.arg(PathFinding::routeCells(route).size())
               .arg(PathFinding::routeCost(map.mapaTiles, route, workspace.tiles));
    if (picture.isWanted())
        picture.tell(out, hex::pictureSize(map.ancho(), map.alto()));
    return Success;
}

ExitCode lugares(const Arguments& arguments)
{
    const QString& source = arguments.only(u"el mapa"_s);
    const WorldMap map = WorldWorkspace().read(source);
    QTextStream out(stdout);
    for (const auto& [cell, place] : map.mapaPines)
        out << u"%1;%2;%3;%4;"_s.arg(QString::number(cell.y()), QString::number(cell.x()),
                                     place.pin, place.name)
            << platform::notesToFile(place.notes) << '\n';
    return Success;
}

ExitCode clima(const Arguments& arguments)
{
    const WorldWorkspace workspace;
    const WorldMap map = workspace.read(arguments.only(u"el mapa"_s));
    const QString report = climateReport(map, workspace.tiles, QLocale().decimalPoint());
    QTextStream(stdout) << QString(report).replace(u"\r\n"_s, u"\n"_s);
    return Success;
}
