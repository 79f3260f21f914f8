#pragma once

#include "worldmap/map_canvas.h"

/// The world map's definitions, read from AppFolder, and what commands do with them. Throws Error.
class Atlas
{
public:
    Atlas();

    /// Reads a map given as a file's path or as the name of one in AppFolder\mapas.
    WorldMap read(const QString& map) const;

    /// A picture of the whole map as a PNG file's bytes, every pixel `scale` pixels wide and high,
    /// with a road if there is a route text.
    QByteArray png(const WorldMap& map, int scale, const QString& route = {});

    Palette tiles{tilesKind()};
    Palette pins{pinesKind()};
    MapCanvas canvas;
};

/// The path of the file of a map given so.
QString mapPath(const QString& map);

/// Throws Error when no file can be written there, so that nothing is half done when it turns out.
void checkWritable(const QString& path);

/// Whether two paths lead to one file.
bool isSameFile(const QString& a, const QString& b);

/// The largest scale of a picture.
inline constexpr int maxScale = 16;

/// The bytes of a picture as a PNG file, enlarged. Throws Error when it would be too large.
QByteArray pngBytes(const QImage& picture, int scale);
