#pragma once

#include "app/workspace.h"
#include "cli/picture.h"
#include "worldmap/world_map.h"

/// A workspace with the definitions that world maps are read, drawn and searched with. Making one
/// throws Error.
class WorldWorkspace : public Workspace
{
public:
    WorldWorkspace();

    /// Reads a map given as mapPath takes it. Throws Error.
    WorldMap read(const QString& map) const;
};

/// The path of a map's file, given as that path or as the name of one in AppFolder\mapas, with or
/// without ".map"; if there's but one of that name, whatever its letter case. What leads to no file
/// stays as it was given.
QString mapPath(const QString& map);

/// Whether work on all cells of a map takes a time that is felt.
bool isLongWork(const WorldMap& map);

/// Writes a picture of the whole map, with a road if there is a route text; else as
/// PictureTarget::write.
void writePicture(const PictureTarget& target, const MapPictures& pictures, const WorldMap& map,
                  int scale, const QString& route = {}, const std::function<void()>& between = {});
