#include "mapview/cell_colours.h"

#include "mapview/lettering.h"
#include "platform/core/spanish_number.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double opacity = 0.8; // the terrain and its pins are to be guessed below
constexpr int smallestHexagon = 5;
constexpr int swatches = 5;

// The key, in pixels of a plain screen.
constexpr QSizeF keySize(208, 52);
constexpr double keyPadding = 8;
constexpr double keyMargin = 8; // to the frame and to other keys
constexpr double rampTop = 20;
constexpr double rampHeight = 11;
constexpr double letterSize = 11;

struct Stop {
    int red, green, blue;
};
constexpr std::array<Stop, 6> stops{Stop{58, 44, 116},  Stop{52, 86, 148},  Stop{42, 128, 152},
                                    Stop{78, 170, 130}, Stop{164, 206, 92}, Stop{253, 236, 104}};

struct Span {
    float lowest = 0;
    float highest = 0;
};

Span spanOf(const CellFigures& figures)
{
    std::optional<Span> span;
    for (const std::optional<float>& figure : figures) {
        if (!figure)
            continue;
        if (!span)
            span = {*figure, *figure};
        span->lowest = std::min(span->lowest, *figure);
        span->highest = std::max(span->highest, *figure);
    }
    return span.value_or(Span{});
}

QStringList scaleOf(Span span, int decimals)
{
    if (span.lowest == span.highest)
        return {platform::spanishNumber(span.lowest, decimals)};
    QStringList scale;
    for (int i = 0; i < swatches; ++i)
        scale += platform::spanishNumber(
            span.lowest + (static_cast<double>(span.highest) - span.lowest) * i / (swatches - 1),
            decimals);
    return scale;
}

/// The colour of a figure that is so far from the lowest to the highest one.
QRgb colourAt(double share, LightEnd lightEnd)
{
    return rampColour(lightEnd == LightEnd::Highest ? share : 1 - share);
}

/// Every how many of the key's figures there is room for one.
qsizetype figureStep(const QStringList& scale, const QFontMetricsF& metrics, double width)
{
    double all = 0;
    for (const QString& figure : scale)
        all += metrics.horizontalAdvance(figure + u' ');
    return all <= width ? 1 : all <= 2 * width ? 2 : std::max<qsizetype>(1, scale.size() - 1);
}

void drawFigures(QPainter& painter, const QStringList& scale, const QRectF& ramp, double baseLine)
{
    const QFontMetricsF metrics(painter.font());
    const qsizetype last = std::max<qsizetype>(1, scale.size() - 1);
    const qsizetype step = figureStep(scale, metrics, ramp.width());
    for (qsizetype i = 0; i < scale.size(); i += step) {
        const double share = static_cast<double>(i) / static_cast<double>(last);
        // The first begins and the last ends where the ramp does.
        const double width = metrics.horizontalAdvance(scale[i]);
        painter.drawText(QPointF(ramp.left() + share * (ramp.width() - width), baseLine), scale[i]);
    }
}

bool isUncovered(const CellColours& colours, QPoint cell)
{
    return std::binary_search(
        colours.uncovered.begin(), colours.uncovered.end(), cell,
        [](QPoint a, QPoint b) { return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x(); });
}

void drawDisc(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame, QPoint cell,
              QRgb colour)
{
    constexpr double share = 0.27; // of the cell's height
    constexpr QRgb rim = qRgb(250, 248, 240);
    const QRect whole = geometry.cellRect(cell);
    const QPointF middle = frame.at(whole.topLeft() + QPointF(whole.width(), whole.height()) / 2);
    const double radius = share * whole.height() * frame.scale;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(rim), radius / 4));
    painter.setBrush(QColor(colour));
    painter.drawEllipse(middle, radius, radius);
}

void drawHexagons(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                  const CellColours& colours)
{
    const QImage& picture = colours.picture;
    const bool hasPins =
        geometry.cellRect({0, 0}).height() * frame.scale >= smallestPin * frame.unit;
    // With hard edges: soft ones would show the terrain between the cells.
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    const QRect cells = geometry.cellsIn(frame.part) & picture.rect();
    QPolygonF corners;
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column) {
            const QRgb colour = picture.pixel(column, row);
            if (qAlpha(colour) == 0 || (hasPins && isUncovered(colours, {column, row})))
                continue;
            if (colours.areDiscs) {
                drawDisc(painter, geometry, frame, {column, row}, colour);
                continue;
            }
            corners.clear();
            for (const QPoint corner : geometry.corners({column, row}))
                corners += frame.at(corner);
            painter.setBrush(QColor(colour));
            painter.drawConvexPolygon(corners);
        }
    }
}

} // namespace

