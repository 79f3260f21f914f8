#pragma once

#include "exchange/export_files.h"
#include "mapview/map_picture.h"
#include "mapview/overlay.h"

#include <span>

/// A part of a map's picture, enlarged by a whole number, with overlays.
struct MapImage {
    const MapPicture& picture;
    QRect part;
    int scale = 1;
    const MapGeometry* geometry = nullptr; ///< not needed without overlays
    std::span<const Overlay> overlays{};

    QSize size() const { return part.size() * scale; }
};

/// Throws Error when a picture of that size, enlarged, would be too large.
void checkPictureSize(QSize size, int scale);

/// Writes it as a PNG picture, in bands, so that a large one needs no more memory than a small one.
/// Throws Error, and what Advance throws.
void writePng(QIODevice& device, const MapImage& image, const Advance& advance);

/// The whole of it. Throws Error (TooLarge).
QImage drawn(const MapImage& image);
