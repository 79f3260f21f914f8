#include "generation/settlements.h"

#include "app/procs.h"
#include "generation/name_grammar.h"
#include "generation/water.h"
#include "worldmap/map_file.h"

#include <QPoint>
#include <QSet>
#include <algorithm>
#include <vector>

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
    const auto isTaken = [&](const QString& name) { return taken.contains(name); };
    QString name = make();
    for (int i = 1; i < nameTries && (name.isEmpty() || isTaken(name)); ++i)
        name = make();
    return freeName(name.isEmpty() ? u"Poblado"_s : name, isTaken);
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

/// Draws dry cells of a map, which has some: one cell of all after the other until it's a dry one.
/// Where nearly all is water, that is given up for a draw among the dry cells alone.
class DryCells
{
public:
    explicit DryCells(const platform::Grid<QString>& tiles)
        : tiles_(tiles),
          drawsLeft_(leastDraws + drawsPerCell * tiles.rows() * tiles.columns())
    {
    }

    QPoint draw()
    {
        for (; drawsLeft_ > 0; --drawsLeft_) {
            const int row = RandomInRange(0, tiles_.rows() - 1);
            const int column = RandomInRange(0, tiles_.columns() - 1);
            if (!isWater(tiles_(row, column)))
                return {column, row};
        }
        if (dry_.empty())
            list();
        return dry_[static_cast<std::size_t>(RandomInRange(1, static_cast<int>(dry_.size())) - 1)];
    }

private:
    static constexpr qint64 leastDraws = 10'000;
    static constexpr qint64 drawsPerCell = 4;

    void list()
    {
        for (int row = 0; row < tiles_.rows(); ++row) {
            for (int column = 0; column < tiles_.columns(); ++column) {
                if (!isWater(tiles_(row, column)))
                    dry_.emplace_back(column, row);
            }
        }
    }

    const platform::Grid<QString>& tiles_;
    qint64 drawsLeft_;
    std::vector<QPoint> dry_; ///< empty until it's needed
};

} // namespace

void colocarPoblados(WorldMap& map, const Palette& pins)
{
    const QStringList kinds = drawablePins(pins);
    const bool hasDryLand = !std::all_of(map.mapaTiles.begin(), map.mapaTiles.end(), isWater);
    if (kinds.isEmpty() || !hasDryLand)
        return;

    const int limit = std::max(1, roundedQuotient(map.alto() * map.ancho(), cellsPerSettlement));
    const int count = RandomInRange(1, limit) + 1;
    DryCells dryCells(map.mapaTiles);
    QSet<QString> names;
    for (int i = 0; i < count; ++i) {
        const QPoint cell = dryCells.draw();
        const QString& pin = kinds[RandomInRange(1, static_cast<int>(kinds.size())) - 1];
        const QString name = freshName(names);
        names.insert(name);
        map.mapaPines.insert_or_assign(cell, Place{pin, name, {}});
    }
}
