#pragma once

#include <QRect>

class QLabel;
class QWidget;

namespace platform {

class NoticeBar;

/// Lays the bars of a window without a layout of its own along its edges: notices on top, the
/// status line at the foot. Returns what is left between them, in pixels.
QRect layOutBars(const QWidget& window, NoticeBar& avisos, QLabel& lblEstado);

} // namespace platform
