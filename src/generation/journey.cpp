#include "generation/journey.h"

#include "generation/path_finding.h"
#include "platform/core/spanish_number.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

using platform::spanishNumber;

namespace {

constexpr double kilometresOfADay = 30;
constexpr double costOfThem = 2;

QString daysText(double days)
{
    constexpr double tenths = 10;
    const double rounded = std::round(days * tenths) / tenths;
    if (rounded <= 0)
        return u"menos de 0,1 días"_s;
    return spanishNumber(rounded, 1) + (rounded == 1 ? u" día"_s : u" días"_s);
}

} // namespace

Journey journeyAlong(const platform::Grid<QString>& tiles, const QString& route,
                     const Palette& palette, double kilometresPerCell)
{
    Journey journey;
    const std::vector<QPoint> cells = PathFinding::routeCells(route);
    for (std::size_t i = 0; i + 1 < cells.size(); ++i) { // all but the start, which comes last
        const int cost =
            PathFinding::TileCost(palette, tiles(cells[i].y(), cells[i].x())).value_or(0);
        journey.kilometres += kilometresPerCell;
        journey.days += kilometresPerCell / kilometresOfADay * std::max(cost, 0) / costOfThem;
    }
    return journey;
}

QString journeyText(const Journey& journey)
{
    constexpr double whole = 100; // kilometres from which decimals tell nothing
    return u"%1 km, %2 a pie"_s.arg(
        spanishNumber(journey.kilometres, journey.kilometres < whole ? 1 : 0),
        daysText(journey.days));
}
