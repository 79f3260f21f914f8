#pragma once

#include "localmap/local_canvas.h"
#include "worldmap/definitions.h"

/// What the program has loaded and its parts share: definitions and their pictures. The windows
/// have one, the command line has one, and every test its own.
class Workspace
{
public:
    Workspace();
    ~Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

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
