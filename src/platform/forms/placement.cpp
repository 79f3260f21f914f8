#include "platform/forms/placement.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace platform {
namespace {

// What a tool window needs to be of use, in pixels.
constexpr int leastWidth = 260;
constexpr int leastHeight = 160;

} // namespace

QRect besideMap(QSize tool, QRect map, QRect owner, QRect screen, double height)
{
    const int roomRight = screen.right() - owner.right();
    const int roomLeft = owner.left() - screen.left();
    const int roomInside = screen.right() - map.right(); // over what stands beside the map
    QRect place({}, tool);
    if (tool.width() <= roomRight) {
        place.moveLeft(owner.right() + 1);
    } else if (tool.width() <= roomLeft) {
        place.moveRight(owner.left() - 1);
    } else {
        place.setWidth(std::clamp(roomInside, std::min(leastWidth, tool.width()), tool.width()));
        place.moveLeft(std::min(map.right() + 1, screen.right() + 1 - place.width()));
        place.moveLeft(std::max(place.left(), screen.left()));
    }
    const int top = std::max(map.top(), screen.top());
    const int room = screen.bottom() + 1 - top;
    place.setHeight(
        std::clamp(room, std::min(leastHeight, tool.height()), std::max(tool.height(), 1)));
    const int spare =
        std::max(0, std::min(map.bottom() + 1, screen.bottom() + 1) - top - place.height());
    place.moveTop(top + static_cast<int>(spare * height));
    return place;
}

void putAboveActiveWindow(QWidget& dialog)
{
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    dialog.winId(); // makes its window
    const QWidget* const active = QApplication::activeWindow();
    if (active != &dialog)
        dialog.windowHandle()->setTransientParent(active ? active->windowHandle() : nullptr);
}

} // namespace platform
