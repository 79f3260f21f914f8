#include "exchange/map_import.h"

#include "platform/core/app_folder.h"
#include "platform/core/error.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;

WorldMap importedInto(const WorldMap& map, const QString& path, const MapPictures& pictures)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    WorldMap changed = map;
    if (suffix == u"csv"_s) {
        changed.mapaPines = readCsvPlaces(path, {map.ancho(), map.alto()}, pictures);
    } else if (suffix == u"tmx"_s) {
        WorldMap read = readTmx(path, pictures);
        if (read.ancho() != map.ancho() || read.alto() != map.alto())
            throw Error(ErrorNumber::BadFormat,
                        u"No se puede importar «%1»: tiene %2 × %3 casillas, y el mapa %4 × %5."_s
                            .arg(platform::displayPath(path))
                            .arg(read.ancho())
                            .arg(read.alto())
                            .arg(map.ancho())
                            .arg(map.alto()));
        changed.mapaTiles = std::move(read.mapaTiles);
        changed.mapaPines = std::move(read.mapaPines);
    } else {
        throw Error(ErrorNumber::BadName,
                    u"No se puede importar «%1»: ha de acabar en «.csv» o «.tmx»."_s.arg(
                        platform::displayPath(path)));
    }
    return changed;
}
