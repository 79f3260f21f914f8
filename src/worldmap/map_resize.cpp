#include "worldmap/map_resize.h"

#include "platform/core/error.h"
#include "worldmap/map_file.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QPoint shiftOf(const QMargins& added)
{
    return {added.left(), added.top()};
}

} // namespace

QSize resizedSize(const WorldMap& map, const QMargins& added)
{
    return QSize(map.ancho(), map.alto()).grownBy(added);
}

std::optional<QString> resizeProblem(const WorldMap& map, const QMargins& added)
{
    if (added.left() % 2 != 0)
        return u"a la izquierda solo se puede añadir o quitar un número par de columnas"_s;
    const QSize size = resizedSize(map, added);
    return mapSizeProblem(size.height(), size.width());
}

QStringList lostPlaces(const WorldMap& map, const QMargins& added)
{
    const QRect kept({}, resizedSize(map, added));
    QStringList lost;
    for (const auto& [cell, place] : map.mapaPines) {
        if (!kept.contains(cell + shiftOf(added)))
            lost.append(place.name);
    }
    return lost;
}

WorldMap resized(const WorldMap& map, const QMargins& added, const QString& tile)
{
    if (const std::optional<QString> problem = resizeProblem(map, added))
        throw platform::Error(platform::ErrorNumber::TooLarge,
                              u"No se puede cambiar el tamaño: %1."_s.arg(*problem));
    const QSize size = resizedSize(map, added);
    WorldMap fresh;
    static_cast<MapProperties&>(fresh) = map;
    fresh.mapaTiles = platform::Grid<QString>(size.height(), size.width(), tile);
    const QRect kept =
        QRect({}, size).translated(-shiftOf(added)) & QRect(0, 0, map.ancho(), map.alto());
    for (int y = kept.top(); y <= kept.bottom(); ++y) {
        for (int x = kept.left(); x <= kept.right(); ++x)
            fresh.mapaTiles(y + added.top(), x + added.left()) = map.mapaTiles(y, x);
    }
    for (const auto& [cell, place] : map.mapaPines) {
        if (kept.contains(cell))
            fresh.mapaPines.emplace(cell + shiftOf(added), place);
    }
    return fresh;
}
