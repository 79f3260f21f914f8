#pragma once

#include "mapview/map_picture.h"

#include <chrono>

/// The picture of a map reduced by averaging areas, so that all of it can be seen. It fills in bit
/// by bit, as a large map takes long to draw.
class ReducedPicture
{
public:
    ReducedPicture() = default;

    /// Makes it one of the upper left part of a map's picture, whose last columns may be left out,
    /// at a size. What isn't as it was drawn before is to be filled in: all of another picture or
    /// size, and what changed over what is there.
    void follow(const MapPicture& picture, QSize part, QSize size);

    /// Black where it isn't filled in yet.
    const platform::MemoryDC& surface() const { return surface_; }
    QSize size() const { return {surface_.width(), surface_.height()}; }
    bool isFilled() const { return next_ >= blocks(); }

    /// Fills in what is missing, if the map's picture is large for about that long, and returns
    /// what was drawn. Throws as MapPicture does.
    QRect fill(const MapPicture& picture, std::chrono::milliseconds time);
    /// Draws again what a part of the map's picture reaches into, and returns it.
    QRect redraw(const MapPicture& picture, const QRect& changed);

private:
    int columns() const;
    int blocks() const;
    QRect blockRect(int block) const;
    void drawPart(const MapPicture& picture, const QRect& part);

    QSize from_;
    QSize block_; ///< that are drawn at a time
    int next_ = 0;
    int drawing_ = -1; ///< of the map's picture
    int edits_ = 0;
    platform::MemoryDC surface_;
};

/// A part of a map's picture at a size, each pixel the average of the area that it covers. It is
/// drawn in strips, before each of which `onStrip` is told how far it has come, from 0 to 1. Throws
/// as MapPicture does.
QImage reducedPart(const MapPicture& picture, const QRect& part, QSize size,
                   const std::function<void(double share)>& onStrip);
