#pragma once

#include "localmap/local_map.h"
#include "mapview/map_picture.h"
#include "worldmap/definitions.h"

/// The pictures of the local tiles and their masks, by name.
struct LocalPictures {
    PictureCollection colTilesLocales;
    PictureCollection colMascarasLocales;
};

/// Draws a local map: its whole picture, as far as it is looked at. The pictures of the tiles must
/// outlive it.
class LocalCanvas
{
public:
    explicit LocalCanvas(const LocalPictures& pictures) : pictures_(&pictures) {}
    LocalCanvas(const LocalCanvas&) = delete;
    LocalCanvas& operator=(const LocalCanvas&) = delete;

    static constexpr int anchoTile = 32; ///< width of a cell, in pixels
    static constexpr int altoTile = 32;

    /// The back buffer: the whole map's picture. Null before crearBuffer is first called.
    MapPicture hdcBuffer;

    /// Makes a new, black back buffer for a map of that many columns and rows.
    void crearBuffer(int ancho, int alto);

    /// Draws every cell into the back buffer: grass of a random kind, and the cell's own tile over
    /// it. Where a tile has no picture the grass stays; the names of those tiles are returned. The
    /// map must stay as it is until it is drawn again, as its parts are drawn when they are looked
    /// at.
    QStringList renderMapa(const LocalMap& map);

    /// Draws a picture over cell (x, y) of a map whose picture begins at a pixel on the surface,
    /// through its mask if it has one.
    static void drawTile(platform::MemoryDC& dc, QPoint corner, int x, int y,
                         const platform::MemoryDC& picture, const platform::MemoryDC* mask);

private:
    /// A tile's picture, null for a tile without one, and its mask, null for an opaque one.
    struct TilePictures {
        const platform::MemoryDC* picture = nullptr;
        const platform::MemoryDC* mask = nullptr;
    };
    TilePictures picturesOf(const QString& tile) const;
    static bool coversCell(const TilePictures& tile);
    void paint(platform::MemoryDC& dc, QPoint corner) const;

    const LocalPictures* pictures_;
    const LocalMap* map_ = nullptr;
    platform::Grid<int> suelo_; ///< the kind of grass in each cell
};
