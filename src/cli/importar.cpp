#include "cli/command.h"
#include "cli/map_source.h"
#include "cli/saving.h"
#include "exchange/export_target.h"
#include "exchange/map_import.h"
#include "worldmap/map_file.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// A map of the tile editor as a new map, which is called as its file is.
WorldMap newMap(const QString& source, const QString& target, const MapPictures& pictures)
{
    if (QFileInfo(source).suffix().compare(u"tmx"_s, Qt::CaseInsensitive) != 0)
        throw UsageError{
            u"no existe el mapa «%1»; solo un .tmx puede hacer uno nuevo"_s.arg(target)};
    WorldMap map = readTmx(source, pictures);
    if (const QString name = nameByFile(target); !name.isEmpty())
        map.nombre = name;
    return map;
}

} // namespace

ExitCode importar(const Arguments& arguments)
{
    const QStringList& words = arguments.exactly({u"el archivo"_s, u"el mapa"_s});
    const QString& source = words[0];
    const QString target = mapPath(words[1]);
    const WorldWorkspace workspace;
    checkWritable(target);
    const WorldMap map = QFileInfo::exists(target)
                             ? importedInto(workspace.read(target), source, workspace.pictures)
                             : newMap(source, target, workspace.pictures);
    saveMapBytes(target, mapFileBytes(map));
    QTextStream(stdout) << u"Mapa: %1 («%2», %3 lugares)\n"_s.arg(
        target, map.nombre, QString::number(map.mapaPines.size()));
    return Success;
}
