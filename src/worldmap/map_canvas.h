#pragma once

#include "mapview/map_picture.h"
#include "worldmap/definitions.h"
#include "worldmap/map_change.h"
#include "worldmap/world_map.h"

#include <QHash>

/// Draws a world map: its whole picture, as far as it is looked at, and changes of it. The pictures
/// of the definitions must outlive it.
class MapCanvas
{
public:
    explicit MapCanvas(const MapPictures& pictures) : pictures_(&pictures) {}
    MapCanvas(const MapCanvas&) = delete;
    MapCanvas& operator=(const MapCanvas&) = delete;

    /// What drawTile draws next; the mask may be SIN_MASCARA.
    std::shared_ptr<const platform::MemoryDC> tileActual;
    std::shared_ptr<const platform::MemoryDC> tileMask;
    /// The back buffer: the whole map's picture, which view and minimap are copies of. Null before
    /// crearBuffer is first called.
    MapPicture hdcBuffer;

    /// Makes a new, black back buffer for a map of that many columns and rows.
    void crearBuffer(int ancho, int alto);

    /// Take picture and mask of a definition for the next drawTile. Throws Error (NoSuchKey) when
    /// it has no picture.
    void selectTile(const QString& tile);
    void selectPin(const QString& pin);

    /// Draws tileActual through tileMask over cell (x, y) of the back buffer.
    void drawTile(int x, int y);

    /// Draws every cell and every place of the map into the back buffer, row by row, a place's pin
    /// right after the tile of its cell. The buffer must be of the map's size. From now on the map
    /// must stay where it is, and what is changed of it be told, as its parts are drawn when they
    /// are looked at.
    void renderMapa(const WorldMap& map);

    /// Draws cells that were painted; each is given once, with the tile that it had before. Under a
    /// place the new tile shows when the place changes, or the whole map is drawn.
    void drawPainted(const std::vector<MapChange::Tile>& before);
    /// Draws a cell again as the map has it now.
    void redrawCell(QPoint cell);

private:
    void paint(platform::MemoryDC& dc, QPoint corner) const;

    const MapPictures* pictures_;
    const WorldMap* map_ = nullptr;
    QHash<QPoint, QString> covered_; ///< tiles still to be seen in cells painted under a place
};
