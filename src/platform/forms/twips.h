#pragma once

#include <QtGlobal>

namespace platform {

/// Sizes of windows and columns are given in twips, 1/1440 inch: 15 to the (scaled) pixel.
inline constexpr int twipsPerPixel = 15;

constexpr int pixelsFromTwips(double twips)
{
    return qRound(twips / twipsPerPixel);
}

} // namespace platform
