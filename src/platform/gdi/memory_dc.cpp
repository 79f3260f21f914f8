#include "platform/gdi/memory_dc.h"

#include "platform/core/error.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Calls combine(dst, src) for every pair of pixels of two rectangles of equal size. The operation
/// is a template argument so that the compiler turns the inner loop into vector code.
template <typename Combine>
void combineRows(QImage& target, int x, int y, int w, int h, const QImage& source, int sourceX,
                 int sourceY, Combine combine)
{
    // bits() is asked for once: it would check for shared pixels at every row otherwise.
    const qsizetype targetStride = target.bytesPerLine();
    const qsizetype sourceStride = source.bytesPerLine();
    uchar* targetRow = target.bits() + y * targetStride + x * qsizetype{sizeof(QRgb)};
    const uchar* sourceRow =
        source.constBits() + sourceY * sourceStride + sourceX * qsizetype{sizeof(QRgb)};
    for (int row = 0; row < h; ++row) {
        auto* const to = reinterpret_cast<QRgb*>(targetRow);
        const auto* const from = reinterpret_cast<const QRgb*>(sourceRow);
        for (int i = 0; i < w; ++i)
            to[i] = combine(to[i], from[i]);
        targetRow += targetStride;
        sourceRow += sourceStride;
    }
}

/// Cuts one axis of a copy to what lies inside both surfaces.
void clip(int& to, int& from, int& length, int toSize, int fromSize)
{
    const int before = std::max({0, -to, -from});
    to += before;
    from += before;
    length = std::min({length - before, toSize - to, fromSize - from});
}

/// A source pixel and the part of it, in 1/toSize pixels, that a scaled pixel covers.
struct Share {
    int pixel;
    std::uint64_t weight;
};

/// For each of toSize scaled pixels, the source pixels under it. The weights of one scaled pixel
/// add up to fromSize.
std::vector<std::vector<Share>> areaShares(int fromSize, int toSize)
{
    std::vector<std::vector<Share>> shares(static_cast<std::size_t>(toSize));
    for (std::int64_t i = 0; i < toSize; ++i) {
        const std::int64_t start = i * fromSize;
        const std::int64_t end = start + fromSize;
        for (std::int64_t pixel = start / toSize; pixel * toSize < end; ++pixel) {
            const std::int64_t covered =
                std::min((pixel + 1) * toSize, end) - std::max(pixel * toSize, start);
            shares[static_cast<std::size_t>(i)].push_back(
                {static_cast<int>(pixel), static_cast<std::uint64_t>(covered)});
        }
    }
    return shares;
}

QImage areaAverage(const QImage& source, int w, int h)
{
    const auto columns = areaShares(source.width(), w);
    const auto rows = areaShares(source.height(), h);
    const std::uint64_t area =
        static_cast<std::uint64_t>(source.width()) * static_cast<std::uint64_t>(source.height());
    QImage scaled(w, h, QImage::Format_RGB32);
    using Sums = std::array<std::uint64_t, 3>;
    std::vector<Sums> lineSums(static_cast<std::size_t>(source.width()));
    for (int y = 0; y < h; ++y) {
        std::fill(lineSums.begin(), lineSums.end(), Sums{});
        for (const Share& row : rows[static_cast<std::size_t>(y)]) {
            const auto* const line = reinterpret_cast<const QRgb*>(source.constScanLine(row.pixel));
            for (std::size_t x = 0; x < lineSums.size(); ++x) {
                lineSums[x][0] += row.weight * static_cast<std::uint64_t>(qRed(line[x]));
                lineSums[x][1] += row.weight * static_cast<std::uint64_t>(qGreen(line[x]));
                lineSums[x][2] += row.weight * static_cast<std::uint64_t>(qBlue(line[x]));
            }
        }
        auto* const target = reinterpret_cast<QRgb*>(scaled.scanLine(y));
        for (int x = 0; x < w; ++x) {
            Sums sums{};
            for (const Share& column : columns[static_cast<std::size_t>(x)]) {
                for (std::size_t channel = 0; channel < sums.size(); ++channel)
                    sums[channel] +=
                        column.weight * lineSums[static_cast<std::size_t>(column.pixel)][channel];
            }
            const auto mean = [&](std::size_t channel) {
                return static_cast<int>((sums[channel] + area / 2) / area);
            };
            target[x] = qRgb(mean(0), mean(1), mean(2));
        }
    }
    return scaled;
}

} // namespace

MemoryDC::MemoryDC(int width, int height) : image_(width, height, QImage::Format_RGB32)
{
    if (image_.isNull() && width > 0 && height > 0)
        throw Error(ErrorNumber::TooLarge,
                    u"No hay memoria para una imagen de %1 × %2 píxeles."_s.arg(width).arg(height));
    image_.fill(Qt::black);
}

MemoryDC::MemoryDC(const QImage& picture) : MemoryDC(picture.width(), picture.height())
{
    QPainter painter(&image_);
    painter.drawImage(0, 0, picture);
}

void MemoryDC::BitBlt(int x, int y, int w, int h, const MemoryDC& source, int sourceX, int sourceY,
                      RasterOp op)
{
    clip(x, sourceX, w, width(), source.width());
    clip(y, sourceY, h, height(), source.height());
    if (w <= 0 || h <= 0)
        return;
    const auto run = [&](auto combine) {
        combineRows(image_, x, y, w, h, source.image_, sourceX, sourceY, combine);
    };
    switch (op) {
    case RasterOp::SRCCOPY:
        return run([](QRgb, QRgb src) { return src; });
    case RasterOp::SRCAND:
        return run([](QRgb dst, QRgb src) { return dst & src; });
    case RasterOp::SRCPAINT:
        return run([](QRgb dst, QRgb src) { return dst | src; });
    }
}

void MemoryDC::StretchBlt(int x, int y, int w, int h, const MemoryDC& source, int sourceX,
                          int sourceY, int sourceW, int sourceH, RasterOp op)
{
    if (w == sourceW && h == sourceH) {
        BitBlt(x, y, w, h, source, sourceX, sourceY, op);
        return;
    }
    if (w <= 0 || h <= 0 || sourceW <= 0 || sourceH <= 0)
        return;
    const QImage part = source.image_.copy(sourceX, sourceY, sourceW, sourceH);
    MemoryDC scaled;
    scaled.image_ = stretchMode_ == StretchMode::HALFTONE
                        ? areaAverage(part, w, h)
                        : part.scaled(w, h, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    BitBlt(x, y, w, h, scaled, 0, 0, op);
}

void MemoryDC::LineTo(QPoint point, const Pen& pen)
{
    QPainter painter(&image_);
    painter.setPen(QPen(QColor(pen.color), pen.width));
    painter.drawLine(penPosition_, point);
    penPosition_ = point;
}

} // namespace platform
