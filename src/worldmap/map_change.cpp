#include "worldmap/map_change.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr qint64 bytesPerCharacter = sizeof(QChar);

qint64 textBytes(const QString& text)
{
    return text.capacity() * bytesPerCharacter;
}

} // namespace

void MapChange::setPlace(QPoint cell, const Place& place)
{
    Places one;
    one.emplace(cell, place);
    places.push_back({cell, one.extract(cell)});
}

void MapChange::exchange(WorldMap& map)
{
    const auto exchangeTile = [&](Tile& change) {
        std::swap(map.mapaTiles(change.cell.y(), change.cell.x()), change.tile);
    };
    const auto exchangePlace = [&](Site& site) {
        Places::node_type before = map.mapaPines.extract(site.cell);
        map.mapaPines.insert(std::move(site.place));
        site.place = std::move(before);
    };
    if (done_) {
        std::for_each(tiles.rbegin(), tiles.rend(), exchangeTile);
        std::for_each(places.rbegin(), places.rend(), exchangePlace);
    } else {
        std::for_each(tiles.begin(), tiles.end(), exchangeTile);
        std::for_each(places.begin(), places.end(), exchangePlace);
    }
    if (properties)
        std::swap(static_cast<MapProperties&>(map), *properties);
    if (whole)
        std::swap(map, *whole);
    if (keepsName_)
        std::swap(map.nombre, whole ? whole->nombre : properties->nombre);
    done_ = !done_;
}

void MapChange::leaveOutIdle(const WorldMap& map)
{
    std::erase_if(tiles,
                  [&](const Tile& change) { return map.tileAt(change.cell) == change.tile; });
    std::erase_if(places, [&](const Site& site) {
        const Place* const there = map.placeAt(site.cell);
        return site.place.empty() ? !there : there && *there == site.place.mapped();
    });
    if (properties && *properties == map)
        properties.reset();
    if (whole && *whole == map)
        whole.reset();
    keepsName_ = whole        ? whole->nombre == map.nombre
                 : properties ? properties->nombre == map.nombre
                              : false;
}

void MapChange::append(MapChange&& later)
{
    tiles.insert(tiles.end(), std::make_move_iterator(later.tiles.begin()),
                 std::make_move_iterator(later.tiles.end()));
}

qint64 MapChange::bytes() const
{
    qint64 sum = qint64{sizeof(*this)};
    sum += static_cast<qint64>(tiles.capacity() * sizeof(Tile) + places.capacity() * sizeof(Site));
    for (const Site& site : places) {
        if (!site.place.empty())
            sum += qint64{sizeof(Places::value_type)} + textBytes(site.place.mapped().notes);
    }
    if (properties)
        sum += textBytes(properties->notasMapa);
    if (whole)
        sum += qint64{whole->ancho()} * whole->alto() * qint64{sizeof(QString)} +
               static_cast<qint64>(whole->mapaPines.size() * sizeof(Places::value_type));
    return sum;
}
