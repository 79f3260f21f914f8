#include "worldmap/map_look.h"

#include "worldmap/map_file.h"

using namespace Qt::StringLiterals;

namespace {

QString described(const WorldMap& map)
{
    const QString name = map.nombre.isEmpty() ? u"Mapa sin nombre"_s : u"«%1»"_s.arg(map.nombre);
    const std::size_t places = map.mapaPines.size();
    return name + u": %1 columnas × %2 filas, "_s.arg(map.ancho()).arg(map.alto()) +
           (places == 1 ? u"un lugar."_s : u"%1 lugares."_s.arg(places));
}

} // namespace

FileLook lookAtMapFile(const QString& path, const MapPictures& pictures, const TileColours& colours)
{
    const WorldMap map = readDrawableMap(platform::readTextFile(path), pictures);
    return {described(map), true, pixelACell(map, colours)};
}
