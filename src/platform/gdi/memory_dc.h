#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>

namespace platform {

/// How source pixels meet destination pixels, bit by bit over the colour bits.
enum class RasterOp {
    SRCCOPY,  ///< dst = src
    SRCAND,   ///< dst = dst AND src
    SRCPAINT, ///< dst = dst OR src
};

/// A line of a whole number of pixels in width, solid.
struct Pen {
    int width = 1;
    QRgb color = 0xff000000;
};

/// A drawing surface in memory: 32-bit pixels, black when new. Coordinates are pixels from the top
/// left corner; whatever falls outside source or destination is left out.
class MemoryDC
{
public:
    MemoryDC() = default;
    /// Throws Error (TooLarge) when the surface can't be had.
    MemoryDC(int width, int height);
    /// A surface that shows the picture; its transparent pixels become black.
    explicit MemoryDC(const QImage& picture);

    int width() const { return width_; }
    int height() const { return height_; }
    bool isNull() const { return image_.isNull(); }
    /// The surface as a picture; always Format_RGB32.
    const QImage& image() const { return image_; }

    void fill(QRgb color) { image_.fill(color); }

    /// Draws the w x h rectangle of `source` at (sourceX, sourceY) to (x, y).
    void BitBlt(int x, int y, int w, int h, const MemoryDC& source, int sourceX, int sourceY,
                RasterOp op);
    /// Draws the top left w x h rectangle of `picture` to (x, y) through `mask`: the same as its
    /// mask with SRCAND and then the picture with SRCPAINT, in one go.
    void MaskBlt(int x, int y, int w, int h, const MemoryDC& picture, const MemoryDC& mask);
    /// Draws the source rectangle scaled to the destination rectangle: each pixel is the average of
    /// the source area that it covers.
    void StretchBlt(int x, int y, int w, int h, const MemoryDC& source, int sourceX, int sourceY,
                    int sourceW, int sourceH, RasterOp op);

    /// Draws one part of a picture that is scaled as with StretchBlt onto the whole surface, with
    /// the same pixels. `source` holds what that part is the average of, stretchedPart the other
    /// way round, from a pixel of the picture on; `whole` is the picture's size.
    void StretchBltPart(const MemoryDC& source, QPoint sourceAt, QSize whole, const QRect& part);

    void MoveToEx(QPoint point) { penPosition_ = point; }
    /// Draws a straight line with hard edges from the pen's position and moves the pen to its end.
    void LineTo(QPoint point, const Pen& pen);

private:
    struct Surface {
    };
    /// Takes an image of Format_RGB32 as it is.
    MemoryDC(const QImage& surface, Surface tag);
    QRgb* pixelsAt(int x, int y);
    const QRgb* pixelsAt(int x, int y) const;

    QImage image_;
    // Kept apart from the image because every blit asks for them.
    int width_ = 0;
    int height_ = 0;
    int pitch_ = 0; ///< pixels from one row to the next
    QPoint penPosition_;
};

/// The pixels that a part of a picture reaches into when it is scaled from one size to another;
/// none where the part lies outside the picture.
QRect stretchedPart(QSize from, QSize to, const QRect& part);

} // namespace platform
