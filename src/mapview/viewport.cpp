#include "mapview/viewport.h"

#include <algorithm>
#include <cmath>

namespace {

QPoint floored(QPointF point)
{
    return {static_cast<int>(std::floor(point.x())), static_cast<int>(std::floor(point.y()))};
}

} // namespace

void Viewport::setRoom(QSize screenPixels, double screenScale)
{
    room_ = screenPixels;
    pixelScale_ = std::max(1, static_cast<int>(std::lround(screenScale)));
}

void Viewport::setPicture(QSize size)
{
    picture_ = size;
}

QPoint Viewport::lastOrigin() const
{
    return {std::max(0, picture_.width() - room_.width() / factor()),
            std::max(0, picture_.height() - room_.height() / factor())};
}

void Viewport::setOrigin(QPoint pixel)
{
    const QPoint last = lastOrigin();
    origin_ = {std::clamp(pixel.x(), 0, last.x()), std::clamp(pixel.y(), 0, last.y())};
}

void Viewport::centreOn(QPoint pixel)
{
    setOrigin(pixel - middle() / factor());
}

int Viewport::zoomBeside(int steps) const
{
    const auto found = std::find(zooms.begin(), zooms.end(), zoom_);
    const auto position = static_cast<int>(found - zooms.begin());
    return zooms.at(static_cast<std::size_t>(
        std::clamp(position + steps, 0, static_cast<int>(zooms.size()) - 1)));
}

void Viewport::setZoom(int zoom, QPoint place)
{
    const QPoint kept = pictureAt(place);
    isWhole_ = false;
    zoom_ = zoom;
    setOrigin(kept - floored(QPointF(place) / factor()));
}

double Viewport::scale() const
{
    if (!isWhole_)
        return factor();
    return std::min({1.0 * pixelScale_, 1.0 * room_.width() / std::max(1, picture_.width()),
                     1.0 * room_.height() / std::max(1, picture_.height())});
}

QRect Viewport::seen() const
{
    if (isWhole_)
        return {{}, picture_};
    const auto pixels = [this](int room) { return (room + factor() - 1) / factor(); };
    return {origin_, QSize(pixels(room_.width()), pixels(room_.height()))};
}

QRect Viewport::wholeRect() const
{
    const QSize size = (QSizeF(picture_) * scale()).toSize().expandedTo({1, 1});
    return {{(room_.width() - size.width()) / 2, (room_.height() - size.height()) / 2}, size};
}

QPoint Viewport::pictureAt(QPoint place) const
{
    if (isWhole_)
        return floored(QPointF(place - wholeRect().topLeft()) / scale());
    return origin_ + floored(QPointF(place) / factor());
}

QPoint Viewport::placeOf(QPoint pixel) const
{
    if (isWhole_)
        return (QPointF(pixel) * scale()).toPoint() + wholeRect().topLeft();
    return (pixel - origin_) * factor();
}
