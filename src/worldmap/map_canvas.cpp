#include "worldmap/map_canvas.h"

#include "platform/core/error.h"
#include "worldmap/hex_map_geometry.h"
#include "worldmap/name_cache.h"

using namespace Qt::StringLiterals;

using platform::MemoryDC;

namespace {

constexpr QSize cellSize(hex::cellWidth, hex::cellHeight);

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

struct TilePictures {
    const MemoryDC* picture = nullptr;
    const MemoryDC* mask = nullptr;
};

} // namespace

void MapCanvas::crearBuffer(int ancho, int alto)
{
    hdcBuffer = MapPicture(hex::pictureSize(ancho, alto));
    map_ = nullptr;
    covered_.clear();
}

void MapCanvas::selectTile(const QString& tile)
{
    tileActual = pictureOf(pictures_->colTiles, tile);
    tileMask = pictureOf(pictures_->colMascarasTiles, tile);
}

void MapCanvas::selectPin(const QString& pin)
{
    tileActual = pictureOf(pictures_->colPines, pin);
    tileMask = pictureOf(pictures_->colMascarasPines, pin);
}

void MapCanvas::drawTile(int x, int y)
{
    const QPoint origin = hex::cellOrigin(x, y);
    hdcBuffer.drawOver(QRect(origin, cellSize),
                       [origin, tile = tileActual, mask = tileMask](MemoryDC& dc, QPoint corner) {
                           drawPicture(dc, origin - corner, *tile, mask.get());
                       });
}

void MapCanvas::renderMapa(const WorldMap& map)
{
    map_ = &map;
    covered_.clear();
    hdcBuffer.draw([this](MemoryDC& dc, QPoint corner) { paint(dc, corner); });
}

void MapCanvas::drawPainted(const std::vector<MapChange::Tile>& before)
{
    std::vector<QRect> drawn;
    for (const MapChange::Tile& old : before) {
        if (!map_->placeAt(old.cell)) {
            drawn.emplace_back(hex::cellOrigin(old.cell.x(), old.cell.y()), cellSize);
        } else if (const auto first = covered_.constFind(old.cell); first == covered_.cend()) {
            covered_.insert(old.cell, old.tile);
        } else if (*first == map_->tileAt(old.cell)) {
            covered_.erase(first);
        }
    }
    hdcBuffer.redraw(drawn);
}

void MapCanvas::redrawCell(QPoint cell)
{
    covered_.remove(cell);
    const QRect part(hex::cellOrigin(cell.x(), cell.y()), cellSize);
    hdcBuffer.redraw({&part, 1});
}

/// Draws the part of the map that begins at a pixel of its picture: the cells that reach into it,
/// row by row.
void MapCanvas::paint(MemoryDC& dc, QPoint corner) const
{
    NameCache<TilePictures> tiles;
    const auto lookUp = [this](const QString& tile) {
        return TilePictures{pictureOf(pictures_->colTiles, tile).get(),
                            pictureOf(pictures_->colMascarasTiles, tile).get()};
    };
    const QRect cells = HexMapGeometry({map_->ancho(), map_->alto()})
                            .cellsIn(QRect(corner, QSize(dc.width(), dc.height())));
    for (int y = cells.top(); y <= cells.bottom(); ++y) {
        auto place = map_->mapaPines.lower_bound({cells.left(), y});
        for (int x = cells.left(); x <= cells.right(); ++x) {
            const QPoint cell(x, y);
            const QPoint origin = hex::cellOrigin(x, y) - corner;
            const bool hasPlace = place != map_->mapaPines.end() && place->first == cell;
            const auto covered = hasPlace ? covered_.constFind(cell) : covered_.cend();
            const QString& tile = covered == covered_.cend() ? map_->mapaTiles(y, x) : *covered;
            if (!tile.isEmpty()) {
                const TilePictures& found = tiles.find(tile, lookUp);
                drawPicture(dc, origin, *found.picture, found.mask);
            }
            if (hasPlace) {
                drawPicture(dc, origin, *pictureOf(pictures_->colPines, place->second.pin),
                            pictureOf(pictures_->colMascarasPines, place->second.pin).get());
                ++place;
            }
        }
    }
}
