#include "mapview/lettering.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace lettering {
namespace {

constexpr QColor ink(28, 20, 12);
constexpr QRgb halo = qRgb(255, 250, 236);
constexpr double haloStrength = 0.9;
constexpr QColor plate(255, 250, 236);
constexpr QColor plateEdge(28, 20, 12, 150);
constexpr double plateRounding = 3;

/// Spreads the letters' strength over a disc round each of their pixels. It is done in a table with
/// a margin, where a step to another pixel is one number whatever the pixel.
class Spreading
{
public:
    Spreading(QSize size, double radius)
        : reach_(static_cast<int>(std::ceil(radius))),
          stride_(size.width() + 2 * reach_),
          reached_(static_cast<std::size_t>(stride_) *
                   static_cast<std::size_t>(size.height() + 2 * reach_))
    {
        for (int y = -reach_; y <= reach_; ++y) {
            for (int x = -reach_; x <= reach_; ++x) {
                const double share = std::clamp(radius + 0.5 - std::hypot(x, y), 0.0, 1.0);
                if (share > 0)
                    disc_.push_back({y * stride_ + x, std::lround(share * haloStrength * whole)});
            }
        }
    }

    void add(int x, int y, int strength)
    {
        uchar* const centre = &reached_[index(x, y)];
        for (const Step& step : disc_) {
            const auto there = static_cast<uchar>(strength * step.share / whole);
            centre[step.way] = std::max(centre[step.way], there);
        }
    }

    int at(int x, int y) const { return reached_[index(x, y)]; }

private:
    static constexpr int whole = 256;
    struct Step {
        std::ptrdiff_t way;
        long share; ///< of `whole`
    };

    std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y + reach_) * static_cast<std::size_t>(stride_) +
               static_cast<std::size_t>(x + reach_);
    }

    int reach_;
    int stride_;
    std::vector<uchar> reached_;
    std::vector<Step> disc_;
};

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
    Spreading spreading(letters.size(), width * letters.devicePixelRatio());
    for (int y = 0; y < letters.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(letters.constScanLine(y));
        for (int x = 0; x < letters.width(); ++x) {
            // Thin strokes cover no pixel wholly, and yet want a whole halo.
            if (const int strength = std::min(2 * qAlpha(row[x]), 255); strength > 0)
                spreading.add(x, y, strength);
        }
    }
    QImage picture(letters.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < picture.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            row[x] = qPremultiply(qRgba(qRed(halo), qGreen(halo), qBlue(halo), spreading.at(x, y)));
    }
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
