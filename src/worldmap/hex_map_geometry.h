#pragma once

#include "mapview/map_geometry.h"
#include "worldmap/hex_geometry.h"

/// The world map's cells as map views see them.
class HexMapGeometry final : public MapGeometry
{
public:
    /// Of a map of that many columns and rows.
    explicit HexMapGeometry(QSize cells) : cells_(cells) {}

    QSize cells() const override { return cells_; }
    QSize pictureSize() const override { return hex::pictureSize(cells_.width(), cells_.height()); }
    QRect cellRect(QPoint cell) const override
    {
        return {hex::cellOrigin(cell.x(), cell.y()), QSize(hex::cellWidth, hex::cellHeight)};
    }
    QPoint cellAt(QPoint pixel) const override { return hex::cellAt(pixel); }
    QPoint firstCell(QPoint pixel) const override
    {
        const int column = pixel.x() / hex::columnPitch;
        return {column - column % 2, pixel.y() / hex::cellHeight}; // always an even column
    }

    QPolygon corners(QPoint cell) const override
    {
        constexpr int inset = 4; // of the upper and the lower side, as the tiles' masks have it
        const QPolygon atOrigin{{{inset, 0},
                                 {hex::cellWidth - inset, 0},
                                 {hex::cellWidth, hex::cellHeight / 2},
                                 {hex::cellWidth - inset, hex::cellHeight},
                                 {inset, hex::cellHeight},
                                 {0, hex::cellHeight / 2}}};
        return atOrigin.translated(hex::cellOrigin(cell.x(), cell.y()));
    }

    QPoint across(QPoint cell, int side) const override
    {
        // From the upper side on, clockwise; columns beside an odd one begin half a cell higher.
        const int down = cell.x() & 1;
        const std::array<QPoint, 6> beyond{QPoint(0, -1),    QPoint(1, down - 1),
                                           QPoint(1, down),  QPoint(0, 1),
                                           QPoint(-1, down), QPoint(-1, down - 1)};
        return cell + beyond.at(static_cast<std::size_t>(side));
    }

private:
    QSize cells_;
};
