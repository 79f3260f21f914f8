#pragma once

#include "platform/core/grid.h"

#include <QString>
#include <QStringList>

/// A local map: a small place of square cells, and the state of its view.
struct LocalMap {
    int ancho = 50; ///< columns
    int alto = 50;  ///< rows
    /// Name of the local tile in each cell, by (row, column); without cells before the first map is
    /// generated.
    platform::Grid<QString> mapaLocal;
    bool mapaCambiado = false; ///< changed since it was last marked as saved

    int currX = 0; ///< first visible column
    int currY = 0; ///< first visible row
};

/// How many kinds of grass and of trees there are: "p1", "p2" and so on, and "a1".
inline constexpr int grassKinds = 5;
inline constexpr int treeKinds = 23;

/// The name of a kind of grass or of a tree, counted from 1.
const QString& grassTile(int kind);
const QString& treeTile(int kind);

/// The piece of wall, or of river, for a cell whose neighbours of the same kind add up to a mask:
/// left 1, above 2, right 4, below 8.
const QString& wallTile(unsigned neighbours);
const QString& riverTile(unsigned neighbours);

/// All names that a generated map and its background can hold; the tile definitions must hold them.
QStringList localTileNames();
