#include "generation/path_finding.h"

#include "platform/core/error.h"
#include "worldmap/hex_geometry.h"

#include <QHash>
#include <cmath>
#include <cstdint>
#include <functional>
#include <queue>

using namespace Qt::StringLiterals;

using platform::Grid;

namespace {

/// A node whose cost and estimate together reach this is never chosen.
constexpr std::int64_t outOfReach = 100'000;

/// What the search knows of one cell. The cell's position is its key.
struct clsNodo {
    std::int64_t G = 0; ///< cost of the way from the start
    int H = 0;          ///< estimated rest
    int cost = 0;       ///< of entering the cell, looked up when the search first comes to it
    std::int16_t PadreX = -1;
    std::int16_t PadreY = -1;
    std::uint32_t order = 0; ///< when it was added to the open list
    enum : std::uint8_t { Unknown, Open, Closed } state = Unknown;
};

/// The open list: gives back the cell with the lowest G + H, of equal ones the one added first. A
/// node that is improved is pushed again under its old order; the entry it leaves behind comes up
/// after it is closed.
class OpenList
{
public:
    void push(std::int64_t sum, std::uint32_t order)
    {
        queue_.push(static_cast<std::uint64_t>(sum + sumBias) << orderBits | order);
    }
    bool isEmpty() const { return queue_.empty(); }
    std::uint32_t popOrder()
    {
        constexpr std::uint64_t orderMask = (std::uint64_t{1} << orderBits) - 1;
        const std::uint64_t lowest = queue_.top();
        queue_.pop();
        return static_cast<std::uint32_t>(lowest & orderMask);
    }

private:
    // Sum and order in one number, compared in one step. Sums can be below 0.
    static constexpr int orderBits = 28;
    static constexpr std::int64_t sumBias = std::int64_t{1} << (63 - orderBits);
    std::priority_queue<std::uint64_t, std::vector<std::uint64_t>, std::greater<>> queue_;
};

class Search
{
public:
    Search(const Grid<QString>& tiles, QPoint end, const Palette& palette)
        : tiles_(tiles),
          nodes_(tiles.rows(), tiles.columns()),
          end_(end),
          palette_(palette)
    {
    }

    /// Closes nodes from the start on until the end is among them. Returns whether it is.
    bool reachFrom(QPoint start)
    {
        add(start, {-1, -1}, 0);
        while (!open_.isEmpty()) {
            const QPoint cell = added_[open_.popOrder()];
            clsNodo& node = nodes_(cell.y(), cell.x());
            if (node.state == clsNodo::Closed)
                continue;
            node.state = clsNodo::Closed;
            for (const QPoint offset : hex::neighbours(cell.x())) {
                const QPoint next = cell + offset;
                if (nodes_.contains(next.y(), next.x()))
                    visit(next, cell, node.G);
            }
            if (cell == end_)
                return true;
        }
        return false;
    }

    /// The route text from the end, which was reached, back to the start.
    QString route() const
    {
        QString text;
        for (QPoint cell = end_; cell.x() >= 0;) {
            if (!text.isEmpty())
                text += u'|';
            text += QString::number(cell.y()) + u';' + QString::number(cell.x());
            const clsNodo& node = nodes_(cell.y(), cell.x());
            cell = {node.PadreX, node.PadreY};
        }
        return text;
    }

private:
    void visit(QPoint cell, QPoint from, std::int64_t costSoFar)
    {
        clsNodo& node = nodes_(cell.y(), cell.x());
        if (node.state == clsNodo::Closed)
            return;
        if (node.state == clsNodo::Unknown) {
            node.cost = costOf(cell);
            if (node.cost == PathFinding::impassable)
                node.state = clsNodo::Closed; // nor can any other way enter it
            else
                add(cell, from, costSoFar + node.cost);
        } else if (costSoFar + node.cost < node.G) {
            node.G = costSoFar + node.cost;
            setParent(node, from);
            push(node);
        }
    }

    void add(QPoint cell, QPoint from, std::int64_t costSoFar)
    {
        clsNodo& node = nodes_(cell.y(), cell.x());
        node.G = costSoFar;
        node.H = PathFinding::Heuristic(cell.x(), cell.y(), end_.x(), end_.y());
        node.order = static_cast<std::uint32_t>(added_.size());
        node.state = clsNodo::Open;
        setParent(node, from);
        added_.push_back(cell);
        push(node);
    }

    void push(const clsNodo& node)
    {
        if (node.G + node.H < outOfReach)
            open_.push(node.G + node.H, node.order);
    }

    static void setParent(clsNodo& node, QPoint from)
    {
        node.PadreX = static_cast<std::int16_t>(from.x());
        node.PadreY = static_cast<std::int16_t>(from.y());
    }

    int costOf(QPoint cell)
    {
        // Most cells of one tile share one text in memory, and its address is much faster to look
        // up than the text.
        const QString& tile = tiles_(cell.y(), cell.x());
        const auto known = costs_.constFind(tile.constData());
        if (known != costs_.constEnd())
            return *known;
        const std::optional<int> cost = PathFinding::TileCost(palette_, tile);
        if (!cost)
            throw platform::Error(
                platform::ErrorNumber::NoSuchKey,
                u"El tile «%1» de la casilla X:%2 Y:%3 no tiene un costo de travesía."_s.arg(
                    tile, QString::number(cell.x()), QString::number(cell.y())));
        return *costs_.insert(tile.constData(), *cost);
    }

    const Grid<QString>& tiles_;
    Grid<clsNodo> nodes_;
    std::vector<QPoint> added_; ///< by order
    OpenList open_;
    QPoint end_;
    const Palette& palette_;
    QHash<const QChar*, int> costs_;
};

} // namespace

int PathFinding::Heuristic(int x1, int y1, int x2, int y2)
{
    const double dx = x2 - x1;
    const double dy = y2 - y1;
    return static_cast<int>(std::sqrt(dx * dx + dy * dy));
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

std::vector<QPoint> PathFinding::routeCells(const QString& route)
{
    std::vector<QPoint> cells;
    for (const QString& pair : route.split(u'|', Qt::SkipEmptyParts))
        cells.emplace_back(pair.section(u';', 1, 1).toInt(), pair.section(u';', 0, 0).toInt());
    return cells;
}
