#pragma once

#include "platform/core/grid.h"

#include <QString>

/// A named pin on one cell of the world map.
struct Place {
    QString pin; ///< name of the pin's definition
    QString name;
    QString notes; ///< may hold line breaks

    /// The three fields joined by ";", as a map's cell holds them.
    QString stored() const { return pin + u';' + name + u';' + notes; }
    /// The inverse: a cell's text, which isn't empty.
    static Place fromStored(const QString& cell);
};

/// The editing modes of the map window, as its `accion` holds them.
enum Accion { PaintTiles = 0, SetPlaces = 1, DrawRoads = 2, NoEditing = 4 };

/// The world map document: a grid of hexagonal cells, each with a terrain tile and at most one
/// place, and the state of its view.
struct WorldMap {
    QString nombre;   ///< the map's name, and its file's; empty before the map has one
    int ancho = 100;  ///< columns
    int alto = 100;   ///< rows
    int latNorte = 0; ///< latitude of the top row, whole degrees
    int latSur = 0;   ///< latitude of the bottom row
    QString notasMapa;
    /// Name of the tile painted in each cell, by (row, column); empty where unpainted.
    platform::Grid<QString> mapaTiles{100, 100};
    /// The place in each cell in its stored form, by (row, column); empty where there is none.
    platform::Grid<QString> mapaPines{100, 100};
    bool mapaCambiado = false; ///< the document differs from its file

    int currX = 0; ///< first visible column, always even
    int currY = 0; ///< first visible row
    int accion = NoEditing;

    /// The ends of the road being marked, in cells; -1 while unset.
    int inicioX = -1;
    int inicioY = -1;
    int finX = -1;
    int finY = -1;
};
