#pragma once

#include "worldmap/world_map.h"

#include <optional>
#include <vector>

/// A change of a world map that knows its own reverse: exchanging it with the map does it, and
/// exchanging again takes it back. An exchange can't fail.
struct MapChange {
    struct Tile {
        QPoint cell;
        QString tile;
    };
    /// A cell and the place that it gets; none where the handle is empty.
    struct Site {
        QPoint cell;
        Places::node_type place{};
    };

    std::vector<Tile> tiles;
    std::vector<Site> places;
    std::optional<MapProperties> properties;
    std::optional<WorldMap> whole; ///< alone, if it is there

    void setTile(QPoint cell, const QString& tile) { tiles.push_back({cell, tile}); }
    void setPlace(QPoint cell, const Place& place);
    void removePlace(QPoint cell) { places.push_back({cell}); }

    /// Leaves out what the map has already. Its name, if that stays, is then no part of the change.
    void leaveOutIdle(const WorldMap& map);
    bool isEmpty() const { return tiles.empty() && places.empty() && !properties && !whole; }
    /// Gives the map what the change holds, and the change what the map held.
    void exchange(WorldMap& map);
    /// Adds a later change of tiles. Both were exchanged with the map as often.
    void append(MapChange&& later);
    /// About what the change takes in memory.
    qint64 bytes() const;

private:
    bool done_ = false; ///< the cells' next exchange goes through them backwards
    /// It came with the name that the map had, and so leaves it the one that it has by now.
    bool keepsName_ = false;
};
