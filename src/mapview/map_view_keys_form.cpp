// The keyboard on a map's view: keys that move it, and a cell cursor that does what the pointer
// does.

#include "mapview/map_view_form.h"
#include "platform/forms/application.h"

#include <QAccessible>
#include <QCursor>
#include <QKeyEvent>
#include <algorithm>

namespace {

constexpr int farStep = 10; // cells that the cursor goes with Ctrl

bool isMenuKey(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Menu ||
           (key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier);
}

bool isClickKey(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Space || key.key() == Qt::Key_Return ||
           key.key() == Qt::Key_Enter || isMenuKey(key);
}

QPoint arrow(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

} // namespace

bool MapView::isCursorKey(const QKeyEvent& key) const
{
    return !arrow(key.key()).isNull() || (cursor_ && isClickKey(key));
}

bool MapView::event(QEvent* event)
{
    // While its cursor is used, the keys that it acts on are no shortcuts.
    if (event->type() == QEvent::ShortcutOverride && isCursorKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return PictureBox::event(event);
}

void MapView::keyPressEvent(QKeyEvent* event)
{
    platform::runCommand([&] {
        const bool isUsed = geometry_ && (moveCursorByKey(*event) || moveByKey(*event));
        event->setAccepted(isUsed);
    });
}

bool MapView::moveCursorByKey(const QKeyEvent& key)
{
    if (const QPoint way = arrow(key.key()); !way.isNull()) {
        const bool isFar = key.modifiers().testFlag(Qt::ControlModifier);
        moveCursor(way * (isFar ? farStep : 1), key.modifiers());
        return true;
    }
    if (!isClickKey(key))
        return false;
    if (!cursor_)
        beginCursor();
    else if (!key.isAutoRepeat())
        clickAtCursor(isMenuKey(key) || key.modifiers().testFlag(Qt::ShiftModifier)
                          ? Qt::RightButton
                          : Qt::LeftButton);
    return true;
}

bool MapView::moveByKey(const QKeyEvent& key)
{
    const QSize page = viewport_.seen().size();
    const int width = geometry_->pictureSize().width();
    const int height = geometry_->pictureSize().height();
    const bool isFar = key.modifiers().testFlag(Qt::ControlModifier);
    switch (key.key()) {
    case Qt::Key_Home:
        scrollBy({-width, isFar ? -height : 0});
        break;
    case Qt::Key_End:
        scrollBy({width, isFar ? height : 0});
        break;
    case Qt::Key_PageUp:
        scrollBy({0, -page.height()});
        break;
    case Qt::Key_PageDown:
        scrollBy({0, page.height()});
        break;
    default:
        return false;
    }
    keepCursorInView();
    return true;
}

/// The cursor goes with the view: what can't be seen isn't to be acted on.
void MapView::keepCursorInView()
{
    if (!cursor_ || viewport_.isWhole())
        return;
    const QPoint first = geometry_->cellAt(viewport_.origin()) + QPoint(1, 1);
    const QPoint last = geometry_->cellAt(viewport_.seen().bottomRight()) - QPoint(1, 1);
    setCursorCell({std::clamp(cursor_->x(), first.x(), std::max(first.x(), last.x())),
                   std::clamp(cursor_->y(), first.y(), std::max(first.y(), last.y()))});
}

/// The cursor begins where the pointer was last or, where that can't be seen, in the middle of the
/// view.
void MapView::beginCursor()
{
    const QRect seen = viewport_.seen() & QRect({}, geometry_->pictureSize());
    const bool isPointed = seen.contains(geometry_->cellRect(lastCell_).center());
    setCursorCell(isPointed ? lastCell_ : geometry_->cellAt(seen.center()));
}

void MapView::moveCursor(QPoint by, Qt::KeyboardModifiers keys)
{
    if (!cursor_)
        beginCursor();
    // With Shift the keys drag, as the pointer does with its button held.
    if (keys.testFlag(Qt::ShiftModifier) && !isKeyDrag_) {
        isKeyDrag_ = true;
        pointAtCursor(Qt::LeftButton);
    }
    setCursorCell(*cursor_ + by);
}

void MapView::setCursorCell(QPoint cell)
{
    const QSize cells = geometry_->cells();
    if (cells.isEmpty())
        return;
    cursor_ = QPoint(std::clamp(cell.x(), 0, cells.width() - 1),
                     std::clamp(cell.y(), 0, cells.height() - 1));
    restingPointer_ = QCursor::pos();
    revealCell(*cursor_);
    pointAtCursor(isKeyDrag_ ? Qt::LeftButton : Qt::NoButton);
    QAccessibleEvent heard(this, QAccessible::Focus);
    heard.setChild(0);
    QAccessible::updateAccessibility(&heard);
}

/// Moves the view as little as shows a cell.
void MapView::revealCell(QPoint cell)
{
    const QRect wanted = geometry_->cellRect(cell);
    const QRect seen(viewport_.origin(), viewport_.seen().size() - QSize(1, 1));
    const auto way = [](int first, int end, int seenFirst, int seenEnd) {
        return first < seenFirst ? first - seenFirst : std::max(0, end - seenEnd);
    };
    scrollBy({way(wanted.left(), wanted.right(), seen.left(), seen.right()),
              way(wanted.top(), wanted.bottom(), seen.top(), seen.bottom())});
}

void MapView::pointAtCursor(Qt::MouseButtons held)
{
    emit pointed(geometry_->cellRect(*cursor_).center(), held, Qt::NoModifier);
}

void MapView::clickAtCursor(Qt::MouseButton button)
{
    pointAtCursor(button);
    pointAtCursor(Qt::NoButton);
    if (button == Qt::LeftButton)
        emit clicked();
    emit released(button);
    if (cursor_)
        pointAtCursor(Qt::NoButton);
}

void MapView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Shift)
        endKeyDrag();
    PictureBox::keyReleaseEvent(event);
}

void MapView::endKeyDrag()
{
    if (!isKeyDrag_)
        return;
    isKeyDrag_ = false;
    if (cursor_)
        pointAtCursor(Qt::NoButton);
    emit clicked();
    emit released(Qt::LeftButton);
}

void MapView::hideCursor()
{
    endKeyDrag();
    if (!cursor_)
        return;
    cursor_.reset();
    update();
}

void MapView::focusInEvent(QFocusEvent* event)
{
    PictureBox::focusInEvent(event);
    const bool byKey = event->reason() == Qt::TabFocusReason ||
                       event->reason() == Qt::BacktabFocusReason ||
                       event->reason() == Qt::ShortcutFocusReason;
    if (byKey && geometry_ && !cursor_)
        platform::runCommand([this] { beginCursor(); });
}

void MapView::focusOutEvent(QFocusEvent* event)
{
    PictureBox::focusOutEvent(event);
    endKeyDrag();
}

QString MapView::spokenText() const
{
    return scene_.spoken ? scene_.spoken(spokenCell()) : QString();
}
