#pragma once

#include "platform/core/grid.h"

#include <QPoint>
#include <QString>
#include <functional>
#include <map>

/// A named pin on one cell of the world map.
struct Place {
    QString pin; ///< name of the pin's definition
    QString name;
    QString notes; ///< may hold line breaks

    bool operator==(const Place&) const = default;
};

/// The order in which cells (x = column, y = row) are drawn, listed and written: row by row.
struct RowMajor {
    bool operator()(QPoint a, QPoint b) const
    {
        return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
    }
};

/// The places of a map by their cells, at most one a cell.
using Places = std::map<QPoint, Place, RowMajor>;

/// What the properties dialog shows of a map, but for its size.
struct MapProperties {
    QString nombre;   ///< the map's name, and its file's; empty before the map has one
    int latNorte = 0; ///< latitude of the top row, whole degrees
    int latSur = 0;   ///< latitude of the bottom row
    QString notasMapa;

    bool operator==(const MapProperties&) const = default;
};

/// What the file of a world map holds: a grid of hexagonal cells, each with a terrain tile and at
/// most one place.
struct WorldMap : MapProperties {
    /// Name of the tile painted in each cell, by (row, column); empty where unpainted. Its size is
    /// the map's.
    platform::Grid<QString> mapaTiles{100, 100};
    Places mapaPines;

    int ancho() const { return mapaTiles.columns(); }
    int alto() const { return mapaTiles.rows(); }
    bool contains(QPoint cell) const { return mapaTiles.contains(cell.y(), cell.x()); }
    const QString& tileAt(QPoint cell) const { return mapaTiles(cell.y(), cell.x()); }
    /// The place of a cell, or null.
    const Place* placeAt(QPoint cell) const
    {
        const auto found = mapaPines.find(cell);
        return found == mapaPines.end() ? nullptr : &found->second;
    }
    /// The cell of the place of that name, if there is one.
    const QPoint* cellOf(const QString& placeName) const;

    bool operator==(const WorldMap&) const = default;
};

/// A name, with the first numeral behind it that makes it one which isn't taken, if it is.
QString freeName(const QString& name, const std::function<bool(const QString&)>& isTaken);
