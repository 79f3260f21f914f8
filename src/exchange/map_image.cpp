#include "exchange/map_image.h"

#include "platform/core/error.h"
#include "platform/gdi/png_writer.h"

#include <QPainter>
#include <algorithm>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;

namespace {

constexpr qint64 bandBytes = 16 * 1024 * 1024;

/// The letters of a view at its largest zoom; beyond it they grow with the picture.
double unitOf(const MapImage& image)
{
    constexpr double largestZoom = 8;
    return std::max(1.0, image.scale / largestZoom);
}

platform::MemoryDC copied(const MapImage& image, const QRect& part)
{
    platform::MemoryDC surface(part.width(), part.height());
    image.picture.copyTo(surface, {}, part, MapPicture::Pieces::Passing);
    return surface;
}

/// Some rows of the picture, counted in those of the map's picture, enlarged and with overlays.
QImage band(const MapImage& image, int top, int height)
{
    const QRect part(image.part.left(), image.part.top() + top, image.part.width(), height);
    platform::MemoryDC plain = copied(image, part);
    QImage rows =
        image.scale == 1 ? plain.image() : plain.image().scaled(part.size() * image.scale);
    if (rows.isNull())
        throw Error(ErrorNumber::TooLarge, u"No hay memoria para la imagen."_s);
    const double scale = image.scale;
    const double unit = unitOf(image);
    QPainter painter(&rows);
    drawLayers(painter, *image.geometry, {part, scale, unit}, image.overlays);
    painter.translate(0, -top * scale);
    drawKeys(painter, *image.geometry, {image.part, scale, unit}, image.overlays);
    return rows;
}

} // namespace

void checkPictureSize(QSize size, int scale)
{
    constexpr qint64 mostPixels = 4'000'000'000;
    if (qint64{size.width()} * size.height() * scale * scale > mostPixels)
        throw Error(ErrorNumber::TooLarge,
                    scale == 1 ? u"El mapa es demasiado grande para una imagen."_s
                               : u"La imagen sería demasiado grande. Pida una escala menor."_s);
}

void writePng(QIODevice& device, const MapImage& image, const Advance& advance)
{
    checkPictureSize(image.part.size(), image.scale);
    platform::PngWriter png(device, image.size());
    const bool isPlain = image.overlays.empty();
    const qint64 enlarged = isPlain ? 1 : image.scale;
    const qint64 rowBytes = image.part.width() * enlarged * enlarged * qint64{sizeof(QRgb)};
    const int step = static_cast<int>(std::max<qint64>(1, bandBytes / rowBytes));
    for (int top = 0; top < image.part.height(); top += step) {
        advance(static_cast<double>(top) / image.part.height());
        const int height = std::min(step, image.part.height() - top);
        if (isPlain)
            png.write(copied(image, {image.part.left(), image.part.top() + top, image.part.width(),
                                     height})
                          .image(),
                      image.scale);
        else
            png.write(band(image, top, height));
    }
    png.finish();
}

QImage drawn(const MapImage& image)
{
    constexpr qint64 mostBytes = std::numeric_limits<int>::max();
    if (qint64{image.part.width()} * image.part.height() * image.scale * image.scale *
            qint64{sizeof(QRgb)} >
        mostBytes)
        throw Error(ErrorNumber::TooLarge, u"La imagen sería demasiado grande."_s);
    return band(image, 0, image.part.height());
}
