#pragma once

#include <QFont>
#include <QImage>
#include <QRectF>
#include <QString>

class QPainter;

/// How letters over a map look.
namespace lettering {

/// Letters whose widths add up to their text's: that many units of the painter high.
QFont font(double size, QFont::Weight weight = QFont::Normal);

/// Dark letters from that left end of their base line on, in a transparent picture of that size, of
/// as many of its pixels to a unit as `density` says.
QImage letters(const QFont& font, const QString& text, QPointF baseLine, QSize size,
               double density);

/// A light halo to be drawn below letters, which makes them readable on every terrain. It reaches
/// so many units beyond them.
QImage haloOf(const QImage& letters, double width);

/// Draws the light ground of a key.
void drawPlate(QPainter& painter, const QRectF& box, double unit);

/// Sets the pen for letters and lines on a plate.
void useInk(QPainter& painter, double width);

} // namespace lettering
