#pragma once

#include <functional>

/// What the minimap knows of the map window that it serves: the size of its map in cells, the first
/// cell shown, and how to bring that into view.
struct MapWindow {
    const int& ancho;
    const int& alto;
    int& currX;
    int& currY;
    std::function<void()> scrollMapa;
};
