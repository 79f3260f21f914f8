#include "platform/forms/window_bars.h"

#include "platform/forms/notice_bar.h"

#include <QLabel>

namespace platform {

QRect layOutBars(const QWidget& window, NoticeBar& avisos, QLabel& lblEstado)
{
    const int width = window.width();
    const int top = avisos.heightFor(width);
    const int foot = lblEstado.sizeHint().height();
    avisos.setGeometry(0, 0, width, top);
    lblEstado.setGeometry(0, window.height() - foot, width, foot);
    return {0, top, width, window.height() - top - foot};
}

} // namespace platform
