#pragma once

#include <QFont>
#include <QImage>
#include <QRectF>
#include <QString>
#include <functional>

class QPainter;

/// How letters over a map look.
namespace lettering {

/// Letters whose widths add up to their text's: that many units of the painter high.
QFont font(double size, QFont::Weight weight = QFont::Normal);

/// Write dark letters and the light halo that makes them readable on every terrain, from the left
/// end of their base line on. The halo reaches that far beyond the letters.
void drawLetters(QPainter& painter, QPointF baseLine, const QString& text);
void drawHalo(QPainter& painter, QPointF baseLine, const QString& text, double haloWidth);

/// What is drawn into a picture of that size, as many of its pixels to a unit as `density` says:
/// drawing it again is much faster than halos are.
QImage kept(QSize size, double density, const std::function<void(QPainter&)>& drawing);

/// Draws the light ground of a key.
void drawPlate(QPainter& painter, const QRectF& box, double unit);

/// Sets the pen for letters and lines on a plate.
void useInk(QPainter& painter, double width);

} // namespace lettering
