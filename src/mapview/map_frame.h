#pragma once

#include <QPointF>
#include <QRect>
#include <QRectF>

/// Where cells are less high, in pixels of a plain screen, their pins can't be made out.
inline constexpr int smallestPin = 6;

/// Where a painter draws a part of a map's picture: from its own (0, 0) on.
struct MapFrame {
    QRect part;       ///< of the picture, in its pixels
    double scale = 1; ///< units of the painter to a pixel of the picture
    double unit = 1;  ///< units of the painter to a pixel of a plain screen, for lines and letters

    /// Where a point of the picture is, in units of the painter.
    QPointF at(QPointF pixel) const { return (pixel - part.topLeft()) * scale; }
    /// Where a rectangle of the picture is.
    QRectF at(const QRectF& pixels) const { return {at(pixels.topLeft()), pixels.size() * scale}; }
    /// All that is drawn on, in units of the painter.
    QRectF surface() const { return {QPointF(), QSizeF(part.size()) * scale}; }
};
