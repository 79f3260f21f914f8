#pragma once

#include "exchange/export_options.h"
#include "mapview/overlay.h"
#include "worldmap/definitions.h"
#include "worldmap/hex_map_geometry.h"
#include "worldmap/map_canvas.h"
#include "worldmap/world_map.h"

#include <optional>
#include <vector>

/// Whether players aren't to know of a place: its notes begin with "!".
bool isHidden(const Place& place);

/// A map on its way out, with what it is drawn and described by. It is a copy, so that the map can
/// be edited meanwhile; definitions and their pictures must stay as they are.
class ExportedMap
{
public:
    /// A map for players is without notes and hidden places, its scale is known nevertheless.
    ExportedMap(WorldMap map, const Palette& tiles, const Palette& pins,
                const MapPictures& pictures, bool isForPlayers = false);
    ExportedMap(const ExportedMap&) = delete;
    ExportedMap& operator=(const ExportedMap&) = delete;

    const WorldMap& map() const { return map_; }
    const Palette& tiles() const { return *tiles_; }
    const Palette& pins() const { return *pins_; }
    const MapPictures& pictures() const { return *pictures_; }
    /// From one cell's centre to the next, if the map's notes say it.
    std::optional<double> kilometresPerCell() const { return kilometresPerCell_; }
    const HexMapGeometry& geometry() const { return geometry_; }

    /// The whole map's picture, drawn as far as it is looked at, by one thread.
    MapPicture& picture() { return canvas_.hdcBuffer; }
    const MapPicture& picture() const { return canvas_.hdcBuffer; }
    /// What a zone of cells takes of the picture; without one, all of it.
    QRect partOf(const std::optional<QRect>& zone) const;

    /// What the options lay over the picture, from the lowest to the highest. Throws Error for what
    /// the map can't show.
    std::vector<Overlay> overlays(const ExportOptions& options) const;

private:
    WorldMap map_;
    const Palette* tiles_;
    const Palette* pins_;
    const MapPictures* pictures_;
    std::optional<double> kilometresPerCell_;
    HexMapGeometry geometry_;
    MapCanvas canvas_;
};

/// What a definition is called in texts and keys: its notes, or without any its name.
QString titleOf(const Palette& palette, const QString& name);
