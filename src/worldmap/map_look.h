#pragma once

#include "app/file_look.h"
#include "worldmap/map_miniature.h"

/// What a map's file holds, in words and a pixel a cell. Any thread can look. Throws Error for a
/// file that can't be opened.
FileLook lookAtMapFile(const QString& path, const MapPictures& pictures,
                       const TileColours& colours);
