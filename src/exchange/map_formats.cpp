#include "exchange/map_formats.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

const QStringList overlayOptions{u"rejilla"_s, u"coordenadas"_s, u"nombres"_s,
                                 u"clima"_s,   u"habitantes"_s,  u"barra-escala"_s};

} // namespace

std::span<const MapFormat> mapFormats()
{
    static const std::array<MapFormat, 4> all{{
        {u"png"_s, u"Imagen PNG"_s, u"el mapa, o una zona suya, como imagen"_s,
         QStringList{u"escala"_s, u"zona"_s, u"leyenda"_s, u"jugadores"_s} + overlayOptions,
         &writePng},
        {u"csv"_s,
         u"Tabla de lugares CSV"_s,
         u"los lugares, para hojas de cálculo"_s,
         {u"jugadores"_s},
         &writeCsv},
        {u"tmx"_s,
         u"Mapa de Tiled"_s,
         u"el mapa para el editor de tiles Tiled"_s,
         {u"jugadores"_s},
         &writeTmx},
        {u"txt"_s,
         u"Texto para mapas hexagonales"_s,
         u"una línea por casilla"_s,
         {u"jugadores"_s},
         &writeText},
    }};
    return all;
}

const MapFormat* mapFormat(const QString& suffix)
{
    const std::span<const MapFormat> all = mapFormats();
    const auto found = std::find_if(all.begin(), all.end(), [&](const MapFormat& format) {
        return format.suffix.compare(suffix, Qt::CaseInsensitive) == 0;
    });
    return found == all.end() ? nullptr : &*found;
}
