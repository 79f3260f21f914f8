// A road from corner to corner of 150 × 150 cells of random costs with walls, against a search that
// scans its lists and against the A* of the Boost Graph Library on a graph that is there already.
#include "ratios.h"
#include "tests/plain_versions.h"
#include "worldmap/hex_geometry.h"

#include <array>
#include <benchmark/benchmark.h>
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/astar_search.hpp>
#include <boost/graph/compressed_sparse_row_graph.hpp>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 150;

/// A square map of tiles named by their costs, one cell in eight a wall, corners free.
struct Land {
    explicit Land(int length) : costs(length, length), tiles(length, length)
    {
        constexpr std::array kinds{2, 3, 4, 6, 9, 14, 20, PathFinding::impassable};
        std::array<QString, kinds.size()> names;
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            names[i] = QString::number(kinds[i]);
            palette.items.add(names[i], names[i]).setSubItem(u"costo"_s, names[i]);
        }
        std::mt19937 engine(5);
        for (int row = 0; row < length; ++row) {
            for (int column = 0; column < length; ++column) {
                const bool corner = row == column && (row == 0 || row == length - 1);
                const std::size_t kind = corner ? 0 : engine() % kinds.size();
                costs(row, column) = kinds[kind];
                tiles(row, column) = names[kind];
            }
        }
    }

    QString route() const
    {
        const int last = tiles.rows() - 1;
        return PathFinding::FindPath(tiles, 0, 0, last, last, palette);
    }

    platform::Grid<int> costs;
    platform::Grid<QString> tiles;
    Palette palette{tilesKind()};
};

const Land& land()
{
    static const Land instance(side);
    return instance;
}

void FindPath(benchmark::State& state)
{
    for ([[maybe_unused]] const auto iteration : state)
        benchmark::DoNotOptimize(land().route());
}

void FindPathGrowth(benchmark::State& state)
{
    const Land map(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] const auto iteration : state)
        benchmark::DoNotOptimize(map.route());
}

void FindPathScanningLists(benchmark::State& state)
{
    QString route;
    for ([[maybe_unused]] const auto iteration : state)
        route = findPathScanning(land().costs, {0, 0}, {side - 1, side - 1});
    if (route != land().route())
        state.SkipWithError("the scanning search finds another route");
}

struct Edge {
    int cost;
};
// The library's general graph, and its fastest, which can't be changed once it is made.
using Graph =
    boost::adjacency_list<boost::vecS, boost::vecS, boost::directedS, boost::no_property, Edge>;
using FixedGraph = boost::compressed_sparse_row_graph<boost::directedS, boost::no_property, Edge>;

struct Edges {
    explicit Edges(const platform::Grid<int>& costs)
    {
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                for (const QPoint offset : hex::neighbours(x)) {
                    const int column = x + offset.x();
                    const int row = y + offset.y();
                    if (!costs.contains(row, column) ||
                        costs(row, column) == PathFinding::impassable)
                        continue;
                    ends.emplace_back(y * side + x, row * side + column);
                    weights.push_back({costs(row, column)});
                }
            }
        }
    }
    std::vector<std::pair<int, int>> ends;
    std::vector<Edge> weights;
};

void makeGraph(const Edges& edges, Graph& graph)
{
    graph = Graph(edges.ends.begin(), edges.ends.end(), edges.weights.begin(), side * side);
}

void makeGraph(const Edges& edges, FixedGraph& graph)
{
    graph = FixedGraph(boost::edges_are_unsorted_multi_pass, edges.ends.begin(), edges.ends.end(),
                       edges.weights.begin(), side * side);
}

template <typename AnyGraph>
struct Estimate : boost::astar_heuristic<AnyGraph, int> {
    int operator()(std::size_t vertex) const
    {
        const int cell = static_cast<int>(vertex);
        return PathFinding::Heuristic(cell % side, cell / side, side - 1, side - 1);
    }
};

struct GoalReached {
};

struct StopAtGoal : boost::default_astar_visitor {
    template <typename AnyGraph>
    void examine_vertex(std::size_t vertex, const AnyGraph& /*graph*/) const
    {
        if (vertex == side * side - 1)
            throw GoalReached{};
    }
};

template <typename AnyGraph>
void searchWithBoost(benchmark::State& state)
{
    AnyGraph graph;
    makeGraph(Edges(land().costs), graph);
    std::vector<int> distances(side * side);
    std::vector<std::size_t> parents(side * side);
    const auto vertices = get(boost::vertex_index, graph);
    for ([[maybe_unused]] const auto iteration : state) {
        try {
            astar_search(graph, 0, Estimate<AnyGraph>{},
                         boost::weight_map(get(&Edge::cost, graph))
                             .distance_map(make_iterator_property_map(distances.begin(), vertices))
                             .predecessor_map(make_iterator_property_map(parents.begin(), vertices))
                             .visitor(StopAtGoal{}));
        } catch (const GoalReached&) {
            benchmark::ClobberMemory();
        }
    }
    if (distances.back() != PathFinding::routeCost(land().tiles, land().route(), land().palette))
        state.SkipWithError("the other search finds another cost");
}

void FindPathWithBoost(benchmark::State& state)
{
    searchWithBoost<Graph>(state);
}

void FindPathWithFixedGraph(benchmark::State& state)
{
    searchWithBoost<FixedGraph>(state);
}

BENCHMARK(FindPath)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(FindPathWithBoost)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(FindPathWithFixedGraph)->Unit(benchmark::kMillisecond)->Repetitions(9);
BENCHMARK(FindPathScanningLists)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(3);
BENCHMARK(FindPathGrowth)->Unit(benchmark::kMillisecond)->Arg(125)->Arg(250)->Arg(500)->Arg(1000);

[[maybe_unused]] const bool ratiosAdded =
    addRatio({"FindPath", "FindPathScanningLists", 1.0 / 150}) &&
    addRatio({"FindPath", "FindPathWithBoost", 1.0 / 3}) &&
    addRatio({"FindPath", "FindPathWithFixedGraph", 1.0 / 2});

} // namespace
