#include "mapview/map_view_form.h"

#include "mapview/map_view_accessible_form.h"
#include "platform/forms/application.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int barThickness = 8; // the frame's margin
constexpr auto fillSlice = 12ms;
constexpr auto scrollOnAfter = 60ms;

} // namespace

MapView::MapView(QWidget* parent)
    : PictureBox(parent),
      horizontal_(new QScrollBar(Qt::Horizontal, parent)),
      vertical_(new QScrollBar(Qt::Vertical, parent))
{
    installMapViewAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    horizontal_->setObjectName(u"hsbMapa"_s);
    horizontal_->setAccessibleName(u"Mover el mapa a los lados"_s);
    vertical_->setObjectName(u"vsbMapa"_s);
    vertical_->setAccessibleName(u"Mover el mapa arriba y abajo"_s);
    for (QScrollBar* const bar : {horizontal_, vertical_}) {
        bar->setFocusPolicy(Qt::NoFocus); // keys move the map itself
        bar->hide();
        connect(bar, &QScrollBar::valueChanged, this, [this] { barMoved(); });
    }
    filling_.setInterval(0);
    connect(&filling_, &QTimer::timeout, this,
            [this] { platform::runCommand([this] { fillWhole(); }); });
    scrollingOn_.setInterval(scrollOnAfter);
    connect(&scrollingOn_, &QTimer::timeout, this,
            [this] { platform::runCommand([this] { scrollOn(); }); });
}

void MapView::setScene(MapScene scene)
{
    scene_ = std::move(scene);
    geometry_ = scene_.geometry();
}

QSize MapView::surfaceSize() const
{
    return viewport_.isWhole() ? (QSizeF(size()) * devicePixelRatioF()).toSize()
                               : viewport_.seen().size();
}

void MapView::takeRoom()
{
    viewport_.setRoom((QSizeF(size()) * devicePixelRatioF()).toSize(), devicePixelRatioF());
}

/// The view begins with the first visible cell; but where the view was moved by pixels, it is still
/// inside of that cell.
void MapView::readFirstCell()
{
    const QPoint first(*scene_.currX, *scene_.currY);
    if (viewport_.isWhole() || first == first_)
        return;
    viewport_.setCorner(geometry_->cellRect(first).topLeft());
    first_ = first;
}

/// The other way round: the viewport was moved.
void MapView::applyViewport()
{
    first_ = geometry_->firstCell(viewport_.origin());
    *scene_.currX = first_.x();
    *scene_.currY = first_.y();
    drawSurface();
    emit moved();
    repoint();
}

/// Another cell is under the pointer now; or the cursor's has another place in the view.
void MapView::repoint()
{
    if (cursor_)
        pointAtCursor(isKeyDrag_ ? Qt::LeftButton : Qt::NoButton);
    else if (underMouse() && !panned_)
        emitPointed(mapFromGlobal(QCursor::pos()), QGuiApplication::mouseButtons(),
                    QGuiApplication::keyboardModifiers());
}

void MapView::showMap()
{
    if (!scene_.picture || scene_.picture->isNull())
        return;
    if (geometry_->pictureSize() != scene_.picture->size())
        geometry_ = scene_.geometry();
    takeRoom();
    viewport_.setPicture(scene_.picture->size());
    const bool isMoved = first_ != QPoint(*scene_.currX, *scene_.currY);
    readFirstCell();
    drawSurface();
    if (isMoved && isVisible())
        repoint();
}

void MapView::showFromCell()
{
    first_ = QPoint(-1, -1);
    showMap();
}

void MapView::showAnew()
{
    geometry_ = scene_.geometry();
    lastCell_ = {};
    if (cursor_ && !QRect({}, geometry_->cells()).contains(*cursor_))
        cursor_.reset();
    showFromCell();
}

void MapView::drawSurface()
{
    clear();
    showBars();
    update();
    if (viewport_.isWhole()) {
        drawWhole();
    } else {
        filling_.stop();
        scene_.picture->copyTo(dc(), {}, viewport_.seen());
    }
}

void MapView::drawWhole()
{
    const MapPicture& picture = *scene_.picture;
    whole_.follow(picture, picture.size(), viewport_.wholeRect().size());
    copyWhole({{}, whole_.size()});
    fillWhole();
}

/// Brings a part of the reduced picture onto the surface.
void MapView::copyWhole(const QRect& part)
{
    const QPoint to = part.topLeft() + viewport_.wholeRect().topLeft();
    dc().BitBlt(to.x(), to.y(), part.width(), part.height(), whole_.surface(), part.x(), part.y(),
                platform::RasterOp::SRCCOPY);
    update();
}

/// All of a large map takes a while to draw; it comes bit by bit, and the window goes on meanwhile.
void MapView::fillWhole()
{
    filling_.stop(); // also if it fails
    if (!viewport_.isWhole())
        return;
    copyWhole(whole_.fill(*scene_.picture, fillSlice));
    if (!whole_.isFilled())
        filling_.start();
}

void MapView::showPart(const QRect& part)
{
    if (viewport_.isWhole()) {
        copyWhole(whole_.redraw(*scene_.picture, part));
        return;
    }
    const QRect seen = part & viewport_.seen();
    if (seen.isEmpty())
        return;
    scene_.picture->copyTo(dc(), seen.topLeft() - viewport_.origin(), seen);
    update(inWidget(seen).adjusted(-1, -1, 1, 1));
}

void MapView::setOverlays(std::vector<Overlay> overlays)
{
    if (overlays == overlays_)
        return;
    overlays_ = std::move(overlays);
    update();
}

