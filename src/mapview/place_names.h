#pragma once

#include "mapview/map_frame.h"
#include "mapview/map_geometry.h"

#include <QHash>
#include <QImage>
#include <QString>
#include <memory>
#include <vector>

class QPainter;

/// A place whose name is written on the map. Without a name its pin is still kept clear.
struct NamedPlace {
    QPoint cell;
    QString name;
    int importance = 0; ///< 0 is the highest
    bool isBold = false;
};

/// A name on the map, in units of the painter from the whole picture's corner.
struct PlacedName {
    QRect box;    ///< with the halo
    QRect pin;    ///< what it stands beside
    QString text; ///< shortened if it is very long
    bool isBold = false;
    bool hasDot = false; ///< in the pin's place, which is too small to be seen
};

/// Where the names of a map's places are written at a scale: near their places, covering neither
/// each other nor a place's cell, inside the picture if it is large enough. Where there isn't room
/// for all, the more important ones stay. Where the map is so small that pins can't be made out, a
/// name comes with a dot in its pin's place, and only dots are kept clear.
std::vector<PlacedName> placeNames(const std::vector<NamedPlace>& places,
                                   const MapGeometry& geometry, const MapFrame& frame);

/// The names of all places of a map. Its copies share what was found out about their layout, so
/// that it costs something only once for each scale; to be drawn by one thread.
class PlaceNames
{
public:
    explicit PlaceNames(std::vector<NamedPlace> places);

    /// As the free function, remembered.
    const std::vector<PlacedName>& layout(const MapGeometry& geometry, const MapFrame& frame) const;

    /// What the names that a frame shows and their pins cover of it.
    std::vector<QRect> taken(const MapGeometry& geometry, const MapFrame& frame) const;

    /// Copies of one value are equal; finding out whether others are isn't worth the time.
    bool operator==(const PlaceNames&) const = default;

private:
    friend void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                     const PlaceNames& names);
    struct Board;
    std::shared_ptr<Board> board_;
};

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const PlaceNames& names);
