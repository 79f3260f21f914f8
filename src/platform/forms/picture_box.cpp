#include "platform/forms/picture_box.h"

#include "platform/gdi/picture.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace platform {
namespace {

constexpr QRgb groundColor = qRgb(0x24, 0x22, 0x20);
constexpr int largestIconFactor = 4;
constexpr QSize largestPreview(256, 256); // in pixels

} // namespace

QIcon pixelIcon(std::initializer_list<QImage> pictures)
{
    QIcon icon;
    // The same when selected: a style's tint would spoil the colours.
    const auto add = [&](const QImage& picture) {
        const QPixmap pixmap = QPixmap::fromImage(picture);
        icon.addPixmap(pixmap, QIcon::Normal);
        icon.addPixmap(pixmap, QIcon::Selected);
    };
    for (const QImage& picture : pictures)
        add(picture);
    if (pictures.size() > 0) {
        const QImage& largest = *(pictures.end() - 1);
        for (int factor = 2; factor <= largestIconFactor; ++factor)
            add(largest.scaled(largest.size() * factor));
    }
    return icon;
}

QCursor pixelCursor(const QImage& picture, QPoint hotSpot, double screenScale)
{
    const int factor = std::max(1, static_cast<int>(screenScale));
    QPixmap pixmap = QPixmap::fromImage(picture.scaled(picture.size() * factor));
    pixmap.setDevicePixelRatio(factor);
    return QCursor(pixmap, hotSpot.x(), hotSpot.y());
}

void ImageBox::setPicture(const QImage& picture)
{
    picture_ = picture;
    updateGeometry();
    update();
}

void ImageBox::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.drawImage(rect(), picture_);
}

void drawPicture(QPainter& painter, const QRect& place, const QImage& picture)
{
    const QImage shown =
        pictureInPlace(picture, place.size(), painter.device()->devicePixelRatioF());
    const QSize size = shown.deviceIndependentSize().toSize();
    painter.drawImage(place.topLeft() + QPoint((place.width() - size.width()) / 2,
                                               (place.height() - size.height()) / 2),
                      shown);
}

PreviewBox::PreviewBox(QWidget* parent) : QFrame(parent)
{
    setFrameStyle(StyledPanel | Sunken);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
}

void PreviewBox::load(const QString& path)
{
    setPicture(loadPicture(path, largestPreview));
}

void PreviewBox::setPicture(const QImage& picture)
{
    picture_ = picture;
    update();
}

void PreviewBox::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    drawPicture(painter, contentsRect(), picture_);
}

PictureBox::PictureBox(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

MemoryDC& PictureBox::dc()
{
    // Not in the resize event, which a hidden widget doesn't get.
    if (const QSize wanted = surfaceSize(); dc_.image().size() != wanted) {
        dc_ = MemoryDC(wanted.width(), wanted.height());
        dc_.fill(groundColor);
    }
    return dc_;
}

void PictureBox::clear()
{
    dc().fill(groundColor);
}

void PictureBox::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.drawImage(event->rect(), dc().image(), event->rect());
    if (drawOver)
        drawOver(painter);
}

void PictureBox::mouseMoveEvent(QMouseEvent* event)
{
    emit mouseMoved(event->position().toPoint(), event->buttons(), event->modifiers());
}

void PictureBox::mousePressEvent(QMouseEvent* event)
{
    emit mouseMoved(event->position().toPoint(), event->buttons(), event->modifiers());
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event)
{
    const QPoint position = event->position().toPoint();
    emit mouseMoved(position, event->buttons(), event->modifiers());
    if (event->button() == Qt::LeftButton && rect().contains(position))
        emit clicked();
    emit released(event->button());
}

void PictureBox::leaveEvent(QEvent* /*event*/)
{
    emit mouseLeft();
}

} // namespace platform
