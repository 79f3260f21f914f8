#include "platform/forms/window_bars.h"

#include "platform/forms/notice_bar.h"

#include <QLabel>
#include <QMenuBar>

namespace platform {
namespace {

int heightOf(const QMenuBar& menus)
{
    return menus.isNativeMenuBar() ? 0 : menus.sizeHint().height(); // at the screen's top
}

} // namespace

void addRoomForBars(QWidget& window, const QMenuBar& menus, const QLabel& lblEstado)
{
    const int bars = heightOf(menus) + lblEstado.sizeHint().height();
    window.resize(window.width(), window.height() + bars);
}

QRect layOutBars(const QWidget& window, QMenuBar& menus, NoticeBar& avisos, QLabel& lblEstado)
{
    const int width = window.width();
    const int menusHeight = heightOf(menus);
    const int noticeHeight = avisos.heightFor(width);
    const int top = menusHeight + noticeHeight;
    const int foot = lblEstado.sizeHint().height();
    menus.setGeometry(0, 0, width, menusHeight);
    avisos.setGeometry(0, menusHeight, width, noticeHeight);
    lblEstado.setGeometry(0, window.height() - foot, width, foot);
    return {0, top, width, window.height() - top - foot};
}

} // namespace platform
