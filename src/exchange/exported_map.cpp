#include "exchange/exported_map.h"

#include "generation/climate.h"
#include "platform/core/error.h"
#include "worldmap/map_overlays.h"
#include "worldmap/map_scale.h"

using namespace Qt::StringLiterals;

namespace {

WorldMap forPlayers(WorldMap map)
{
    map.notasMapa.clear();
    std::erase_if(map.mapaPines, [](const auto& entry) { return isHidden(entry.second); });
    for (auto& [cell, place] : map.mapaPines)
        place.notes.clear();
    return map;
}

} // namespace

bool isHidden(const Place& place)
{
    return place.notes.startsWith(u'!');
}

ExportedMap::ExportedMap(WorldMap map, const Palette& tiles, const Palette& pins,
                         const MapPictures& pictures, bool isForPlayers)
    : map_(std::move(map)),
      tiles_(&tiles),
      pins_(&pins),
      pictures_(&pictures),
      kilometresPerCell_(::kilometresPerCell(map_.notasMapa)),
      geometry_({map_.ancho(), map_.alto()}),
      canvas_(pictures)
{
    if (isForPlayers)
        map_ = forPlayers(std::move(map_));
    canvas_.crearBuffer(map_.ancho(), map_.alto());
    canvas_.renderMapa(map_);
}

QRect ExportedMap::partOf(const std::optional<QRect>& zone) const
{
    return zone ? hex::zonePicture(*zone) : picture().rect();
}

std::vector<Overlay> ExportedMap::overlays(const ExportOptions& options) const
{
    std::vector<Overlay> all;
    if (options.hasClimate)
        all.emplace_back(besidePlaces(climateColours(climateOf(map_, *tiles_)), map_));
    if (options.hasInhabitants) {
        CellColours colours = besidePlaces(inhabitantsColours(map_, *tiles_), map_);
        colours.areDiscs = options.hasClimate;
        all.emplace_back(std::move(colours));
    }
    if (options.hasGrid)
        all.emplace_back(CellGrid{});
    if (options.hasNumbers)
        all.emplace_back(CellNumbers{});
    if (options.hasNames)
        all.emplace_back(placeNamesOf(map_, *pins_));
    if (options.hasScaleBar) {
        if (!kilometresPerCell_)
            throw platform::Error(platform::ErrorNumber::BadFormat,
                                  u"El mapa no dice su escala. Ponga en sus notas, por ejemplo, "
                                  "«Escala: 10 km»."_s);
        all.emplace_back(ScaleBar{*kilometresPerCell_});
    }
    return all;
}

QString titleOf(const Palette& palette, const QString& name)
{
    const platform::ListItem* const item = palette.items.find(name);
    return item && !item->text().isEmpty() ? item->text() : name;
}
