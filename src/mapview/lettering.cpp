#include "mapview/lettering.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

namespace lettering {
namespace {

constexpr QColor ink(28, 20, 12);
constexpr QColor halo(255, 250, 236);
constexpr double haloStrength = 0.9;
constexpr QColor plate(255, 250, 236);
constexpr QColor plateEdge(28, 20, 12, 150);
constexpr double plateRounding = 3;

/// A pixel of a disc round (0, 0), and how much of it the disc covers.
struct DiscPixel {
    int x;
    int y;
    double share;
};

std::vector<DiscPixel> discOf(double radius)
{
    std::vector<DiscPixel> disc;
    const int reach = static_cast<int>(std::ceil(radius));
    for (int y = -reach; y <= reach; ++y) {
        for (int x = -reach; x <= reach; ++x) {
            const double share = std::clamp(radius + 0.5 - std::hypot(x, y), 0.0, 1.0);
            if (share > 0)
                disc.push_back({x, y, share * haloStrength});
        }
    }
    return disc;
}

} // namespace

QFont font(double size, QFont::Weight weight)
{
    QFont letters;
    letters.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    letters.setWeight(weight);
    letters.setKerning(false);
    letters.setHintingPreference(QFont::PreferNoHinting); // which changes widths
    return letters;
}

QImage letters(const QFont& font, const QString& text, QPointF baseLine, QSize size, double density)
{
    QImage picture((QSizeF(size) * density).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(density);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(font);
    useInk(painter, 1);
    painter.drawText(baseLine, text);
    return picture;
}

QImage haloOf(const QImage& letters, double width)
{
    const std::vector<DiscPixel> disc = discOf(width * letters.devicePixelRatio());
    QImage reached(letters.size(), QImage::Format_Alpha8);
    reached.fill(0);
    for (int y = 0; y < letters.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(letters.constScanLine(y));
        for (int x = 0; x < letters.width(); ++x) {
            // Thin strokes cover no pixel wholly, and yet want a whole halo.
            const int strength = std::min(2 * qAlpha(row[x]), 255);
            if (strength == 0)
                continue;
            for (const DiscPixel& pixel : disc) {
                const QPoint target(x + pixel.x, y + pixel.y);
                if (!reached.rect().contains(target))
                    continue;
                uchar& there = reached.scanLine(target.y())[target.x()];
                there = std::max(there, static_cast<uchar>(strength * pixel.share));
            }
        }
    }
    QImage picture(letters.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(halo);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, reached);
    painter.end();
    picture.setDevicePixelRatio(letters.devicePixelRatio());
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