QRgb rampColour(double share)
{
    const double place = std::clamp(share, 0.0, 1.0) * (stops.size() - 1);
    const auto index = std::min(static_cast<std::size_t>(place), stops.size() - 2);
    const double rest = place - static_cast<double>(index);
    const auto between = [rest](int from, int to) {
        return static_cast<int>(std::lround(from + rest * (to - from)));
    };
    const Stop& from = stops.at(index);
    const Stop& to = stops.at(index + 1);
    return qRgb(between(from.red, to.red), between(from.green, to.green),
                between(from.blue, to.blue));
}

CellColours cellColours(const CellFigures& figures, const QString& title, int decimals,
                        LightEnd lightEnd)
{
    const Span span = spanOf(figures);
    std::array<QRgb, 256> ramp{};
    constexpr int finest = ramp.size() - 1;
    for (int i = 0; i <= finest; ++i)
        ramp.at(static_cast<std::size_t>(i)) = colourAt(static_cast<double>(i) / finest, lightEnd);
    const float width = span.highest - span.lowest;
    QImage picture(figures.columns(), figures.rows(), QImage::Format_ARGB32_Premultiplied);
    for (int row = 0; row < figures.rows(); ++row) {
        auto* const pixels = reinterpret_cast<QRgb*>(picture.scanLine(row));
        for (int column = 0; column < figures.columns(); ++column) {
            const std::optional<float>& figure = figures(row, column);
            const float share = figure && width > 0 ? (*figure - span.lowest) / width : 0;
            pixels[column] = figure ? ramp.at(static_cast<std::size_t>(share * finest)) : 0;
        }
    }
    return {picture, title, scaleOf(span, decimals), lightEnd, false, {}};
}

QSizeF colourKeySize(double unit)
{
    return keySize * unit;
}

void drawColourKey(QPainter& painter, const CellColours& colours, const QRectF& box, double unit)
{
    lettering::drawPlate(painter, box, unit);
    const QRectF ramp(box.topLeft() + QPointF(keyPadding, rampTop) * unit,
                      QSizeF(box.width() - 2 * keyPadding * unit, rampHeight * unit));
    QLinearGradient gradient(ramp.topLeft(), ramp.topRight());
    for (std::size_t i = 0; i < stops.size(); ++i) {
        const double share = static_cast<double>(i) / (stops.size() - 1);
        gradient.setColorAt(share, QColor(colourAt(share, colours.lightEnd)));
    }
    const bool isOneFigure = colours.scale.size() < 2;
    painter.fillRect(ramp, isOneFigure ? QBrush(QColor(colourAt(0, colours.lightEnd)))
                                       : QBrush(gradient));

    lettering::useInk(painter, unit);
    painter.setFont(lettering::font(letterSize * unit, QFont::DemiBold));
    const QFontMetricsF title(painter.font());
    painter.drawText(QPointF(ramp.left(), ramp.top() - title.descent() - 2 * unit),
                     title.elidedText(colours.title, Qt::ElideRight, ramp.width()));
    painter.setFont(lettering::font(letterSize * unit));
    const QFontMetricsF figures(painter.font());
    drawFigures(painter, colours.scale, ramp, ramp.bottom() + figures.ascent() + unit);
}

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const CellColours& colours)
{
    if (colours.picture.isNull())
        return;
    painter.setOpacity(opacity);
    const QRect first = geometry.cellRect({0, 0});
    if (colours.areDiscs)
        painter.setOpacity(1); // no mixture of both
    if (first.height() * frame.scale >= smallestHexagon) {
        drawHexagons(painter, geometry, frame, colours);
    } else if (!colours.areDiscs) {
        const QPoint end = geometry.cellRect({colours.picture.width(), 0}).topLeft();
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(
            frame.at(QRectF(first.topLeft(),
                            QSizeF(end.x() - first.x(), geometry.pictureSize().height()))),
            colours.picture);
    }
    painter.setOpacity(1);
}

void drawKey(QPainter& painter, const MapFrame& frame, const CellColours& colours, int keysBelow)
{
    const double margin = keyMargin * frame.unit;
    QRectF box(QPointF(), colourKeySize(frame.unit));
    box.moveBottomLeft(frame.surface().bottomLeft() +
                       QPointF(margin, -margin - keysBelow * (box.height() + margin)));
    if (frame.surface().contains(box))
        drawColourKey(painter, colours, box, frame.unit);
}
