#include "generation/path_finding.h"

#include "platform/core/error.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/name_cache.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <utility>

using namespace Qt::StringLiterals;

using platform::Grid;

namespace {

/// A node whose cost and estimate together reach this is never chosen.
constexpr std::int32_t outOfReach = 100'000;

/// Costs below 0 add up no further than to this.
constexpr std::int32_t lowestCost = -1'000'000'000;

using Index = std::uint32_t;

int distance(QPoint a, QPoint b)
{
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    return static_cast<int>(std::sqrt(dx * dx + dy * dy));
}

/// What every step of the search asks of a cell, kept small for the processor's cache.
struct clsNodo {
    std::int32_t G = closed; ///< cost of the way from the start, or one of the marks below
    std::int32_t cost = 0;   ///< of entering the cell

    // In G, so that one comparison tells whether a way to the cell is worth a look: none is cheaper
    // than a closed node, which a cell that can't be entered is from the beginning, and every one
    // is cheaper than none at all.
    static constexpr std::int32_t closed = std::numeric_limits<std::int32_t>::min();
    static constexpr std::int32_t unknown = std::numeric_limits<std::int32_t>::max();
    /// In cost: the tile has none.
    static constexpr std::int32_t noCost = unknown / 2;
};

/// What is known of a cell once it was put into the open list.
struct Way {
    int H = 0;       ///< estimated rest
    Index padre = 0; ///< the cell it was reached from; 0 for the start
    Index order = 0; ///< when it was added
};

/// A node in the open list, as one number by which nodes of equal sums are chosen: its order, then
/// the index of its cell.
using Entry = std::uint64_t;

constexpr Entry entryOf(Index order, Index index)
{
    return Entry{order} << 32 | index;
}

/// The entries of nodes of one sum, lowest first.
class Bucket
{
public:
    bool isEmpty() const { return next_ == entries_.size(); }
    bool hasRoom() const { return entries_.capacity() > 0; }
    Entry pop() { return entries_[next_++]; }
    /// Most nodes come in their order; one that was improved has its place among them.
    void push(Entry entry)
    {
        if (isEmpty() || entries_.back() < entry) {
            entries_.push_back(entry);
            return;
        }
        const auto waiting = entries_.begin() + static_cast<std::ptrdiff_t>(next_);
        entries_.insert(std::upper_bound(waiting, entries_.end(), entry), entry);
    }
    void clear()
    {
        entries_.clear();
        next_ = 0;
    }

private:
    std::vector<Entry> entries_;
    std::size_t next_ = 0;
};

/// The open list: gives back the node with the lowest G + H, of equal ones the one added first. A
/// node that is improved is pushed again under its old order; the entry it leaves behind comes up
/// after it is closed.
class OpenList
{
public:
    void push(std::int32_t sum, Entry entry) { bucketOf(sum).push(entry); }

    /// Nothing when the list is empty.
    std::optional<Entry> pop()
    {
        if (!belowZero_.empty()) {
            const auto lowest = belowZero_.begin();
            const Entry entry = lowest->second.pop();
            if (lowest->second.isEmpty())
                belowZero_.erase(lowest);
            return entry;
        }
        while (lowest_ < buckets_.size() && buckets_[lowest_].isEmpty())
            retire(buckets_[lowest_++]);
        if (lowest_ == buckets_.size())
            return std::nullopt;
        return buckets_[lowest_].pop();
    }

private:
    Bucket& bucketOf(std::int32_t sum)
    {
        if (sum < 0)
            return belowZero_[sum];
        const auto index = static_cast<std::size_t>(sum);
        if (index >= buckets_.size())
            buckets_.resize(index + 1);
        lowest_ = std::min(lowest_, index);
        Bucket& bucket = buckets_[index];
        if (!bucket.hasRoom() && !spare_.empty()) {
            bucket = std::move(spare_.back());
            spare_.pop_back();
        }
        return bucket;
    }

    /// Keeps an empty bucket's room in memory for another: few of them are in use at a time.
    void retire(Bucket& bucket)
    {
        if (!bucket.hasRoom())
            return;
        bucket.clear();
        spare_.push_back(std::exchange(bucket, {}));
    }

    std::vector<Bucket> buckets_; ///< by sum, which is less than outOfReach
    std::size_t lowest_ = 0;      ///< no bucket before this holds anything
    std::vector<Bucket> spare_;
    std::map<std::int32_t, Bucket> belowZero_; ///< only tiles of negative cost lead here
};

class Search
{
public:
    Search(const Grid<QString>& tiles, QPoint end, const Palette& palette)
        : tiles_(tiles),
          stride_(static_cast<Index>(tiles.columns()) + 2),
          nodes_(std::size_t{stride_} * (static_cast<std::size_t>(tiles.rows()) + 2)),
          ways_(nodes_.size()),
          end_(end)
    {
        for (int parity = 0; parity <= 1; ++parity) {
            const hex::Neighbours& offsets = hex::neighbours(parity);
            // From one index to another; a step back wraps around to the same sum.
            std::transform(offsets.begin(), offsets.end(),
                           steps_[static_cast<std::size_t>(parity)].begin(), [this](QPoint offset) {
                               return indexOf(offset) - indexOf({0, 0});
                           });
        }
        NameCache<int> costs;
        const auto lookUp = [&](const QString& tile) {
            return PathFinding::TileCost(palette, tile).value_or(clsNodo::noCost);
        };
        for (int row = 0; row < tiles.rows(); ++row) {
            for (int column = 0; column < tiles.columns(); ++column) {
                clsNodo& node = nodes_[indexOf({column, row})];
                node.cost = costs.find(tiles(row, column), lookUp);
                if (node.cost != PathFinding::impassable)
                    node.G = clsNodo::unknown;
            }
        }
    }

