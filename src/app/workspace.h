#pragma once

#include "app/disk_watch.h"
#include "app/recovery.h"
#include "catalogue/catalogue_document.h"
#include "localmap/local_canvas.h"
#include "worldmap/definitions.h"

#include <array>

/// What the program has loaded and its parts share: catalogues, definitions and their pictures. The
/// windows have one, the command line has one, and every test its own.
class Workspace
{
public:
    Workspace();
    ~Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    platform::Background background;
    // Idle until they are told to begin.
    Recovery recovery{background};
    DiskWatch diskWatch{background};

    CatalogueDocument armas{armasKind()};
    CatalogueDocument armaduras{armadurasKind()};
    CatalogueDocument equipo{equipoKind()};
    CatalogueDocument conjuros{conjurosKind()};
    std::array<CatalogueDocument*, 4> catalogues()
    {
        return {&armas, &armaduras, &equipo, &conjuros};
    }

    Palette tiles{tilesKind()};
    Palette pins{pinesKind()};
    Palette localTiles{tilesLocalesKind()};
    MapPictures pictures;
    LocalPictures localPictures;

    // Read the definition files below AppFolder. Throw Error, with everything as it was.
    void loadTiles();
    void loadPines();
    void loadTilesLocales();

private:
    Workspace* before_;
};

/// The workspace made last of those that live.
Workspace& workspace();
