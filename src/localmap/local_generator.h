#pragma once

#include "localmap/local_map.h"

#include <QPoint>
#include <QSize>

/// A local map while it is being laid out: a mark for each cell, by (row, column).
namespace mark {
inline constexpr char ground = ' ';
inline constexpr char river = 'R';
inline constexpr char band = 'M'; ///< the strip along one edge that is kept clear
inline constexpr char tree = 'T';
inline constexpr char inside = 'B'; ///< of a building
inline constexpr char wall = 'C';
} // namespace mark

using Rejilla = platform::Grid<char>;

/// Makes the map a new random one: a river, a clear band across its course, trees, four buildings.
/// The view is at its corner.
void generarMapaLocal(LocalMap& map);

/// The marks being written, and how many river and band marks were, a cell counting each time.
struct Sketch {
    Rejilla rejilla;
    int marcas = 0;

    void put(int row, int column, char cell);
};

// The steps, in their order.

/// A river from edge to edge that drifts by at most a cell every two cells of its course. Returns
/// whether it runs from the top to the bottom; else it runs from the left to the right.
bool layRiver(Sketch& sketch);
/// The band along one of the two edges where the river begins or ends.
void layBand(Sketch& sketch, bool riverDownwards);
/// Trees on nine in a hundred of the cells that river and band leave.
void plantTrees(Sketch& sketch);
/// One building, where it disturbs least.
void build(Rejilla& rejilla);

/// Where a building of that many columns and rows disturbs least: the top left corner of the
/// cheapest place, of equal ones the first by rows, then columns. The building must fit the grid.
QPoint bestPlace(const Rejilla& rejilla, QSize building);

/// What building on a cell of that mark costs.
int buildingCost(char cell);

/// The tile names for the marks. Grass and trees are drawn at random.
platform::Grid<QString> nameTiles(const Rejilla& rejilla);
