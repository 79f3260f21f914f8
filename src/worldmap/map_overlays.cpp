#include "worldmap/map_overlays.h"

#include "worldmap/inhabitants.h"

#include <QHash>
#include <QRegularExpression>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int lastBold = 1; // capitals and cities

/// Words for settlements, the largest first.
const std::array<QRegularExpression, 4>& settlementWords()
{
    const auto words = [](const QString& list) {
        return QRegularExpression(u"\\b(%1)"_s.arg(list),
                                  QRegularExpression::CaseInsensitiveOption |
                                      QRegularExpression::UseUnicodePropertiesOption);
    };
    static const std::array<QRegularExpression, 4> all{
        words(u"capital|corte\\b|metr[óo]poli"_s), words(u"ciudad|urbe\\b"_s),
        words(u"villa\\b|pueblo|puerto"_s), words(u"aldea|caser[íi]o|poblado"_s)};
    return all;
}

} // namespace

int pinImportance(const Palette& pins, const QString& pin)
{
    const platform::ListItem* const item = pins.items.find(pin);
    const QString described = item ? pin + u' ' + item->text() : pin;
    int importance = 0;
    for (const QRegularExpression& words : settlementWords()) {
        if (words.match(described).hasMatch())
            return importance;
        ++importance;
    }
    for (int i = 0; i < pins.items.count() && &pins.items.at(i) != item; ++i)
        ++importance;
    return importance;
}

PlaceNames placeNamesOf(const WorldMap& map, const Palette& pins)
{
    QHash<QString, int> importance; // which takes a search through the palette
    std::vector<NamedPlace> places;
    places.reserve(map.mapaPines.size());
    for (const auto& [cell, place] : map.mapaPines) {
        auto known = importance.find(place.pin);
        if (known == importance.end())
            known = importance.insert(place.pin, pinImportance(pins, place.pin));
        places.push_back({cell, place.name, *known, *known <= lastBold});
    }
    return PlaceNames(std::move(places));
}

CellColours besidePlaces(CellColours colours, const WorldMap& map)
{
    colours.uncovered.clear();
    for (const auto& [cell, place] : map.mapaPines)
        colours.uncovered.push_back(cell);
    return colours;
}

CellColours inhabitantsColours(const WorldMap& map, const Palette& tiles)
{
    return cellColours(inhabitantsFigures(map, tiles), u"Habitantes por km²"_s, 1);
}
