// A picture of the map, with what lies over it.
#include "exchange/map_formats.h"
#include "exchange/map_image.h"

void writePng(ExportFiles& files, ExportedMap& map, const ExportOptions& options,
              const Advance& advance)
{
    const std::vector<Overlay> overlays = map.overlays(options);
    const MapImage image{map.picture(), map.partOf(options.zone), options.scale, &map.geometry(),
                         overlays};
    writePng(files.main(), image, advance);
}
