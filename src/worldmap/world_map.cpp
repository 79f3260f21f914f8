#include "worldmap/world_map.h"

#include <algorithm>

using namespace Qt::StringLiterals;

const QPoint* WorldMap::cellOf(const QString& placeName) const
{
    const auto found = std::find_if(mapaPines.begin(), mapaPines.end(), [&](const auto& entry) {
        return entry.second.name == placeName;
    });
    return found == mapaPines.end() ? nullptr : &found->first;
}

QString freeName(const QString& name, const std::function<bool(const QString&)>& isTaken)
{
    QString numbered = name;
    for (int numeral = 2; isTaken(numbered); ++numeral)
        numbered = u"%1 %2"_s.arg(name).arg(numeral);
    return numbered;
}
