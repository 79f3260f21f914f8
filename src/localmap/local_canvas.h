#pragma once

#include "localmap/local_map.h"
#include "platform/gdi/memory_dc.h"
#include "worldmap/definitions.h"

/// The pictures of the local tiles and their masks, by name.
struct LocalPictures {
    PictureCollection colTilesLocales;
    PictureCollection colMascarasLocales;
};

/// Draws a local map whole into a back buffer. The pictures must outlive it.
class LocalCanvas
{
public:
    explicit LocalCanvas(const LocalPictures& pictures) : pictures_(&pictures) {}

    static constexpr int anchoTile = 32; ///< width of a cell, in pixels
    static constexpr int altoTile = 32;

    /// Null before crearBuffer is first called.
    platform::MemoryDC hdcBuffer;

    /// Makes a new, black back buffer for a map of that many columns and rows.
    void crearBuffer(int ancho, int alto);

    /// Draws every cell into the back buffer: grass of a random kind, and the cell's own tile over
    /// it. Where a tile has no picture the grass stays; the names of those tiles are returned.
    QStringList renderMapa(const LocalMap& map);

    /// Draws a picture over a cell, through its mask if it has one.
    static void drawTile(platform::MemoryDC& dc, int x, int y, const platform::MemoryDC& picture,
                         const platform::MemoryDC* mask);

private:
    const LocalPictures* pictures_;
};
