#pragma once

#include "exchange/map_formats.h"

/// What an export would look like.
struct ExportPreview {
    QImage picture; ///< its first sheet or picture, reduced
    QString text;   ///< how large it is, in Spanish
};

/// Draws a preview for that many pixels. Throws Error for what can't be exported, and what Advance
/// throws.
ExportPreview exportPreview(const MapFormat& format, const ExportedMap& map,
                            const ExportOptions& options, QSize room, const Advance& advance);
