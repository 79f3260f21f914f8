#pragma once

#include <QSize>
#include <functional>

class QWidget;

/// What the minimap knows of the map window that it serves: the size of its map in cells, the first
/// cell shown, and what it asks of the window.
struct MapWindow {
    std::function<QSize()> mapSize; ///< in cells
    int& currX;
    int& currY;
    std::function<void()> scrollMapa;     ///< bring the first cell into view
    std::function<void()> drawMinimap;    ///< draw the map into the minimap
    std::function<const QWidget&()> view; ///< where the window shows its map
    std::function<void()> releaseButton;  ///< the minimap is gone, or serves another window
};
