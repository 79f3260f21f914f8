#include "cli/command.h"
#include "cli/map_source.h"
#include "cli/picture.h"
#include "cli/progress.h"
#include "cli/saving.h"
#include "exchange/export_options.h"
#include "generation/world_generator.h"
#include "platform/core/error.h"
#include "platform/core/text_codec.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_canvas.h"
#include "worldmap/map_file.h"

using namespace Qt::StringLiterals;

namespace {

// The sizes of generated maps, in cells, and what latitudes there are, in degrees.
constexpr int smallestMap = 2;
constexpr int largestMap = 1000;
constexpr int pole = 90;
constexpr int usualLatitude = 45;

/// A text of the command line, composed like one that is typed into a window.
QString text(const Arguments& arguments, const QString& option)
{
    return arguments.options.value(option).normalized(QString::NormalizationForm_C);
}

/// Takes what the options say of the map, but for its terrain, and checks all of it.
WorldMap requestedMap(const Arguments& arguments, const QString& target)
{
    WorldMap map;
    const int ancho = arguments.number(u"ancho"_s, smallestMap, largestMap);
    const int alto = arguments.number(u"alto"_s, smallestMap, largestMap);
    map.mapaTiles = platform::Grid<QString>(alto, ancho);
    map.latNorte = arguments.number(u"norte"_s, -pole, pole, usualLatitude);
    map.latSur = arguments.number(u"sur"_s, -pole, pole, -usualLatitude);
    if (map.latNorte <= map.latSur)
        throw UsageError{u"--norte (%1) ha de ser mayor que --sur (%2)"_s.arg(
            QString::number(map.latNorte), QString::number(map.latSur))};
    if (arguments.has(u"nombre"_s)) {
        map.nombre = text(arguments, u"nombre"_s);
        if (const auto problem = mapNameProblem(map.nombre))
            throw UsageError{u"--nombre: el mapa no puede llamarse así: %1"_s.arg(*problem)};
    } else {
        map.nombre = nameByFile(target);
    }
    map.notasMapa = text(arguments, u"notas"_s);
    for (const QChar separator : platform::mapSeparators) {
        if (map.notasMapa.contains(separator))
            throw UsageError{u"--notas no puede contener «%1»"_s.arg(separator)};
    }
    if (const auto outside = platform::firstOutsideWindows1252(map.notasMapa))
        throw UsageError{u"--notas contiene «%1», que no se puede guardar"_s.arg(*outside)};
    return map;
}

} // namespace

ExitCode generar(const Arguments& arguments)
{
    arguments.none();
    const QString target = arguments.value(u"mapa"_s);
    const WorldMap requested = requestedMap(arguments, target);
    const int scale = arguments.number(u"escala"_s, 1, maxScale, 1);
    const PictureTarget picture(arguments, target);
    checkWritable(target);
    if (picture.isWanted())
        checkPictureSize(hex::pictureSize(requested.ancho(), requested.alto()), scale);

    arguments.seed();
    const WorldWorkspace workspace;
    MapCanvas canvas(workspace.pictures);
    for (const QString& tile : generatedTiles())
        canvas.selectTile(tile); // fails before anything is made
    WorldMap map = requested;
    {
        Progress progress(isLongWork(map));
        progress.step(u"Terreno y poblados…"_s);
        generarMundo(map, workspace.pins);
    }
    map.latNorte = requested.latNorte;
    map.latSur = requested.latSur;
    if (!requested.nombre.isEmpty())
        map.nombre = requested.nombre;
    const QByteArray bytes = mapFileBytes(map);
    // Both, or neither: the picture, as the larger one, is on the disk before the map is.
    const auto saveMap = [&] { saveMapBytes(target, bytes); };
    if (picture.isWanted())
        writePicture(picture, workspace.pictures, map, scale, {}, saveMap);
    else
        saveMap();

    QTextStream out(picture.lines());
    out << u"Mapa: %1 («%2», %3 lugares)\n"_s.arg(target, map.nombre,
                                                  QString::number(map.mapaPines.size()));
    if (picture.isWanted())
        picture.tell(out, hex::pictureSize(map.ancho(), map.alto()) * scale);
    return Success;
}
