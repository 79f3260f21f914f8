#pragma once

#include "localmap/local_canvas.h"
#include "mapview/map_geometry.h"

#include <array>

/// The square cells of a local map as map views see them.
class LocalMapGeometry final : public MapGeometry
{
public:
    /// Of a map of that many columns and rows.
    explicit LocalMapGeometry(QSize cells) : cells_(cells) {}

    QSize cells() const override { return cells_; }
    QSize pictureSize() const override
    {
        return {cells_.width() * cellSize.width(), cells_.height() * cellSize.height()};
    }
    QRect cellRect(QPoint cell) const override
    {
        return {{cell.x() * cellSize.width(), cell.y() * cellSize.height()}, cellSize};
    }
    QPoint cellAt(QPoint pixel) const override
    {
        constexpr auto floorDivide = [](int a, int b) { return a / b - (a % b < 0 ? 1 : 0); };
        return {floorDivide(pixel.x(), cellSize.width()),
                floorDivide(pixel.y(), cellSize.height())};
    }
    QPoint firstCell(QPoint pixel) const override { return cellAt(pixel); }
    QPolygon corners(QPoint cell) const override
    {
        const QPoint corner = cellRect(cell).topLeft();
        return QPolygon({corner, corner + QPoint(cellSize.width(), 0),
                         corner + QPoint(cellSize.width(), cellSize.height()),
                         corner + QPoint(0, cellSize.height())});
    }
    QPoint across(QPoint cell, int side) const override
    {
        constexpr std::array beyond{QPoint(0, -1), QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0)};
        return cell + beyond.at(static_cast<std::size_t>(side));
    }

private:
    static constexpr QSize cellSize{LocalCanvas::anchoTile, LocalCanvas::altoTile};

    QSize cells_;
};
