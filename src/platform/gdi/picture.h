#pragma once

#include "platform/gdi/memory_dc.h"

#include <QImage>
#include <QString>

namespace platform {

/// Loads a GIF file (its first frame), transparent where the GIF is. Throws Error: FileNotFound,
/// FileUnreadable, or BadPicture when the file isn't a whole GIF picture.
QImage loadPicture(const QString& path);

/// Loads a GIF file into a memory DC of the picture's size, black where the GIF is transparent.
/// Throws as loadPicture does.
MemoryDC loadPictureDC(const QString& path);

} // namespace platform
