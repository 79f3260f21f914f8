// The pointer over a map's view: where it points, the wheel, drags that move the view.

#include "mapview/map_view_form.h"
#include "platform/forms/application.h"

#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int wheelNotch = 120; // of angles, as the toolkit counts them
constexpr int cellsANotch = 3;  // that the wheel goes at zoom 1
constexpr int jitter = 4;       // of a pointer at rest, in pixels
constexpr int edge = 2;         // of the view, in pixels, where a drag makes it go on

} // namespace

QPoint MapView::screenPixel(QPointF position) const
{
    const QPointF pixel = position * devicePixelRatioF();
    return {static_cast<int>(std::floor(pixel.x())), static_cast<int>(std::floor(pixel.y()))};
}

void MapView::emitPointed(QPointF position, Qt::MouseButtons held, Qt::KeyboardModifiers keys)
{
    const QPoint pixel = viewport_.pictureAt(screenPixel(position));
    lastCell_ = geometry_ ? geometry_->cellAt(pixel) : QPoint();
    emit pointed(pixel, held, keys);
}

void MapView::mousePressEvent(QMouseEvent* event)
{
    hideCursor();
    if (event->button() == Qt::MiddleButton) {
        panned_ = viewport_.pictureAt(screenPixel(event->position()));
        return;
    }
    emitPointed(event->position(), event->buttons(), event->modifiers());
}

void MapView::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::MiddleButton))
        panned_.reset();
    if (panned_) {
        platform::runCommand(
            [&] { scrollBy(*panned_ - viewport_.pictureAt(screenPixel(event->position()))); });
        return;
    }
    if (cursor_) { // the pointer takes over once it is really moved
        const QPoint way = event->globalPosition().toPoint() - restingPointer_;
        if (way.manhattanLength() <= jitter)
            return;
        hideCursor();
    }
    emitPointed(event->position(), event->buttons(), event->modifiers());
    dragged_ = event->position();
    dragKeys_ = event->modifiers();
    const bool isAtEdge = !rect().adjusted(edge, edge, -edge, -edge).contains(dragged_.toPoint());
    if (!isAtEdge || !event->buttons().testFlag(Qt::LeftButton) || !scene_.followsDrag())
        scrollingOn_.stop();
    else if (!scrollingOn_.isActive())
        scrollingOn_.start();
}

/// A drag is held at the edge: the view goes on that way, and the drag with it.
void MapView::scrollOn()
{
    if (!scene_.followsDrag()) {
        scrollingOn_.stop();
        return;
    }
    const QRect inside = rect().adjusted(edge, edge, -edge, -edge);
    const auto way = [](double position, int first, int last) {
        return position < first ? -1 : position > last ? 1 : 0;
    };
    const QSize step = geometry_->cellRect({}).size();
    scrollBy({step.width() * way(dragged_.x(), inside.left(), inside.right()),
              step.height() * way(dragged_.y(), inside.top(), inside.bottom())});
    emitPointed(dragged_, Qt::LeftButton, dragKeys_);
}

void MapView::mouseReleaseEvent(QMouseEvent* event)
{
    scrollingOn_.stop();
    if (event->button() == Qt::MiddleButton) {
        panned_.reset();
        return;
    }
    if (std::exchange(isReleaseSwallowed_, false) && event->button() == Qt::LeftButton)
        return;
    emitPointed(event->position(), event->buttons(), event->modifiers());
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked();
    emit released(event->button());
}

/// From the whole map a double click goes to the place.
void MapView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!viewport_.isWhole() || event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    platform::runCommand([&] {
        const QPoint pixel = viewport_.pictureAt(screenPixel(event->position()));
        isReleaseSwallowed_ = true;
        emit wentThere();
        viewport_.setZoom(viewport_.zoom(), {});
        centreOn(pixel);
        emit zoomChanged();
    });
}

void MapView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    platform::runCommand([&] {
        if (event->modifiers().testFlag(Qt::ControlModifier)) {
            zoomRest_ += event->angleDelta().y();
            const int steps = zoomRest_ / wheelNotch;
            zoomRest_ -= steps * wheelNotch;
            zoomBy(steps, screenPixel(event->position()));
            if (!cursor_)
                emitPointed(event->position(), event->buttons(), event->modifiers());
            return;
        }
        // A touchpad tells pixels; a wheel tells how far it was turned.
        const QSize cell = geometry_ ? geometry_->cellRect({}).size() : QSize(1, 1);
        QPointF way = QPointF(event->pixelDelta()) * devicePixelRatioF() / viewport_.scale();
        if (event->pixelDelta().isNull()) {
            const double notch = 1.0 * cellsANotch * cell.height() / viewport_.zoom() / wheelNotch;
            way = QPointF(event->angleDelta()) * notch;
        }
        if (event->modifiers().testFlag(Qt::ShiftModifier))
            way = way.transposed();
        wheelRest_ += way;
        const QPoint pixels(static_cast<int>(wheelRest_.x()), static_cast<int>(wheelRest_.y()));
        wheelRest_ -= pixels;
        scrollBy(-pixels);
        if (!cursor_)
            emitPointed(event->position(), event->buttons(), event->modifiers());
    });
}
