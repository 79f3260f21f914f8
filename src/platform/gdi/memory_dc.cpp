#include "platform/gdi/memory_dc.h"

#include "platform/core/error.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <vector>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Some pixels of a MaskBlt. All are read before any is written: that makes four of them one vector
/// operation, with no check whether the surfaces overlap.
template <std::size_t Count>
inline void maskPixels(QRgb* dst, const QRgb* picture, const QRgb* mask)
{
    std::array<QRgb, Count> pixels;
    for (std::size_t i = 0; i < Count; ++i)
        pixels[i] = (dst[i] & mask[i]) | picture[i];
    std::copy(pixels.begin(), pixels.end(), dst);
}

/// A row of a MaskBlt, unrolled for a width known to the compiler.
template <unsigned Width>
inline void maskRow(QRgb* dst, const QRgb* picture, const QRgb* mask)
{
    constexpr int block = std::min(4, static_cast<int>(std::bit_floor(Width)));
    if constexpr (block > 0) {
        maskPixels<block>(dst, picture, mask);
        maskRow<Width - unsigned{block}>(dst + block, picture + block, mask + block);
    }
}

/// The rows of a MaskBlt; pitches are pixels from one row to the next. Map cells are so small that
/// a loop over their width costs as much as the drawing: widths up to Widest have code of their
/// own.
template <unsigned Widest = 16>
void maskRows(int width, int height, QRgb* dst, int dstPitch, const QRgb* picture, const QRgb* mask,
              int sourcePitch)
{
    if constexpr (Widest > 0) {
        if (width < int{Widest}) {
            maskRows<Widest - 1>(width, height, dst, dstPitch, picture, mask, sourcePitch);
            return;
        }
    }
    for (int row = 0; row < height; ++row) {
        maskRow<Widest>(dst, picture, mask);
        for (int i = int{Widest}; i < width; ++i)
            dst[i] = (dst[i] & mask[i]) | picture[i];
        dst += dstPitch;
        picture += sourcePitch;
        mask += sourcePitch;
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

/// The source pixels under one of toSize scaled pixels. Their weights add up to fromSize.
std::vector<Share> areaShares(std::int64_t scaledPixel, int fromSize, int toSize)
{
    std::vector<Share> shares;
    const std::int64_t start = scaledPixel * fromSize;
    const std::int64_t end = start + fromSize;
    for (std::int64_t pixel = start / toSize; pixel * toSize < end; ++pixel) {
        const std::int64_t covered =
            std::min((pixel + 1) * toSize, end) - std::max(pixel * toSize, start);
        shares.push_back({static_cast<int>(pixel), static_cast<std::uint64_t>(covered)});
    }
    return shares;
}

/// The source pixels under the scaled pixels from `first` on.
std::vector<std::vector<Share>> sharesOf(int first, int count, int fromSize, int toSize)
{
    std::vector<std::vector<Share>> shares;
    shares.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        shares.push_back(areaShares(first + i, fromSize, toSize));
    return shares;
}

/// A part of a picture scaled by averaging areas. `source` holds the picture from a pixel on.
QImage areaAverage(const QImage& source, QPoint sourceAt, QSize from, QSize to, QRect part)
{
    const auto columns = sharesOf(part.left(), part.width(), from.width(), to.width());
    const auto rows = sharesOf(part.top(), part.height(), from.height(), to.height());
    const int firstColumn = columns.front().front().pixel;
    const std::uint64_t area =
        static_cast<std::uint64_t>(from.width()) * static_cast<std::uint64_t>(from.height());
    QImage scaled(part.size(), QImage::Format_RGB32);
    using Sums = std::array<std::uint64_t, 3>;
    std::vector<Sums> lineSums(static_cast<std::size_t>(columns.back().back().pixel - firstColumn) +
                               1);
    for (int y = 0; y < part.height(); ++y) {
        std::fill(lineSums.begin(), lineSums.end(), Sums{});
        for (const Share& row : rows[static_cast<std::size_t>(y)]) {
            const auto* const line =
                reinterpret_cast<const QRgb*>(source.constScanLine(row.pixel - sourceAt.y())) +
                firstColumn - sourceAt.x();
            for (std::size_t x = 0; x < lineSums.size(); ++x) {
                lineSums[x][0] += row.weight * static_cast<std::uint64_t>(qRed(line[x]));
                lineSums[x][1] += row.weight * static_cast<std::uint64_t>(qGreen(line[x]));
                lineSums[x][2] += row.weight * static_cast<std::uint64_t>(qBlue(line[x]));
            }
        }
        auto* const target = reinterpret_cast<QRgb*>(scaled.scanLine(y));
        for (std::size_t x = 0; x < columns.size(); ++x) {
            Sums sums{};
            for (const Share& column : columns[x]) {
                for (std::size_t channel = 0; channel < sums.size(); ++channel)
                    sums[channel] +=
                        column.weight *
                        lineSums[static_cast<std::size_t>(column.pixel - firstColumn)][channel];
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

MemoryDC::MemoryDC(int width, int height)
    : MemoryDC(QImage(width, height, QImage::Format_RGB32), Surface())
{
    if (image_.isNull() && width > 0 && height > 0)
        throw Error(ErrorNumber::TooLarge,
                    u"No hay memoria para una imagen de %1 × %2 píxeles."_s.arg(width).arg(height));
    image_.fill(Qt::black);
}

MemoryDC::MemoryDC(const QImage& surface, Surface /*tag*/)
    : image_(surface),
      width_(surface.width()),
      height_(surface.height()),
      pitch_(static_cast<int>(surface.bytesPerLine() / qsizetype{sizeof(QRgb)}))
{
}

QRgb* MemoryDC::pixelsAt(int x, int y)
{
    return reinterpret_cast<QRgb*>(image_.bits()) + qsizetype{y} * pitch_ + x;
}

const QRgb* MemoryDC::pixelsAt(int x, int y) const
{
    return reinterpret_cast<const QRgb*>(image_.constBits()) + qsizetype{y} * pitch_ + x;
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
    QRgb* to = pixelsAt(x, y);
    const QRgb* from = source.pixelsAt(sourceX, sourceY);
    // Each operation gets a loop of its own, which the compiler turns into vector code.
    const auto run = [&](auto combine) {
        for (int row = 0; row < h; ++row) {
            for (int i = 0; i < w; ++i)
                to[i] = combine(to[i], from[i]);
            to += pitch_;
            from += source.pitch_;
        }
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

void MemoryDC::MaskBlt(int x, int y, int w, int h, const MemoryDC& picture, const MemoryDC& mask)
{
    if (picture.width_ != mask.width_ ||
        picture.height_ != mask.height_) { // each covers an area of its own
        BitBlt(x, y, w, h, mask, 0, 0, RasterOp::SRCAND);
        BitBlt(x, y, w, h, picture, 0, 0, RasterOp::SRCPAINT);
        return;
    }
    int sourceX = 0;
    int sourceY = 0;
    clip(x, sourceX, w, width(), picture.width());
    clip(y, sourceY, h, height(), picture.height());
    if (w <= 0 || h <= 0)
        return;
    maskRows(w, h, pixelsAt(x, y), pitch_, picture.pixelsAt(sourceX, sourceY),
             mask.pixelsAt(sourceX, sourceY), picture.pitch_);
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
    const QRect from(sourceX, sourceY, sourceW, sourceH);
    const QImage part = from == source.image_.rect() ? source.image_ : source.image_.copy(from);
    const MemoryDC scaled(areaAverage(part, {}, from.size(), {w, h}, {0, 0, w, h}), Surface());
    BitBlt(x, y, w, h, scaled, 0, 0, op);
}

QRect stretchedPart(QSize from, QSize to, const QRect& changed)
{
    const QRect inside = changed & QRect({}, from);
    if (inside.isEmpty() || to.isEmpty())
        return {};
    const auto scaled = [](qint64 position, int fromSize, int toSize, bool up) {
        return static_cast<int>((position * toSize + (up ? fromSize - 1 : 0)) / fromSize);
    };
    return {QPoint(scaled(inside.left(), from.width(), to.width(), false),
                   scaled(inside.top(), from.height(), to.height(), false)),
            QPoint(scaled(inside.right() + 1, from.width(), to.width(), true) - 1,
                   scaled(inside.bottom() + 1, from.height(), to.height(), true) - 1)};
}

void MemoryDC::StretchBltPart(const MemoryDC& source, QPoint sourceAt, QSize whole,
                              const QRect& part)
{
    const MemoryDC patch(areaAverage(source.image_, sourceAt, whole, image_.size(), part),
                         Surface());
    BitBlt(part.x(), part.y(), part.width(), part.height(), patch, 0, 0, RasterOp::SRCCOPY);
}

void MemoryDC::LineTo(QPoint point, const Pen& pen)
{
    // On a surface of its own: a painter rounds a line that its surface cuts in another way.
    const QRect covered = QRect(penPosition_, QSize(1, 1))
                              .united(QRect(point, QSize(1, 1)))
                              .adjusted(-pen.width, -pen.width, pen.width, pen.width);
    QImage line(covered.size(), QImage::Format_ARGB32_Premultiplied);
    line.fill(Qt::transparent);
    QPainter painter(&line);
    painter.setPen(QPen(QColor(pen.color), pen.width));
    painter.drawLine(penPosition_ - covered.topLeft(), point - covered.topLeft());
    painter.end();
    QPainter(&image_).drawImage(covered.topLeft(), line);
    penPosition_ = point;
}

} // namespace platform
