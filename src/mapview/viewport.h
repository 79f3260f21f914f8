#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QSizeF>
#include <array>

/// Which part of a map's picture a view shows, and how large. Places in the view are counted in
/// pixels of the screen from its corner, those of the picture in its own.
class Viewport
{
public:
    /// How many times as large the picture can be.
    static constexpr std::array zooms{1, 2, 3, 4, 6, 8};

    /// Takes the view's size and the screen's scale, of which whole pixels make a pixel of the
    /// picture.
    void setRoom(QSize screenPixels, double screenScale);
    void setPicture(QSize size);

    int zoom() const { return zoom_; }
    /// Whether all of the picture is shown, reduced as far as it must be.
    bool isWhole() const { return isWhole_; }
    /// Whether a pixel of the picture is one of a plain screen.
    bool isNatural() const { return zoom_ == 1 && !isWhole_; }
    QPoint origin() const { return isWhole_ ? QPoint() : origin_; }

    /// Moves the view, as far as the picture reaches.
    void setOrigin(QPoint pixel);
    /// Puts a pixel of the picture into the corner, also where the view reaches beyond its end.
    void setCorner(QPoint pixel) { origin_ = pixel; }
    /// Puts a pixel of the picture into the middle, as far as the picture reaches.
    void centreOn(QPoint pixel);
    /// The corner of the last view of the picture.
    QPoint lastOrigin() const;
    /// Shows the picture at one of the zooms; the pixel at a place of the view stays there, as far
    /// as the picture reaches.
    void setZoom(int zoom, QPoint place);
    /// The zoom that many steps on, as far as they go.
    int zoomBeside(int steps) const;
    void showWhole() { isWhole_ = true; }

    /// Pixels of the screen to one of the picture.
    double scale() const;
    /// The part of the picture in the view, whose last pixels may be cut; it may reach beyond.
    QRect seen() const;
    /// How much that is to the fraction of a pixel.
    QSizeF seenSize() const { return isWhole_ ? picture_ : QSizeF(room_) / factor(); }
    /// The size of the whole picture reduced, and where it is.
    QRect wholeRect() const;
    QPoint pictureAt(QPoint place) const;
    QPoint placeOf(QPoint pixel) const;
    QPoint middle() const { return {room_.width() / 2, room_.height() / 2}; }

private:
    int factor() const { return zoom_ * pixelScale_; }

    QSize room_;
    QSize picture_;
    int pixelScale_ = 1;
    int zoom_ = 1;
    bool isWhole_ = false;
    QPoint origin_;
};
