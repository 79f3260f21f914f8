#include "platform/gdi/picture.h"

#include "platform/core/app_folder.h"
#include "platform/core/text_file.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr qint64 maxPictureBytes = 32 * 1024 * 1024;

/// The size of a GIF file's picture, or nothing when the file lacks a data block of its first
/// frame. The decoder can't be asked: it fills up what a file that was cut off lacks, and takes
/// memory for whatever size the file says.
std::optional<QSize> wholeFrame(QByteArrayView gif)
{
    qsizetype at = 6; // after the signature
    const auto byteAt = [&](qsizetype index) -> int {
        return index < gif.size() ? static_cast<uchar>(gif[index]) : 0;
    };
    const auto sizeAt = [&](qsizetype index) {
        return QSize(byteAt(index) | byteAt(index + 1) << 8, byteAt(index + 2) | byteAt(index + 3)
                                                                                     << 8);
    };
    const auto colourTableSize = [](int flags) {
        return flags & 0x80 ? 3 << ((flags & 7) + 1) : 0;
    };
    const auto skipBlocks = [&] {
        while (byteAt(at) != 0)
            at += 1 + byteAt(at);
        ++at;
        return at <= gif.size();
    };

    const QSize screen = sizeAt(at);
    at += 7 + colourTableSize(byteAt(at + 4));
    while (byteAt(at) == '!') { // an extension: its label, then blocks
        at += 2;
        if (!skipBlocks())
            return std::nullopt;
    }
    if (byteAt(at) != ',')
        return std::nullopt;
    const QSize corner = sizeAt(at + 1);
    const QSize frame = sizeAt(at + 5);
    at += 10 + colourTableSize(byteAt(at + 9));
    ++at; // the code size
    if (!skipBlocks())
        return std::nullopt;
    return screen.expandedTo(corner + frame);
}

} // namespace

QImage loadPicture(const QString& path)
{
    QByteArray bytes = readFile(path, maxPictureBytes);
    const std::optional<QSize> size = wholeFrame(bytes);
    if (size && qint64{size->width()} * size->height() > maxPicturePixels)
        throw Error(ErrorNumber::TooLarge,
                    u"«%1» mide %2 × %3 píxeles; una imagen no puede pasar de %4."_s.arg(
                        displayPath(path), QString::number(size->width()),
                        QString::number(size->height()), QString::number(maxPicturePixels)));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "gif");
    reader.setAutoDetectImageFormat(false);
    QImage picture = size ? reader.read() : QImage();
    if (picture.isNull())
        throw Error(ErrorNumber::BadPicture,
                    u"«%1» no es una imagen GIF válida."_s.arg(displayPath(path)));
    return picture;
}

QImage loadPicture(const QString& path, QSize largest)
{
    return shrunkTo(loadPicture(path), largest);
}

MemoryDC loadPictureDC(const QString& path)
{
    return MemoryDC(loadPicture(path));
}

QImage shrunkTo(QImage picture, QSize largest)
{
    if (picture.size().boundedTo(largest) == picture.size())
        return picture;
    // In place, where nobody else holds the pixels; smoothing would make a copy of all of them.
    if (picture.hasAlphaChannel())
        picture = std::move(picture).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QSize size = picture.size().scaled(largest, Qt::KeepAspectRatio).expandedTo({1, 1});
    return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage pictureInPlace(const QImage& picture, QSize place, qreal scale)
{
    if (picture.isNull())
        return {};
    const int times = std::min(place.width() / picture.width(), place.height() / picture.height());
    const QSize shown =
        times > 0 ? picture.size() * times : picture.size().scaled(place, Qt::KeepAspectRatio);
    const QSize pixels = (QSizeF(shown) * scale).toSize().expandedTo({1, 1});
    // Enlarged beyond the wanted size by a whole number, then shrunk to it where it isn't one.
    const int enlarged = static_cast<int>(
        std::ceil(std::max(1.0, pixels.width() / static_cast<double>(picture.width()))));
    QImage made = enlarged > 1 ? picture.scaled(picture.size() * enlarged) : picture;
    if (made.size() != pixels)
        made = made.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    made.setDevicePixelRatio(scale);
    return made;
}

} // namespace platform
