#pragma once

#include "platform/gdi/memory_dc.h"
#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

#include <span>

/// Draws a world map: whole, into a back buffer of the map's size, or cell by cell. The pictures
/// must outlive it.
class MapCanvas
{
public:
    explicit MapCanvas(const MapPictures& pictures) : pictures_(&pictures) {}

    /// What drawTile draws next; the mask may be SIN_MASCARA.
    std::shared_ptr<const platform::MemoryDC> tileActual;
    std::shared_ptr<const platform::MemoryDC> tileMask;
    /// The back buffer: the whole map's picture, which view and minimap are copies of. Null before
    /// crearBuffer is first called.
    platform::MemoryDC hdcBuffer;

    /// Makes a new, black back buffer for a map of that many columns and rows.
    void crearBuffer(int ancho, int alto);

    /// Take picture and mask of a definition for the next drawTile. Throws Error (NoSuchKey) when
    /// it has no picture.
    void selectTile(const QString& tile);
    void selectPin(const QString& pin);

    /// Draws tileActual through tileMask at the place of cell (x, y) of a map whose cell (0, 0) is
    /// at the surface's top left corner.
    void drawTile(platform::MemoryDC& dc, int x, int y) const;

    /// Draws again what the pictures of some cells, each given once, cover of the back buffer, with
    /// the same pixels as drawing the whole map.
    void redrawCells(const WorldMap& map, std::span<const QPoint> cells);

    /// Draws every cell and every place of the map into the back buffer, row by row, a place's pin
    /// right after the tile of its cell. The buffer must be of the map's size.
    void renderMapa(const WorldMap& map);

private:
    void drawCell(platform::MemoryDC& dc, QPoint origin, const WorldMap& map, QPoint cell) const;
    void drawRows(platform::MemoryDC& dc, QPoint corner, const WorldMap& map, int firstRow,
                  int endRow) const;
    void redrawCell(const WorldMap& map, QPoint cell);
    void redrawInBands(const WorldMap& map, std::span<const QPoint> cells);

    const MapPictures* pictures_;
};
