#pragma once

#include <QRect>

class QLabel;
class QMenuBar;
class QWidget;

namespace platform {

class NoticeBar;

/// Makes room for the bars in a window whose design leaves them out. For when it is loaded.
void addRoomForBars(QWidget& window, const QMenuBar& menus, const QLabel& lblEstado);

/// Lays the bars of a window without a layout of its own along its edges: menus and notices on top,
/// the status line at the foot. Returns what is left between them, in pixels.
QRect layOutBars(const QWidget& window, QMenuBar& menus, NoticeBar& avisos, QLabel& lblEstado);

} // namespace platform