void MapView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const double dpr = devicePixelRatioF();
    painter.scale(1 / dpr, 1 / dpr); // pixels of the screen from here on
    const QImage& surface = dc().image();
    if (!geometry_ || !scene_.picture || scene_.picture->isNull()) {
        painter.drawImage(QRectF({}, QSizeF(size()) * dpr), surface);
        return;
    }
    const double scale = viewport_.scale();
    painter.drawImage(QRectF({}, QSizeF(surface.size()) * (viewport_.isWhole() ? 1.0 : scale)),
                      surface);
    const MapFrame frame{viewport_.seen(), scale, dpr};
    if (viewport_.isWhole())
        painter.translate(viewport_.wholeRect().topLeft());
    drawOverlays(painter, *geometry_, frame, overlays_);
}

void MapView::resizeEvent(QResizeEvent* event)
{
    PictureBox::resizeEvent(event);
    layOutBars();
}

void MapView::moveEvent(QMoveEvent* event)
{
    PictureBox::moveEvent(event);
    layOutBars();
}

// ---- moving ---------------------------------------------------------------------------------

void MapView::layOutBars()
{
    horizontal_->setGeometry(x(), y() + height(), width(), barThickness);
    vertical_->setGeometry(x() + width(), y(), barThickness, height());
}

void MapView::showBars()
{
    const QPoint last = viewport_.isWhole() ? QPoint() : viewport_.lastOrigin();
    const QPoint origin = viewport_.origin();
    const QSize step = geometry_->cellRect({}).size();
    const auto fit = [](QScrollBar& bar, int at, int end, int page, int single) {
        const QSignalBlocker quiet(bar);
        bar.setRange(0, std::max(at, end));
        bar.setPageStep(page);
        bar.setSingleStep(single);
        bar.setValue(at);
        bar.setVisible(end > 0);
    };
    fit(*horizontal_, origin.x(), last.x(), viewport_.seen().width(), step.width());
    fit(*vertical_, origin.y(), last.y(), viewport_.seen().height(), step.height());
}

void MapView::barMoved()
{
    platform::runCommand([this] {
        viewport_.setOrigin({horizontal_->value(), vertical_->value()});
        applyViewport();
    });
}

void MapView::scrollBy(QPoint pixels)
{
    const QPoint before = viewport_.origin();
    if (viewport_.isWhole())
        return;
    viewport_.setOrigin(before + pixels);
    if (viewport_.origin() != before)
        applyViewport();
}

void MapView::centreOn(QPoint pixel)
{
    viewport_.centreOn(pixel);
    applyViewport();
}

QPoint MapView::cornerInCell() const
{
    return viewport_.isWhole() ? QPoint()
                               : viewport_.origin() - geometry_->cellRect(first_).topLeft();
}

QRect MapView::inWidget(const QRect& part) const
{
    const double dpr = devicePixelRatioF();
    const QPointF corner(viewport_.placeOf(part.topLeft()));
    const QPointF end(viewport_.placeOf(part.topLeft() + QPoint(part.width(), part.height())));
    return QRectF(corner / dpr, end / dpr).toAlignedRect();
}

// ---- zoom -----------------------------------------------------------------------------------

QString MapView::zoomText() const
{
    return viewport_.isWhole() ? u"Mapa entero"_s : u"Zoom %1×"_s.arg(viewport_.zoom());
}

void MapView::zoomBy(int steps, std::optional<QPoint> place)
{
    takeRoom();
    const int zoom = viewport_.isWhole() ? (steps > 0 ? 1 : 0) : viewport_.zoomBeside(steps);
    if (zoom == 0 || (zoom == viewport_.zoom() && !viewport_.isWhole()))
        return;
    viewport_.setZoom(zoom, place.value_or(viewport_.middle()));
    applyViewport();
    emit zoomChanged();
}

void MapView::setZoom(int zoom)
{
    takeRoom();
    viewport_.setZoom(zoom, viewport_.middle());
    applyViewport();
    emit zoomChanged();
}

void MapView::setWhole(bool isWhole)
{
    if (isWhole == viewport_.isWhole())
        return;
    takeRoom();
    if (isWhole) {
        before_ = viewport_.origin();
        viewport_.showWhole();
    } else {
        viewport_.setZoom(viewport_.zoom(), viewport_.middle());
        viewport_.setOrigin(before_.value_or(QPoint()));
    }
    applyViewport();
    emit zoomChanged();
}

std::vector<platform::Command> MapView::commands()
{
    return {
        {.key = u"acercar"_s,
         .text = u"&Acercar"_s,
         .shortcuts = {QKeySequence(u"Ctrl++"_s), QKeySequence(u"Ctrl+="_s)},
         .run = [this](bool) { zoomBy(1); },
         .isPossible =
             [this] { return viewport_.isWhole() || viewport_.zoomBeside(1) != viewport_.zoom(); }},
        {.key = u"alejar"_s,
         .text = u"Ale&jar"_s,
         .shortcuts = {QKeySequence(u"Ctrl+-"_s)},
         .run = [this](bool) { zoomBy(-1); },
         .isPossible =
             [this] { return !viewport_.isWhole() && viewport_.zoom() > Viewport::zooms[0]; }},
        {.key = u"tamanoNatural"_s,
         .text = u"Tamaño nat&ural"_s,
         .shortcuts = {QKeySequence(u"Ctrl+0"_s)},
         .run = [this](bool) { setZoom(1); }},
        {.key = u"mapaEntero"_s,
         .text = u"Mapa &entero"_s,
         .shortcuts = {QKeySequence(u"Ctrl+9"_s)},
         .isTwoState = true,
         .run = [this](bool on) { setWhole(on); }}};
}
