#include "worldmap/inhabitants.h"

#include "platform/core/spanish_number.h"
#include "worldmap/name_cache.h"

#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;

using platform::spanishNumber;

namespace {

/// A number of people to three digits, as no more are meant.
QString roundedPeople(double people)
{
    const double power = std::pow(10, std::max(0.0, std::floor(std::log10(people)) - 2));
    return spanishNumber(people < 1 ? std::round(people) : std::round(people / power) * power);
}

} // namespace

std::optional<double> Inhabitants::meanDensity() const
{
    if (cells == 0)
        return std::nullopt;
    return sumOfDensity / static_cast<double>(cells);
}

std::optional<double> Inhabitants::total(double kilometresPerCell) const
{
    if (cells == 0)
        return std::nullopt;
    return sumOfDensity * cellArea(kilometresPerCell);
}

double cellArea(double kilometresPerCell)
{
    return kilometresPerCell * kilometresPerCell * std::numbers::sqrt3 / 2;
}

std::optional<double> tileInhabitants(const Palette& tiles, const QString& tile)
{
    const platform::ListItem* const item = tiles.items.find(tile);
    if (!item || !item->hasSubItem(u"habitantes"_s))
        return std::nullopt;
    bool isNumber = false;
    const double value =
        QString(item->subItem(u"habitantes"_s)).replace(u',', u'.').toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value) || value < 0)
        return std::nullopt;
    return value;
}

Inhabitants inhabitantsOf(const WorldMap& map, const Palette& tiles,
                          const std::optional<QRect>& part)
{
    const QRect whole(0, 0, map.ancho(), map.alto());
    const QRect looked = part.value_or(whole) & whole;
    NameCache<std::optional<double>> densities;
    const auto lookUp = [&](const QString& tile) { return tileInhabitants(tiles, tile); };
    Inhabitants found{looked.size()};
    for (int row = looked.top(); row <= looked.bottom(); ++row) {
        for (int column = looked.left(); column <= looked.right(); ++column) {
            const auto& density = densities.find(map.mapaTiles(row, column), lookUp);
            ++(density ? found.cells : found.unknown);
            found.sumOfDensity += density.value_or(0);
        }
    }
    return found;
}

CellFigures inhabitantsFigures(const WorldMap& map, const Palette& tiles)
{
    NameCache<std::optional<float>> densities;
    const auto lookUp = [&](const QString& tile) -> std::optional<float> {
        const std::optional<double> density = tileInhabitants(tiles, tile);
        if (!density)
            return std::nullopt;
        return static_cast<float>(*density);
    };
    CellFigures figures(map.alto(), map.ancho());
    for (int row = 0; row < map.alto(); ++row) {
        for (int column = 0; column < map.ancho(); ++column)
            figures(row, column) = densities.find(map.mapaTiles(row, column), lookUp);
    }
    return figures;
}

QString inhabitantsText(const Inhabitants& inhabitants, std::optional<double> kilometresPerCell)
{
    const std::optional<double> mean = inhabitants.meanDensity();
    if (!mean)
        return u"Habitantes: sin datos"_s;
    QString text = u"Habitantes: media de %1 por km² (%2 × %3 casillas)"_s.arg(
        spanishNumber(*mean, 1), spanishNumber(inhabitants.area.width()),
        spanishNumber(inhabitants.area.height()));
    if (kilometresPerCell) {
        const double people = *inhabitants.total(*kilometresPerCell);
        text +=
            people < 1 ? u"; nadie en total"_s : u"; unos %1 en total"_s.arg(roundedPeople(people));
    }
    if (inhabitants.unknown > 0)
        text += inhabitants.unknown == 1 ? u"; una casilla sin dato"_s
                                         : u"; %1 casillas sin dato"_s.arg(spanishNumber(
                                               static_cast<double>(inhabitants.unknown)));
    return text;
}