    /// Closes nodes from the start on until the end is among them. Returns whether it is.
    bool reachFrom(QPoint start)
    {
        add(indexOf(start), start, 0, 0);
        while (const std::optional<Entry> entry = open_.pop()) {
            const auto index = static_cast<Index>(*entry);
            const QPoint cell = cellOf(index);
            clsNodo& node = nodes_[index];
            const std::int32_t costSoFar = std::exchange(node.G, clsNodo::closed);
            if (costSoFar == clsNodo::closed)
                continue;
            const hex::Neighbours& offsets = hex::neighbours(cell.x());
            const Steps& steps = steps_[static_cast<std::size_t>(cell.x() & 1)];
            for (std::size_t i = 0; i < offsets.size(); ++i)
                visit(index + steps[i], cell + offsets[i], index, std::max(costSoFar, lowestCost));
            if (cell == end_)
                return true;
        }
        return false;
    }

    /// The route text from the end, which was reached, back to the start.
    QString route() const
    {
        QString text;
        for (Index index = indexOf(end_); index != 0; index = ways_[index].padre) {
            if (!text.isEmpty())
                text += u'|';
            text +=
                QString::number(index / stride_ - 1) + u';' + QString::number(index % stride_ - 1);
        }
        return text;
    }

private:
    /// The nodes lie row by row in a border of closed ones, so that no step leads out of them.
    Index indexOf(QPoint cell) const
    {
        return static_cast<Index>(cell.y() + 1) * stride_ + static_cast<Index>(cell.x() + 1);
    }

    QPoint cellOf(Index index) const
    {
        return {static_cast<int>(index % stride_) - 1, static_cast<int>(index / stride_) - 1};
    }

    void visit(Index index, QPoint cell, Index from, std::int32_t costBefore)
    {
        clsNodo& node = nodes_[index];
        const std::int32_t cost = costBefore + node.cost;
        if (cost >= node.G)
            return;
        if (node.G == clsNodo::unknown) {
            if (node.cost == clsNodo::noCost)
                throw withoutCost(cell);
            add(index, cell, from, cost);
            return;
        }
        node.G = cost;
        ways_[index].padre = from;
        push(index);
    }

    void add(Index index, QPoint cell, Index from, std::int32_t cost)
    {
        nodes_[index].G = cost;
        ways_[index] = {distance(cell, end_), from, added_++};
        push(index);
    }

    void push(Index index)
    {
        const Way& way = ways_[index];
        const std::int32_t sum = nodes_[index].G + way.H;
        if (sum < outOfReach)
            open_.push(sum, entryOf(way.order, index));
    }

    platform::Error withoutCost(QPoint cell) const
    {
        return platform::Error(
            platform::ErrorNumber::NoSuchKey,
            u"El tile «%1» de la casilla X:%2 Y:%3 no tiene un costo de travesía."_s.arg(
                tiles_(cell.y(), cell.x()), QString::number(cell.x()), QString::number(cell.y())));
    }

    using Steps = std::array<Index, std::tuple_size_v<hex::Neighbours>>;

    const Grid<QString>& tiles_;
    Index stride_;
    std::array<Steps, 2> steps_{}; ///< to the neighbours, from even and from odd columns
    std::vector<clsNodo> nodes_;
    std::vector<Way> ways_; ///< by the same indexes
    Index added_ = 0;       ///< nodes put into the open list so far
    OpenList open_;
    QPoint end_;
};

} // namespace

int PathFinding::Heuristic(int x1, int y1, int x2, int y2)
{
    return distance({x1, y1}, {x2, y2});
}

std::optional<int> PathFinding::TileCost(const Palette& palette, const QString& tileName)
{
    return numberField(palette, tileName, u"costo"_s);
}

QString PathFinding::FindPath(const Grid<QString>& tiles, int startX, int startY, int endX,
                              int endY, const Palette& palette)
{
    if (!tiles.contains(startY, startX) || !tiles.contains(endY, endX))
        return notFound;
    Search search(tiles, {endX, endY}, palette);
    return search.reachFrom({startX, startY}) ? search.route() : notFound;
}

int PathFinding::routeCost(const Grid<QString>& tiles, const QString& route, const Palette& palette)
{
    const std::vector<QPoint> cells = routeCells(route);
    int cost = 0;
    for (std::size_t i = 0; i + 1 < cells.size(); ++i)
        cost += TileCost(palette, tiles(cells[i].y(), cells[i].x())).value_or(0);
    return cost;
}

std::vector<QPoint> PathFinding::routeCells(const QString& route)
{
    std::vector<QPoint> cells;
    for (const QString& pair : route.split(u'|', Qt::SkipEmptyParts))
        cells.emplace_back(pair.section(u';', 1, 1).toInt(), pair.section(u';', 0, 0).toInt());
    return cells;
}
