#include "mapview/reduced_picture.h"

#include <QElapsedTimer>
#include <algorithm>

using platform::MemoryDC;

namespace {

constexpr int blockSource = 512; ///< pixels of the map's picture for a block, along each side

int blockSide(int from, int to)
{
    return std::clamp(static_cast<int>(qint64{blockSource} * to / from), 1, to);
}

} // namespace

void ReducedPicture::follow(const MapPicture& picture, QSize part, QSize size)
{
    if (from_ != part || this->size() != size || drawing_ != picture.drawing()) {
        from_ = part;
        block_ =
            QSize(blockSide(part.width(), size.width()), blockSide(part.height(), size.height()));
        surface_ = MemoryDC(size.width(), size.height());
        next_ = 0;
    } else if (edits_ != picture.edits()) {
        next_ = 0;
    }
    drawing_ = picture.drawing();
    edits_ = picture.edits();
}

int ReducedPicture::columns() const
{
    return (surface_.width() + block_.width() - 1) / block_.width();
}

int ReducedPicture::blocks() const
{
    return surface_.isNull()
               ? 0
               : columns() * ((surface_.height() + block_.height() - 1) / block_.height());
}

QRect ReducedPicture::blockRect(int block) const
{
    const QPoint corner(block % columns() * block_.width(), block / columns() * block_.height());
    return QRect(corner, block_) & QRect({}, size());
}

QRect ReducedPicture::fill(const MapPicture& picture, std::chrono::milliseconds time)
{
    QRect drawn;
    QElapsedTimer timer;
    timer.start();
    const bool hurries = picture.isLarge();
    while (!isFilled() && !(hurries && !drawn.isNull() && timer.elapsed() >= time.count())) {
        const QRect block = blockRect(next_);
        drawPart(picture, block);
        ++next_;
        drawn |= block;
    }
    return drawn;
}

QRect ReducedPicture::redraw(const MapPicture& picture, const QRect& changed)
{
    edits_ = picture.edits();
    const QRect part = platform::stretchedPart(from_, size(), changed);
    if (part.isEmpty())
        return {};
    drawPart(picture, part);
    return part;
}

void ReducedPicture::drawPart(const MapPicture& picture, const QRect& part)
{
    const QRect source = platform::stretchedPart(size(), from_, part);
    MemoryDC pixels(source.width(), source.height());
    picture.copyTo(pixels, {}, source, MapPicture::Pieces::Passing);
    surface_.StretchBltPart(pixels, source.topLeft(), from_, part);
}

QImage reducedPart(const MapPicture& picture, const QRect& part, QSize size,
                   const std::function<void(double share)>& onStrip)
{
    constexpr int stripHeight = 32;
    MemoryDC surface(size.width(), size.height());
    for (int top = 0; top < size.height(); top += stripHeight) {
        onStrip(static_cast<double>(top) / size.height());
        const QRect strip = QRect(0, top, size.width(), stripHeight) & QRect({}, size);
        const QRect source = platform::stretchedPart(size, part.size(), strip);
        MemoryDC pixels(source.width(), source.height());
        picture.copyTo(pixels, {}, source.translated(part.topLeft()), MapPicture::Pieces::Passing);
        surface.StretchBltPart(pixels, source.topLeft(), part.size(), strip);
    }
    return surface.image();
}
