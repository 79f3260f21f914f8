#include "worldmap/map_canvas.h"

#include "platform/core/error.h"
#include "worldmap/hex_geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>

using namespace Qt::StringLiterals;

using platform::MemoryDC;

namespace {

using Picture = std::shared_ptr<const MemoryDC>;

const Picture& pictureOf(const PictureCollection& pictures, const QString& name)
{
    const auto found = pictures.constFind(name);
    if (found == pictures.constEnd())
        throw platform::Error(platform::ErrorNumber::NoSuchKey,
                              u"«%1» no tiene imagen entre las definiciones cargadas."_s.arg(name));
    return *found;
}

/// Draws a picture over a cell: what lies under the mask's black is wiped out, then the picture,
/// black outside its own shape, is laid over it.
void drawPicture(MemoryDC& dc, QPoint origin, const MemoryDC& picture, const MemoryDC* mask)
{
    if (mask)
        dc.MaskBlt(origin.x(), origin.y(), hex::cellWidth, hex::cellHeight, picture, *mask);
    else
        dc.BitBlt(origin.x(), origin.y(), hex::cellWidth, hex::cellHeight, picture, 0, 0,
                  platform::RasterOp::SRCCOPY);
}

/// Finds the pictures of a map's tiles while nothing changes the map. Looking a name up costs as
/// much as drawing it; but most cells of one tile share one text in memory, by whose address the
/// last finds are remembered.
class TileFinder
{
public:
    struct Found {
        const MemoryDC* picture;
        const MemoryDC* mask;
    };

    explicit TileFinder(const MapPictures& pictures) : pictures_(pictures) {}

    const Found& find(const QString& tile)
    {
        const QChar* const text = tile.constData();
        Entry& entry = recent_[reinterpret_cast<std::uintptr_t>(text) / alignof(std::max_align_t) %
                               recent_.size()];
        if (entry.text != text)
            entry = {text,
                     {pictureOf(pictures_.colTiles, tile).get(),
                      pictureOf(pictures_.colMascarasTiles, tile).get()}};
        return entry.found;
    }

private:
    struct Entry {
        const QChar* text = nullptr;
        Found found{};
    };

    const MapPictures& pictures_;
    std::array<Entry, 64> recent_;
};

} // namespace

void MapCanvas::crearBuffer(int ancho, int alto)
{
    const QSize size = hex::mapSize(ancho, alto);
    hdcBuffer = MemoryDC(size.width(), size.height());
    hdcBuffer.SetStretchBltMode(platform::StretchMode::HALFTONE);
}

void MapCanvas::selectTile(const QString& tile)
{
    tileActual = pictureOf(colTiles, tile);
    tileMask = pictureOf(colMascarasTiles, tile);
}

void MapCanvas::selectPin(const QString& pin)
{
    tileActual = pictureOf(colPines, pin);
    tileMask = pictureOf(colMascarasPines, pin);
}

void MapCanvas::drawTile(MemoryDC& dc, int x, int y) const
{
    drawPicture(dc, hex::cellOrigin(x, y), *tileActual, tileMask.get());
}

void MapCanvas::redrawCell(const WorldMap& map, int x, int y)
{
    // The pictures of the neighbours reach into the cell's, some below it and some above.
    const QPoint corner = hex::cellOrigin(x, y);
    MemoryDC patch(hex::cellWidth, hex::cellHeight);
    for (int row = y - 1; row <= y + 1; ++row) {
        for (int column = x - 1; column <= x + 1; ++column) {
            if (!map.mapaTiles.contains(row, column))
                continue;
            const QPoint offset = hex::cellOrigin(column, row) - corner;
            if (const QString& tile = map.mapaTiles(row, column); !tile.isEmpty())
                drawPicture(patch, offset, *pictureOf(colTiles, tile),
                            pictureOf(colMascarasTiles, tile).get());
            if (const QString& place = map.mapaPines(row, column); !place.isEmpty()) {
                const QString pin = Place::fromStored(place).pin;
                drawPicture(patch, offset, *pictureOf(colPines, pin),
                            pictureOf(colMascarasPines, pin).get());
            }
        }
    }
    hdcBuffer.BitBlt(corner.x(), corner.y(), patch.width(), patch.height(), patch, 0, 0,
                     platform::RasterOp::SRCCOPY);
}

void MapCanvas::renderMapa(const WorldMap& map)
{
    TileFinder tiles(*this);
    for (int y = 0; y < map.alto; ++y) {
        for (int x = 0; x < map.ancho; ++x) {
            if (const QString& tile = map.mapaTiles(y, x); !tile.isEmpty()) {
                const TileFinder::Found& found = tiles.find(tile);
                drawPicture(hdcBuffer, hex::cellOrigin(x, y), *found.picture, found.mask);
            }
            if (const QString& place = map.mapaPines(y, x); !place.isEmpty()) {
                selectPin(place.section(u';', 0, 0));
                drawTile(hdcBuffer, x, y);
            }
        }
    }
}
