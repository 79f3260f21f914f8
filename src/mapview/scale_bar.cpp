#include "mapview/scale_bar.h"

#include "mapview/lettering.h"
#include "platform/core/spanish_number.h"

#include <QFontMetricsF>
#include <QLineF>
#include <QPainter>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// In pixels of a plain screen.
constexpr double longest = 160;
constexpr double barHeight = 5;
constexpr double padding = 8;
constexpr double margin = 8;
constexpr double letterSize = 11;
constexpr int fields = 4; // dark and light in turn
constexpr QColor light(255, 255, 255);
constexpr QColor dark(28, 20, 12);

/// The way from a cell's centre to that across its upper side, in pixels of the picture.
double pixelsPerCell(const MapGeometry& geometry)
{
    const auto centre = [&](QPoint cell) { return QRectF(geometry.cellRect(cell)).center(); };
    return QLineF(centre({0, 1}), centre(geometry.across({0, 1}, 0))).length();
}

QString lengthText(double kilometres)
{
    constexpr double metres = 1000;
    if (kilometres < 1)
        return platform::spanishNumber(kilometres * metres, 3) + u" m"_s;
    return platform::spanishNumber(kilometres) + u" km"_s;
}

} // namespace

double roundLength(double most)
{
    // A hair's breadth more, so that what is round itself stays.
    const double power = std::pow(10, std::floor(std::log10(most * (1 + 1e-9))));
    const double digits = most * (1 + 1e-9) / power;
    return power * (digits >= 5 ? 5 : digits >= 2 ? 2 : 1);
}

void drawBar(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
             const ScaleBar& bar)
{
    const double perKilometre = pixelsPerCell(geometry) * frame.scale / bar.kilometresPerCell;
    if (!(perKilometre > 0) || !std::isfinite(perKilometre))
        return;
    const double length = roundLength(longest * frame.unit / perKilometre);
    const double width = length * perKilometre;
    const QString text = lengthText(length);
    painter.setFont(lettering::font(letterSize * frame.unit));
    const QFontMetricsF metrics(painter.font());
    // The first and the last figure stand in the middle of the bar's ends.
    const double before = std::max(padding * frame.unit, metrics.horizontalAdvance(u'0'));
    const double behind = padding * frame.unit + metrics.horizontalAdvance(text) / 2;
    QRectF box(0, 0, before + width + behind,
               (2.5 * padding + barHeight) * frame.unit + metrics.capHeight());
    box.moveBottomRight(frame.surface().bottomRight() - QPointF(margin, margin) * frame.unit);
    if (!frame.surface().contains(box))
        return;

    lettering::drawPlate(painter, box, frame.unit);
    const double baseLine = box.top() + padding * frame.unit + metrics.capHeight();
    const QRectF whole(box.left() + before, baseLine + padding / 2 * frame.unit, width,
                       barHeight * frame.unit);
    for (int i = 0; i < fields; ++i)
        painter.fillRect(
            QRectF(whole.left() + i * width / fields, whole.top(), width / fields, whole.height()),
            i % 2 == 0 ? dark : light);
    lettering::useInk(painter, frame.unit);
    painter.drawRect(whole);
    const auto write = [&](double place, const QString& figure) {
        painter.drawText(QPointF(place - metrics.horizontalAdvance(figure) / 2, baseLine), figure);
    };
    write(whole.left(), u"0"_s);
    write(whole.right(), text);
}
