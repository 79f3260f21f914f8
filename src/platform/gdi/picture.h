#pragma once

#include "platform/gdi/memory_dc.h"

#include <QImage>
#include <QString>

namespace platform {

/// The most pixels that a picture may have. In memory each takes four bytes.
inline constexpr int maxPicturePixels = 16 * 1024 * 1024;

/// Loads a GIF file (its first frame), transparent where the GIF is. Throws Error: FileNotFound,
/// FileUnreadable, TooLarge, or BadPicture when the file isn't a whole GIF picture.
QImage loadPicture(const QString& path);

/// The same, shrunk where it is larger than that many pixels. Throws as loadPicture does.
QImage loadPicture(const QString& path, QSize largest);

/// Loads a GIF file into a memory DC of the picture's size, black where the GIF is transparent.
/// Throws as loadPicture does.
MemoryDC loadPictureDC(const QString& path);

/// The picture, in its proportions, no larger than that many pixels.
QImage shrunkTo(QImage picture, QSize largest);

/// The picture as it is shown in a place of that size, in its proportions, at a scale of the
/// screen, which is the image's device pixel ratio: enlarged by the largest whole number that fits,
/// so that pixel art stays crisp, or shrunk.
QImage pictureInPlace(const QImage& picture, QSize place, qreal scale);

} // namespace platform
