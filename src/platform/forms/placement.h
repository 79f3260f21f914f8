#pragma once

#include <QRect>

class QWidget;

namespace platform {

/// Where a tool window of that size opens that goes with a map: on the screen, beside the map as
/// far as there is room, and never above the map's top, where the toolbar is. It is made smaller
/// where it must, but not below a size that can be used. All in pixels of the screen, window frames
/// included; `owner` is the map's window. `height` says how far down the map's side it stands, from
/// 0 for the top to 1 for the bottom.
QRect besideMap(QSize tool, QRect map, QRect owner, QRect screen, double height);

/// Makes a dialog that is about to be shown belong to the active window, over which it opens. No
/// topmost palette covers it.
void putAboveActiveWindow(QWidget& dialog);

} // namespace platform
