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
    static const std::array<MapFormat, 1> all{{
        {u"png"_s, u"Imagen PNG"_s, u"el mapa, o una zona suya, como imagen"_s,
         QStringList{u"escala"_s, u"zona"_s, u"leyenda"_s, u"jugadores"_s} + overlayOptions,
         &writePng},
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
