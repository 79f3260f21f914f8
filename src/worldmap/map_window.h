#pragma once

#include <QList>
#include <QPoint>
#include <QSize>
#include <functional>

class QAction;
class QKeyEvent;
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
    /// What can be done by shortcuts in the minimap, too.
    std::function<QList<QAction*>()> actions{};
    /// What becomes of a key that the minimap has no use for; returns whether it was used.
    std::function<bool(const QKeyEvent& key)> keyUnused{};
};
