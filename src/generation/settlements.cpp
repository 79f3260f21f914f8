#include "generation/settlements.h"

#include "app/procs.h"
#include "generation/name_grammar.h"
#include "generation/world_generator.h"
#include "worldmap/map_file.h"

#include <QSet>
#include <algorithm>

using namespace Qt::StringLiterals;

using Procs::RandomInRange;
using Procs::roundedQuotient;

namespace {

/// One settlement more than a number up to this: one in so many cells.
constexpr int cellsPerSettlement = 1000;

/// How often a name that is taken is made up anew before it gets a numeral.
constexpr int nameTries = 20;

/// A name that none of the others has.
QString freshName(const QSet<QString>& taken)
{
    const auto make = [] { return asPlaceName(Procs::generarNombre(1, Procs::placeNames)); };
    const auto isFree = [&](const QString& name) {
        return !name.isEmpty() && !taken.contains(name);
    };
    QString name = make();
    for (int i = 1; i < nameTries && !isFree(name); ++i)
        name = make();
    if (name.isEmpty())
        name = u"Poblado"_s;
    QString numbered = name;
    for (int numeral = 2; taken.contains(numbered); ++numeral)
        numbered = u"%1 %2"_s.arg(name).arg(numeral);
    return numbered;
}

/// The pins that can be drawn, in the palette's order.
QStringList drawablePins(const Palette& pins)
{
    QStringList names;
    for (int i = 0; i < pins.items.count(); ++i) {
        if (const platform::ListItem& item = pins.items.at(i); item.icon() > 0)
            names.append(item.key());
    }
    return names;
}

} // namespace

void colocarPoblados(WorldMap& map, const Palette& pins)
{
    const QStringList kinds = drawablePins(pins);
    const bool hasDryLand = !std::all_of(map.mapaTiles.begin(), map.mapaTiles.end(), isWater);
    if (kinds.isEmpty() || !hasDryLand)
        return;

    const int limit = std::max(1, roundedQuotient(map.alto * map.ancho, cellsPerSettlement));
    const int count = RandomInRange(1, limit) + 1;
    QSet<QString> names;
    for (int i = 0; i < count; ++i) {
        int row = 0;
        int column = 0;
        do {
            row = RandomInRange(0, map.alto - 1);
            column = RandomInRange(0, map.ancho - 1);
        } while (isWater(map.mapaTiles(row, column)));
        const QString& pin = kinds[RandomInRange(1, static_cast<int>(kinds.size())) - 1];
        const QString name = freshName(names);
        names.insert(name);
        map.mapaPines(row, column) = Place{pin, name, {}}.stored();
    }
}
