#include "localmap/local_map.h"

#include <array>
#include <cstddef>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::vector<QString> numbered(const QString& letter, int count)
{
    std::vector<QString> names;
    for (int i = 1; i <= count; ++i)
        names.push_back(letter + QString::number(i));
    return names;
}

const std::vector<QString>& grass()
{
    static const std::vector<QString> names = numbered(u"p"_s, grassKinds);
    return names;
}

const std::vector<QString>& trees()
{
    static const std::vector<QString> names = numbered(u"a"_s, treeKinds);
    return names;
}

using NamesByNeighbours = std::array<QString, 16>;

const NamesByNeighbours& walls()
{
    // f ends, r runs, c corners, t tees, x the crossing. No generated wall stands alone.
    static const NamesByNeighbours names{u"x1t"_s, u"f2t"_s, u"f3t"_s, u"c3t"_s, u"f4t"_s, u"r2t"_s,
                                         u"c4t"_s, u"t1t"_s, u"f1t"_s, u"c2t"_s, u"r1t"_s, u"t4t"_s,
                                         u"c1t"_s, u"t3t"_s, u"t2t"_s, u"x1t"_s};
    return names;
}

const NamesByNeighbours& river()
{
    // Open water wherever no bank is meant.
    static const NamesByNeighbours names = [] {
        NamesByNeighbours all;
        all.fill(u"i1"_s);
        all[7] = u"l1"_s;
        all[9] = u"ee2"_s;
        all[11] = u"l4"_s;
        all[12] = u"ee1"_s;
        all[13] = u"l3"_s;
        all[14] = u"l2"_s;
        return all;
    }();
    return names;
}

} // namespace

const QString& grassTile(int kind)
{
    return grass().at(static_cast<std::size_t>(kind) - 1);
}

const QString& treeTile(int kind)
{
    return trees().at(static_cast<std::size_t>(kind) - 1);
}

const QString& wallTile(unsigned neighbours)
{
    return walls().at(neighbours);
}

const QString& riverTile(unsigned neighbours)
{
    return river().at(neighbours);
}

QStringList localTileNames()
{
    QStringList names(grass().begin(), grass().end());
    names += QStringList(trees().begin(), trees().end());
    names += QStringList(walls().begin() + 1, walls().end());
    names += QStringList(river().begin(), river().end());
    names.removeDuplicates();
    return names;
}
