#pragma once

#include "worldmap/map_canvas.h"

/// The world map's definitions, read from AppFolder, and what commands do with them. Throws Error.
class Atlas
{
public:
    Atlas();

    /// Reads a map given as mapPath takes it.
    WorldMap read(const QString& map) const;

    /// A picture of the whole map as a PNG file's bytes, every pixel `scale` pixels wide and high,
    /// with a road if there is a route text.
    QByteArray png(const WorldMap& map, int scale, const QString& route = {});

    Palette tiles{tilesKind()};
    Palette pins{pinesKind()};
    MapCanvas canvas;
};

/// The path of a map's file, given as that path or as the name of one in AppFolder\mapas, with or
/// without ".map"; if there's but one of that name, whatever its letter case. What leads to no file
/// stays as it was given.
QString mapPath(const QString& map);

/// Whether work on all cells of a map takes a time that is felt.
bool isLongWork(const WorldMap& map);
