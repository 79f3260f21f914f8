#pragma once

// Searches written as plainly as can be: the tests hold the program's own against them, and the
// benchmarks measure by them.
#include "generation/path_finding.h"
#include "localmap/local_generator.h"

#include <QStringList>
#include <cmath>
#include <vector>

/// PathFinding::FindPath over the tiles' costs, with lists that are looked through from their
/// beginnings.
inline QString findPathScanning(const platform::Grid<int>& costs, QPoint start, QPoint end)
{
    struct Node {
        QPoint cell;
        QPoint from;
        int g;
        int h;
    };
    const auto nodeAt = [](std::vector<Node>& nodes, QPoint cell) -> Node* {
        for (Node& node : nodes) {
            if (node.cell == cell)
                return &node;
        }
        return nullptr;
    };
    const auto estimate = [&](QPoint cell) {
        const QPoint rest = end - cell;
        return static_cast<int>(std::floor(std::hypot(rest.x(), rest.y())));
    };
    constexpr QPoint none(-1, -1);
    std::vector<Node> open{{start, none, 0, estimate(start)}};
    std::vector<Node> closed;
    do {
        auto best = open.end();
        int lowest = 100'000;
        for (auto node = open.begin(); node != open.end(); ++node) {
            if (node->g + node->h < lowest) {
                best = node;
                lowest = node->g + node->h;
            }
        }
        if (best == open.end())
            return PathFinding::notFound;
        const Node current = *best;
        open.erase(best);
        closed.push_back(current);
        const int shift = current.cell.x() % 2 == 1 ? 1 : -1;
        for (const QPoint offset : {QPoint(-1, shift), QPoint(1, shift), QPoint(-1, 0),
                                    QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)}) {
            const QPoint cell = current.cell + offset;
            if (!costs.contains(cell.y(), cell.x()) || costs(cell.y(), cell.x()) == -1 ||
                nodeAt(closed, cell))
                continue;
            const int g = current.g + costs(cell.y(), cell.x());
            Node* const known = nodeAt(open, cell);
            if (!known) {
                open.push_back({cell, current.cell, g, estimate(cell)});
            } else if (known->g > g) {
                known->g = g;
                known->from = current.cell;
            }
        }
    } while (closed.back().cell != end);
    QStringList route;
    for (const Node* node = nodeAt(closed, end); node; node = nodeAt(closed, node->from))
        route.append(QStringLiteral("%1;%2").arg(node->cell.y()).arg(node->cell.x()));
    return route.join(u'|');
}

/// bestPlace, with every place added up anew.
inline QPoint bestPlaceAnew(const Rejilla& grid, QSize building)
{
    QPoint best;
    int lowest = 100'000;
    for (int y = 0; y + building.height() <= grid.rows(); ++y) {
        for (int x = 0; x + building.width() <= grid.columns(); ++x) {
            int cost = 0;
            for (int row = y; row < y + building.height(); ++row) {
                for (int column = x; column < x + building.width(); ++column) {
                    const char cell = grid(row, column);
                    cost += cell == 'T'                  ? 10
                            : cell == 'R' || cell == 'M' ? 1000
                            : cell == 'B'                ? 300
                            : cell == 'C'                ? -10
                                                         : 1;
                }
            }
            if (cost < lowest) {
                lowest = cost;
                best = {x, y};
            }
        }
    }
    return best;
}
