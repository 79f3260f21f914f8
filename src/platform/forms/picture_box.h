#pragma once

#include "platform/gdi/memory_dc.h"

#include <QCursor>
#include <QFrame>
#include <QIcon>
#include <QWidget>
#include <functional>
#include <initializer_list>

class QPainter;

namespace platform {

/// An icon from pixel art, its pictures given from small to large: at higher scales the largest is
/// shown in whole multiples of its pixels, so that it stays crisp.
QIcon pixelIcon(std::initializer_list<QImage> pictures);

/// A pointer from pixel art, its hot spot counted in the picture's pixels; as many of the screen's
/// pixels to one of the picture's as the scale of the screen has whole ones.
QCursor pixelCursor(const QImage& picture, QPoint hotSpot, double screenScale);

/// Draws a picture in the middle of a place, in its proportions, by pictureInPlace.
void drawPicture(QPainter& painter, const QRect& place, const QImage& picture);

/// Shows one picture stretched over the whole widget, its pixels kept crisp.
class ImageBox : public QWidget
{
public:
    using QWidget::QWidget;
    void setPicture(const QImage& picture);
    const QImage& picture() const { return picture_; }
    QSize sizeHint() const override { return picture_.size(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage picture_;
};

/// Shows a picture in its proportions in a frame, which is there also when it is empty.
class PreviewBox : public QFrame
{
public:
    explicit PreviewBox(QWidget* parent = nullptr);
    /// Loads a GIF file. Throws as loadPicture does, and then keeps the picture that it showed.
    void load(const QString& path);
    void setPicture(const QImage& picture);
    const QImage& picture() const { return picture_; }
    /// How many of the screen's pixels a picture has in it.
    QSize room() const { return contentsRect().size() * devicePixelRatioF(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage picture_;
};

/// A drawing surface on the screen. Code draws into dc(), by default of the widget's size in
/// pixels, and calls refresh() to bring it to the screen. Another size gives a new surface in the
/// ground colour.
class PictureBox : public QWidget
{
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);
    MemoryDC& dc();
    /// Fills the surface with the ground colour, a plain dark grey.
    void clear();
    void refresh() { update(); }
    /// Draws over the surface whenever it comes to the screen.
    std::function<void(QPainter& painter)> drawOver;

signals:
    /// The pointer moved, or a button was pressed where it is.
    void mouseMoved(QPoint position, Qt::MouseButtons held, Qt::KeyboardModifiers keys);
    /// The pointer is no longer over the box.
    void mouseLeft();
    /// The left button was released over the box after it was pressed there.
    void clicked();
    /// A button was released after it was pressed over the box.
    void released(Qt::MouseButton button);

protected:
    virtual QSize surfaceSize() const { return size(); }
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    MemoryDC dc_;
};

} // namespace platform
