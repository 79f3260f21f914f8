#include "mapview/lettering.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace lettering {
namespace {

constexpr QColor ink(28, 20, 12);
constexpr QColor halo(255, 250, 236, 225);
constexpr QColor plate(255, 250, 236);
constexpr QColor plateEdge(28, 20, 12, 150);
constexpr double plateRounding = 3;

} // namespace

QFont font(double size, QFont::Weight weight)
{
    QFont letters;
    letters.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    letters.setWeight(weight);
    letters.setKerning(false);
    // The halo follows the letters' outlines, which hinting would move.
    letters.setHintingPreference(QFont::PreferNoHinting);
    return letters;
}

void drawLetters(QPainter& painter, QPointF baseLine, const QString& text)
{
    useInk(painter, 1);
    painter.drawText(baseLine, text);
}

void drawHalo(QPainter& painter, QPointF baseLine, const QString& text, double haloWidth)
{
    QPainterPath outlines;
    outlines.addText(baseLine, painter.font(), text);
    painter.strokePath(outlines,
                       QPen(halo, 2 * haloWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

QImage kept(QSize size, double density, const std::function<void(QPainter&)>& drawing)
{
    QImage picture((QSizeF(size) * density).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(density);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing(painter);
    return picture;
}

void drawPlate(QPainter& painter, const QRectF& box, double unit)
{
    painter.setPen(QPen(plateEdge, unit));
    painter.setBrush(plate);
    const double inset = unit / 2;
    painter.drawRoundedRect(box.adjusted(inset, inset, -inset, -inset), plateRounding * unit,
                            plateRounding * unit);
    painter.setBrush(Qt::NoBrush);
}

void useInk(QPainter& painter, double width)
{
    painter.setPen(QPen(ink, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

} // namespace lettering
